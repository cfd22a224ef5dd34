#pragma once

#include <sys/types.h>

namespace velmorand {

/// A process that does nothing until it is told to end. It is ended and collected at the latest when the object dies.
class ChildProcess {
public:
    /// Throws when no process can be made, which fails the test.
    ChildProcess();
    ~ChildProcess();

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t pid() const { return pid_; }

    /// Lets it end; it stays in the process table until it is collected.
    void end();
    /// Ends it and waits until its number is free again.
    void endAndCollect();

private:
    pid_t pid_ = -1;
};

}  // namespace velmorand
