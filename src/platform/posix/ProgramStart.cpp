#include "platform/qt/ProgramStart.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "base/Fault.h"

namespace kelvara::qt {
namespace {

[[noreturn]] void Refuse(const std::string& program, int error) {
  throw base::Fault(base::FaultKind::File,
                    "cannot start \"" + program + "\": " + std::generic_category().message(error));
}

/// In a process of its own: becomes the program, or tells the error through the pipe. Only calls
/// that are safe between fork and exec.
[[noreturn]] void Become(char* const* command, int pipe) {
  ::setsid();
  const pid_t program = ::fork();
  if (program == 0) {
    ::execv(command[0], command);
  }
  if (program <= 0) {
    const int error = errno;
    [[maybe_unused]] const auto written = ::write(pipe, &error, sizeof error);
  }
  ::_exit(0);
}

}  // namespace

// The program is the child of a process that ends at once, so that it is no child of this one.
void StartProgram(const std::string& program, const std::string& argument) {
  std::string name = program;
  std::string path = argument;
  const std::array<char*, 3> command{name.data(), path.data(), nullptr};
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
    Refuse(program, errno);
  }
  const pid_t child = ::fork();
  if (child == 0) {
    Become(command.data(), pipe[1]);
  }
  int error = child < 0 ? errno : 0;
  ::close(pipe[1]);
  if (child > 0) {
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    int told = 0;
    ssize_t got = 0;
    do {
      got = ::read(pipe[0], &told, sizeof told);
    } while (got < 0 && errno == EINTR);
    error = got == sizeof told ? told : 0;
  }
  ::close(pipe[0]);
  if (error != 0) {
    Refuse(program, error);
  }
}

}  // namespace kelvara::qt
