#pragma once

#include "platform/linux/support/ScratchFolder.h"

#include <string>

namespace velmorand {

/// Sends standard error, as the operating system sees it, into a file until the object dies.
class RedirectedStandardError {
public:
    RedirectedStandardError();
    ~RedirectedStandardError();

    RedirectedStandardError(const RedirectedStandardError&) = delete;
    RedirectedStandardError& operator=(const RedirectedStandardError&) = delete;

    /// Everything that was written so far.
    [[nodiscard]] std::string text() const;
    /// How systemd would name the stream: device and inode.
    [[nodiscard]] std::string streamName() const;

private:
    ScratchFolder folder_;
    int before_ = -1;
};

}  // namespace velmorand
