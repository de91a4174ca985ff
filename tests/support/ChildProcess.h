#pragma once

#include <fcntl.h>
#include <grp.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

namespace kelvara::test {

/// The user that a child process runs as: the test's own, or one without any rights. Only the
/// superuser can become another user; otherwise the child's user stays the same.
enum class RunAs { Same, Nobody };

/// A second process for the part of a test that needs one.
class ChildProcess {
 public:
  /// Runs in the child, which ends when it returns. It reports lines through `report`.
  using Work = std::function<void(const std::function<void(const std::string&)>& report)>;

  explicit ChildProcess(const Work& work, RunAs user = RunAs::Same) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0 || (process_ = ::fork()) < 0) {
      throw std::runtime_error("no child process");
    }
    if (process_ == 0) {
      RunWork(work, user, ends[1]);
    }
    ::close(ends[1]);
    pipe_ = ends[0];
  }
  ~ChildProcess() {
    Kill();
    ::close(pipe_);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t Id() const { return process_; }

  /// The next line that the child reports, without the line end; empty if the child has ended.
  std::string ReadLine() {
    std::string line;
    char character = 0;
    while (::read(pipe_, &character, 1) == 1 && character != '\n') {
      line += character;
    }
    return line;
  }

  /// Waits until the child ends by itself.
  void Wait() {
    if (process_ > 0) {
      ::waitpid(std::exchange(process_, 0), nullptr, 0);
    }
  }

  /// Ends the child with no chance to clean up.
  void Kill() {
    if (process_ > 0) {
      ::kill(process_, SIGKILL);
      Wait();
    }
  }

 private:
  [[noreturn]] static void RunWork(const Work& work, RunAs user, int pipe) {
    constexpr unsigned kNobody = 65534;
    if (user == RunAs::Nobody && ::getuid() == 0 &&
        (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
      ::_exit(1);
    }
    const auto report = [pipe](const std::string& text) {
      const std::string line = text + "\n";
      if (::write(pipe, line.data(), line.size()) < 0) {
        ::_exit(1);
      }
    };
    try {
      work(report);
    } catch (const std::exception& error) {
      report(error.what());
    }
    ::_exit(0);
  }

  pid_t process_ = 0;
  int pipe_ = -1;
};

/// Runs `work` in a child process and returns its first report.
inline std::string ReportOfChild(const ChildProcess::Work& work, RunAs user = RunAs::Same) {
  ChildProcess child(work, user);
  std::string report = child.ReadLine();
  child.Wait();
  return report;
}

}  // namespace kelvara::test
