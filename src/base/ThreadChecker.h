#pragma once

#include <thread>

namespace velmorand {

/// Remembers the thread that made it. Services that belong to the main thread hold one and assert that they are used
/// there; builds without assertions pay nothing for it.
class ThreadChecker {
public:
    [[nodiscard]] bool isCurrent() const { return std::this_thread::get_id() == thread_; }

private:
    std::thread::id thread_ = std::this_thread::get_id();
};

}  // namespace velmorand
