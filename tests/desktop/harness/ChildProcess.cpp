#include "desktop/harness/ChildProcess.h"

#include "desktop/harness/Deadline.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>
#include <utility>

namespace velmorand::desktop {

namespace {

constexpr int reportDescriptorInChild = 3;

HarnessError systemError(std::string_view what) {
    return {fmt::format("{}: {}", what, std::strerror(errno))};
}

/// A descriptor that is closed at the end of a scope.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor() { reset(); }

    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] int release() { return std::exchange(number_, -1); }
    void reset(int number = -1) {
        if (number_ >= 0) close(number_);
        number_ = number;
    }

private:
    int number_;
};

struct Pipe {
    Descriptor read;
    Descriptor write;

    bool open() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
        read.reset(ends[0]);
        write.reset(ends[1]);
        return true;
    }
};

/// Everything the child needs between fork and exec, where only async-signal-safe calls are allowed.
struct Launch {
    std::vector<char*> arguments;
    std::vector<char*> environment;
    int log = -1;
    int report = -1;
    int failure = -1;
    pid_t parent = -1;
};

std::vector<char*> nullTerminated(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    std::ranges::transform(texts, std::back_inserter(pointers), [](std::string& text) { return text.data(); });
    pointers.push_back(nullptr);
    return pointers;
}

/// Like dup2, and the copy survives exec even when it is the same descriptor.
bool install(int descriptor, int as) {
    if (descriptor == as) return fcntl(as, F_SETFD, 0) == 0;
    return dup2(descriptor, as) == as;
}

[[noreturn]] void runInChild(const Launch& launch) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != launch.parent) _exit(127);
    signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);

    const int input = open("/dev/null", O_RDONLY);
    // Moved out of the way first, because it may itself be number 3.
    const int failure = fcntl(launch.failure, F_DUPFD_CLOEXEC, 10);
    const bool ready = input >= 0 && failure >= 0 && install(input, STDIN_FILENO) &&
                       install(launch.log, STDOUT_FILENO) && install(launch.log, STDERR_FILENO) &&
                       (launch.report < 0 || install(launch.report, reportDescriptorInChild));
    if (ready) execvpe(launch.arguments.front(), launch.arguments.data(), launch.environment.data());
    const int reason = errno;
    [[maybe_unused]] const auto written = write(failure, &reason, sizeof reason);
    _exit(127);
}

bool readableWithin(int descriptor, std::chrono::milliseconds timeout) {
    pollfd entry{descriptor, POLLIN, 0};
    int result = 0;
    const Deadline deadline(timeout);
    do {
        result = poll(&entry, 1, static_cast<int>(deadline.remaining().count()));
    } while (result < 0 && errno == EINTR);
    return result > 0;
}

}  // namespace

std::string ExitStatus::text() const {
    return code ? fmt::format("exit code {}", *code) : fmt::format("signal {}", signal.value_or(0));
}

std::expected<ChildProcess, HarnessError> ChildProcess::start(const Options& options) {
    auto arguments = options.arguments;
    if (arguments.empty()) return std::unexpected(HarnessError{"no program to start"});
    std::vector<std::string> variables;
    for (const auto& [key, value] : options.environment) variables.push_back(fmt::format("{}={}", key, value));

    const Descriptor log(open(options.logFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    if (log.get() < 0) return std::unexpected(systemError(options.logFile.string()));
    Pipe failure;
    Pipe report;
    if (!failure.open() || (options.reportsOnDescriptor3 && !report.open())) {
        return std::unexpected(systemError("cannot make a pipe"));
    }

    const Launch launch{nullTerminated(arguments), nullTerminated(variables), log.get(),
                        report.write.get(),        failure.write.get(),       getpid()};
    const pid_t pid = fork();
    if (pid < 0) return std::unexpected(systemError("cannot fork"));
    if (pid == 0) runInChild(launch);

    ChildProcess child;
    child.pid_ = pid;
    child.pidDescriptor_ = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    child.name_ = std::filesystem::path(options.arguments.front()).filename();
    child.logFile_ = options.logFile;
    child.reportDescriptor_ = report.read.release();
    failure.write.reset();

    // The pipe closes by itself at a successful exec.
    int reason = 0;
    if (read(failure.read.get(), &reason, sizeof reason) == sizeof reason) {
        errno = reason;
        return std::unexpected(systemError("cannot start " + options.arguments.front()));
    }
    return child;
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1)),
      pidDescriptor_(std::exchange(other.pidDescriptor_, -1)),
      reportDescriptor_(std::exchange(other.reportDescriptor_, -1)),
      name_(std::move(other.name_)),
      logFile_(std::move(other.logFile_)),
      status_(std::exchange(other.status_, std::nullopt)) {}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
    if (this == &other) return *this;
    if (pid_ > 0) terminate();
    closeDescriptors();
    pid_ = std::exchange(other.pid_, -1);
    pidDescriptor_ = std::exchange(other.pidDescriptor_, -1);
    reportDescriptor_ = std::exchange(other.reportDescriptor_, -1);
    name_ = std::move(other.name_);
    logFile_ = std::move(other.logFile_);
    status_ = std::exchange(other.status_, std::nullopt);
    return *this;
}

ChildProcess::~ChildProcess() {
    if (pid_ > 0) terminate();
    closeDescriptors();
}

void ChildProcess::closeDescriptors() {
    if (pidDescriptor_ >= 0) close(pidDescriptor_);
    if (reportDescriptor_ >= 0) close(reportDescriptor_);
    pidDescriptor_ = -1;
    reportDescriptor_ = -1;
}

bool ChildProcess::isRunning() {
    return !wait(std::chrono::milliseconds::zero());
}

std::optional<std::string> ChildProcess::reportedLine(std::chrono::milliseconds timeout) {
    if (reportDescriptor_ < 0) return std::nullopt;
    const Deadline deadline(timeout);
    std::string line;
    while (readableWithin(reportDescriptor_, deadline.remaining())) {
        char character = 0;
        if (read(reportDescriptor_, &character, 1) != 1) return std::nullopt;
        if (character == '\n') return line;
        line += character;
    }
    return std::nullopt;
}

std::optional<ExitStatus> ChildProcess::wait(std::chrono::milliseconds timeout) {
    if (!status_ && pid_ > 0 && readableWithin(pidDescriptor_, timeout)) reap();
    return status_;
}

void ChildProcess::reap() {
    // While the leader is not reaped its number, and so its group's, cannot belong to anyone else.
    kill(-pid_, SIGKILL);
    int status = 0;
    while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {}
    status_ = WIFSIGNALED(status) ? ExitStatus{std::nullopt, WTERMSIG(status)}
                                  : ExitStatus{WEXITSTATUS(status), std::nullopt};
}

ExitStatus ChildProcess::terminate(std::chrono::milliseconds timeout) {
    if (!status_) {
        sendSignal(SIGTERM);
        sendSignal(SIGCONT);
        if (!wait(timeout)) {
            sendSignal(SIGKILL);
            reap();
        }
    }
    return status_.value_or(ExitStatus{});
}

void ChildProcess::sendSignal(int signal) const {
    if (pid_ > 0 && !status_) kill(pid_, signal);
}

void ChildProcess::freeze() {
    sendSignal(SIGSTOP);
    // The signal is delivered some time after kill() returns; only a reported stop means that nothing runs any more.
    siginfo_t information{};
    if (pid_ > 0 && !status_) waitid(P_PID, static_cast<id_t>(pid_), &information, WSTOPPED | WEXITED | WNOWAIT);
}

void ChildProcess::thaw() {
    sendSignal(SIGCONT);
}

std::string ChildProcess::log(std::uintmax_t from) const {
    std::ifstream file(logFile_, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(from));
    return {std::istreambuf_iterator<char>(file), {}};
}

std::uintmax_t ChildProcess::logSize() const {
    std::error_code error;
    const auto size = std::filesystem::file_size(logFile_, error);
    return error ? 0 : size;
}

std::string ChildProcess::logTail(std::size_t lines) const {
    const std::string text = log();
    std::size_t start = text.size();
    for (std::size_t line = 0; line <= lines && start != std::string::npos && start > 0; ++line) {
        start = text.rfind('\n', start - 1);
    }
    const auto tail = start == std::string::npos ? text : text.substr(std::min(start + 1, text.size()));
    return fmt::format("--- {} ---\n{}", name_, tail);
}

}  // namespace velmorand::desktop
