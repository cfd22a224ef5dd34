#pragma once

#include <sys/types.h>

#include <memory>

namespace velmorand {

/// A process that does nothing until it is told to end. It is ended and collected at the latest when the object dies.
class ChildProcess {
public:
    /// Throws when no process can be made, which fails the test.
    ChildProcess();
    ~ChildProcess();

    /// A process with this number, which must be free; absent where this program may not choose one.
    [[nodiscard]] static std::unique_ptr<ChildProcess> withPid(pid_t pid);

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t pid() const { return pid_; }

    /// Lets it end; it stays in the process table until it is collected.
    void end();
    /// Ends it and waits until it has ended; it stays in the process table.
    void endWithoutCollecting();
    /// Ends it and waits until its number is free again.
    void endAndCollect();

private:
    explicit ChildProcess(pid_t made);

    pid_t pid_ = -1;
};

}  // namespace velmorand
