#pragma once

#include <QByteArray>

namespace velmorand {

/// Decides whether the toolkit finds the session bus when it makes its connection, which it does once in a process. A
/// bus that does not answer would hold it up for ever. Lives while the toolkit starts.
class ToolkitBus {
public:
    explicit ToolkitBus(bool isWanted);
    ~ToolkitBus();

    ToolkitBus(const ToolkitBus&) = delete;
    ToolkitBus& operator=(const ToolkitBus&) = delete;

private:
    bool isWanted_;
    /// What programs started later are told; null when the environment names none.
    QByteArray address_;
};

}  // namespace velmorand
