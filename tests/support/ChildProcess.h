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

/// Whom a child process runs as: the test's own user, or one without any rights. An ordinary user
/// cannot become another one; the child then stays the same.
enum class RunAs { Same, Nobody };

/// A second process for the part of a test that needs one.
class ChildProcess {
 public:
  /// Runs `work` in the child. `work` may report through the function that it is given; the child
  /// ends when it returns.
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

  /// The next line that the child reports, without its line end; empty when it has ended.
  std::string ReadLine() {
    std::string line;
    char character = 0;
    while (::read(pipe_, &character, 1) == 1 && character != '\n') {
      line += character;
    }
    return line;
  }

  /// Waits until it ends by itself.
  void Wait() {
    if (process_ > 0) {
      ::waitpid(std::exchange(process_, 0), nullptr, 0);
    }
  }

  /// Ends it without a chance to tidy up.
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

/// What one run of `work` in a child process reports first.
inline std::string ReportOfChild(const ChildProcess::Work& work, RunAs user = RunAs::Same) {
  ChildProcess child(work, user);
  std::string report = child.ReadLine();
  child.Wait();
  return report;
}

}  // namespace kelvara::test
