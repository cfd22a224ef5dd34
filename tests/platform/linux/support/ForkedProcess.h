#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace velmorand {

/// A copy of this process that runs a function of a test and tells of it through a pipe. It is killed and collected at
/// the latest when the object dies. Expectations do not count in the copy: it has to tell what it finds.
class ForkedProcess {
public:
    using Clock = std::chrono::steady_clock;

    /// The function gets the descriptor to write to. The copy ends with status 0 after it, and with 1 when it throws.
    /// Throws itself when no process can be made, which fails the test.
    explicit ForkedProcess(const std::function<void(int output)>& work);
    ~ForkedProcess();

    ForkedProcess(const ForkedProcess&) = delete;
    ForkedProcess& operator=(const ForkedProcess&) = delete;

    [[nodiscard]] pid_t pid() const { return pid_; }

    /// What it has told so far.
    [[nodiscard]] const std::string& told() const { return told_; }
    /// Listens until the condition holds for what it has told; false when the process has ended, or the time has come,
    /// before it did.
    bool listenUntil(const std::function<bool(const std::string&)>& condition, Clock::time_point latest);

    /// Ends it in the middle of whatever it does, takes in what it had told by then and answers how it ended, as
    /// `waitpid()` says it.
    int kill();

private:
    /// Takes in what is there or arrives in time; false at the end of the pipe or when nothing came.
    bool listen(Clock::time_point latest);
    int collect();

    pid_t pid_ = -1;
    int input_ = -1;
    std::string told_;
};

/// Writes all of the text, as a forked process does to tell something. Throws when nobody listens any more.
void tell(int output, std::string_view text);

}  // namespace velmorand
