#include "platform/linux/support/ForkedProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <system_error>

namespace velmorand {
namespace {

[[noreturn]] void fail(const char* call) {
    throw std::system_error(errno, std::generic_category(), call);
}

[[noreturn]] void runAndEnd(const std::function<void(int)>& work, int output) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // never outlives the tests
    try {
        work(output);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        _exit(1);
    }
    _exit(0);
}

}  // namespace

ForkedProcess::ForkedProcess(const std::function<void(int output)>& work) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) fail("pipe2");
    std::fflush(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
        close(ends[0]);
        runAndEnd(work, ends[1]);
    }
    close(ends[1]);
    input_ = ends[0];
    if (pid_ < 0) fail("fork");
}

ForkedProcess::~ForkedProcess() {
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        collect();
    }
    close(input_);
}

bool ForkedProcess::listenUntil(const std::function<bool(const std::string&)>& condition, Clock::time_point latest) {
    while (!condition(told_)) {
        if (!listen(latest)) return false;
    }
    return true;
}

int ForkedProcess::kill() {
    ::kill(pid_, SIGKILL);
    const int status = collect();
    while (listen(Clock::now())) {}
    return status;
}

bool ForkedProcess::listen(Clock::time_point latest) {
    const auto left = std::max(latest - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
    const timespec timeout{seconds.count(), std::chrono::nanoseconds(left - seconds).count()};
    pollfd readable{input_, POLLIN, 0};
    if (ppoll(&readable, 1, &timeout, nullptr) <= 0) return false;
    std::array<char, 65536> buffer{};
    const ssize_t count = read(input_, buffer.data(), buffer.size());
    if (count > 0) told_.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0;
}

int ForkedProcess::collect() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return status;
}

void tell(int output, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(output, text.data(), text.size());
        if (written < 0) fail("write");
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace velmorand
