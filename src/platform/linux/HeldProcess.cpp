#include "platform/linux/HeldProcess.h"

#include "platform/linux/RunningExecutable.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

namespace velmorand {
namespace {

using Clock = std::chrono::steady_clock;

std::optional<std::string> programNameBehind(const std::filesystem::path& link) {
    std::string name = executableBehind(link).filename().string();
    return name.empty() ? std::nullopt : std::optional(std::move(name));
}

}  // namespace

std::optional<HeldProcess> HeldProcess::hold(pid_t pid) {
    const auto file = static_cast<int>(syscall(SYS_pidfd_open, pid, 0U));  // no wrapper in the C library yet
    if (file < 0) return std::nullopt;
    return HeldProcess(pid, file);
}

HeldProcess::HeldProcess(HeldProcess&& other) noexcept : pid_(other.pid_), file_(std::exchange(other.file_, -1)) {}

HeldProcess::~HeldProcess() {
    if (file_ >= 0) close(file_);
}

/// While it runs the number is its own; so it must still run after the number has been used.
std::optional<std::string> HeldProcess::programName() const {
    auto name = programNameBehind("/proc/" + std::to_string(pid_) + "/exe");
    if (endsWithin(std::chrono::milliseconds{0})) return std::nullopt;
    return name;
}

void HeldProcess::sendSignal(int signal) const {
    syscall(SYS_pidfd_send_signal, file_, signal, nullptr, 0U);  // no wrapper, either
}

bool HeldProcess::endsWithin(std::chrono::milliseconds time) const {
    const auto deadline = Clock::now() + time;
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd ended{.fd = file_, .events = POLLIN, .revents = 0};
        const int ready = poll(&ended, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0);
        if (ready >= 0 || errno != EINTR) return ready > 0;
    }
}

std::optional<std::string> ownProgramName() {
    return programNameBehind("/proc/self/exe");
}

}  // namespace velmorand
