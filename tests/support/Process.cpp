#include "support/Process.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <thread>
#include <utility>

namespace kelvara::test {
namespace {

constexpr int kCannotStart = 127;

void Close(int& descriptor) {
  if (descriptor >= 0) {
    ::close(std::exchange(descriptor, -1));
  }
}

// Descriptors are created close-on-exec, since another thread may be starting a program.

/// A pipe: its read end and its write end.
std::array<int, 2> MakePipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  return ends;
}

/// A terminal: the test's side, the program's side.
std::array<int, 2> MakeTerminal() {
  std::array<char, 64> name{};
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0 ||
      ::ptsname_r(master, name.data(), name.size()) != 0) {
    throw std::runtime_error("no terminal");
  }
  return {master, ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC)};
}

/// The texts in the form of a program's argument vector.
std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

/// Gives up the superuser's rights.
bool DropRights() {
  constexpr unsigned kNobody = 65534;
  return ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
}

}  // namespace

Process::Process(const ProcessRequest& request)
    : input_(request.input), inputStaysOpen_(request.inputStaysOpen) {
  // A program that does not read all its input must not end the test.
  std::signal(SIGPIPE, SIG_IGN);
  auto [inputRead, inputWrite] = MakePipe();
  auto [outputRead, outputWrite] = MakePipe();
  auto [errorsRead, errorsWrite] = request.errorsToTerminal ? MakeTerminal() : MakePipe();
  id_ = ::fork();
  if (id_ == 0) {
    BecomeProgram(request, {inputRead, outputWrite, errorsWrite});
  }
  Close(inputRead);
  Close(outputWrite);
  Close(errorsWrite);
  inputEnd_ = inputWrite;
  outputEnd_ = outputRead;
  errorsEnd_ = errorsRead;
  ::fcntl(inputEnd_, F_SETFL, O_NONBLOCK);
  if (id_ < 0) {
    throw std::runtime_error("no process");
  }
}

Process::~Process() {
  Finish(Duration(0));
  Close(inputEnd_);
  Close(outputEnd_);
  Close(errorsEnd_);
}

void Process::BecomeProgram(const ProcessRequest& request, const std::array<int, 3>& standard) {
  std::signal(SIGPIPE, SIG_DFL);
  int input = standard[0];
  int output = standard[1];
  bool ready = request.folder.empty() || ::chdir(request.folder.c_str()) == 0;
  if (request.inputPath) {
    input = ::open(request.inputPath->c_str(), O_RDONLY);
  }
  if (request.outputPath) {
    output = ::open(request.outputPath->c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  }
  ready = ready && ::dup2(input, STDIN_FILENO) >= 0 && ::dup2(output, STDOUT_FILENO) >= 0 &&
          ::dup2(standard[2], STDERR_FILENO) >= 0;
  if (request.fileSizeLimit) {
    // The write must fail without ending the program.
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{*request.fileSizeLimit, *request.fileSizeLimit};
    ready = ready && ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
  }
  ready = ready && (!request.withoutRights || DropRights());
  std::vector<std::string> arguments = request.arguments;
  std::vector<std::string> environment;
  for (const auto& [name, value] : request.environment) {
    environment.push_back(name);
    environment.back() += "=" + value;
  }
  if (ready && !arguments.empty()) {
    ::execve(arguments[0].c_str(), Pointers(arguments).data(), Pointers(environment).data());
  }
  ::_exit(kCannotStart);
}

std::optional<std::string> Process::ReadLine(Duration limit) {
  const Deadline deadline = std::chrono::steady_clock::now() + limit;
  for (;;) {
    const std::size_t end = result_.output.find('\n', linesRead_);
    if (end != std::string::npos) {
      const std::size_t start = std::exchange(linesRead_, end + 1);
      return result_.output.substr(start, end - start);
    }
    if (outputEnd_ < 0 || !Pump(deadline)) {
      return {};
    }
  }
}

bool Process::WaitForErrors(const std::string& text, Duration limit) {
  const Deadline deadline = std::chrono::steady_clock::now() + limit;
  while (result_.errors.find(text) == std::string::npos) {
    if (errorsEnd_ < 0 || !Pump(deadline)) {
      return false;
    }
  }
  return true;
}

void Process::Send(const std::string& text) {
  input_ += text;
  FeedInput();
}

void Process::Signal(int number) const {
  if (id_ > 0) {
    ::kill(id_, number);
  }
}

Process::Duration Process::ProcessorTime() const {
  clockid_t clock{};
  timespec used{};
  if (::clock_getcpuclockid(id_, &clock) != 0 || ::clock_gettime(clock, &used) != 0) {
    throw std::runtime_error("no processor time");
  }
  return std::chrono::duration_cast<Duration>(std::chrono::seconds(used.tv_sec) +
                                              std::chrono::nanoseconds(used.tv_nsec));
}

ProcessResult Process::Finish(Duration limit) {
  inputStaysOpen_ = false;
  const Deadline deadline = std::chrono::steady_clock::now() + limit;
  while ((outputEnd_ >= 0 || errorsEnd_ >= 0) && Pump(deadline)) {
  }
  Reap(deadline);
  return result_;
}

/// Transfers input and output that is ready. False if the deadline has passed.
bool Process::Pump(Deadline deadline) {
  const bool allTaken = inputTaken_ == input_.size();
  if (allTaken && !inputStaysOpen_) {
    Close(inputEnd_);
  }
  const auto left =
      std::chrono::duration_cast<Duration>(deadline - std::chrono::steady_clock::now());
  std::array<pollfd, 3> ends{
      {{allTaken ? -1 : inputEnd_, POLLOUT, 0}, {outputEnd_, POLLIN, 0}, {errorsEnd_, POLLIN, 0}}};
  const int ready = ::poll(ends.data(), ends.size(), static_cast<int>(std::max(left.count(), 0L)));
  if (ready == 0) {
    return false;
  }
  if (ends[0].revents != 0) {
    FeedInput();
  }
  if (ends[1].revents != 0) {
    Collect(outputEnd_, result_.output);
  }
  if (ends[2].revents != 0) {
    Collect(errorsEnd_, result_.errors);
  }
  return true;
}

void Process::FeedInput() {
  const ssize_t taken =
      ::write(inputEnd_, input_.data() + inputTaken_, input_.size() - inputTaken_);
  if (taken >= 0) {
    inputTaken_ += static_cast<std::size_t>(taken);
  } else if (errno != EAGAIN && errno != EINTR) {
    inputTaken_ = input_.size();
  }
}

void Process::Collect(int& end, std::string& text) {
  std::array<char, 65536> piece{};
  const ssize_t got = ::read(end, piece.data(), piece.size());
  if (got > 0) {
    text.append(piece.data(), static_cast<std::size_t>(got));
  } else if (got == 0 || errno != EINTR) {
    // A terminal whose program has ended returns an error instead of an end of file.
    Close(end);
  }
}

void Process::Reap(Deadline deadline) {
  constexpr Duration kPause{2};
  if (id_ <= 0) {
    return;
  }
  int status = 0;
  rusage usage{};
  pid_t ended = 0;
  while ((ended = ::wait4(id_, &status, WNOHANG, &usage)) == 0) {
    if (std::chrono::steady_clock::now() >= deadline) {
      result_.timedOut = true;
      ::kill(id_, SIGKILL);
      ended = ::wait4(id_, &status, 0, &usage);
      break;
    }
    std::this_thread::sleep_for(kPause);
  }
  id_ = -1;
  if (ended > 0) {
    result_.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result_.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    result_.peakKilobytes = usage.ru_maxrss;
  }
}

ProcessResult RunProcess(const ProcessRequest& request, Process::Duration limit) {
  return Process(request).Finish(limit);
}

}  // namespace kelvara::test
