#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>

namespace velmorand {

/// Another process that is held by itself and not by its number: what is asked of it and sent to it never meets a process
/// that got the number later.
class HeldProcess {
public:
    /// The process that has this number now; absent when there is none.
    [[nodiscard]] static std::optional<HeldProcess> hold(pid_t pid);
    HeldProcess(HeldProcess&& other) noexcept;
    HeldProcess& operator=(HeldProcess&&) = delete;
    HeldProcess(const HeldProcess&) = delete;
    HeldProcess& operator=(const HeldProcess&) = delete;
    ~HeldProcess();

    /// The file name of its program, also when that file has been replaced since; absent when the process has ended or
    /// belongs to somebody else.
    [[nodiscard]] std::optional<std::string> programName() const;

    /// Nothing happens when it has ended or may not be told.
    void sendSignal(int signal) const;

    /// Whether it ends within that time.
    [[nodiscard]] bool endsWithin(std::chrono::milliseconds time) const;

private:
    HeldProcess(pid_t pid, int file) : pid_(pid), file_(file) {}

    pid_t pid_;
    int file_;  // a pidfd
};

/// The same of this process.
[[nodiscard]] std::optional<std::string> ownProgramName();

}  // namespace velmorand
