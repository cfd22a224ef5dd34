#include "platform/linux/ProcessWatcher.h"

#include "platform/linux/QtRunLoop.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <utility>

namespace velmorand {

ProcessWatcher::ProcessWatcher(QtRunLoop& runLoop, std::function<void(std::int32_t)> ended)
    : runLoop_(runLoop), ended_(std::move(ended)) {}

ProcessWatcher::~ProcessWatcher() {
    for (auto& [pid, watched] : watched_) {
        watched.subscription.cancel();
        close(watched.file);
    }
}

void ProcessWatcher::watch(std::int32_t pid) {
    if (pid <= 0 || watched_.contains(pid)) return;
    const auto file = static_cast<int>(syscall(SYS_pidfd_open, pid, 0U));  // no wrapper in the C library yet
    if (file < 0) return;
    watched_.emplace(pid, Watched{file, runLoop_.watch(file, [this, pid] { processEnded(pid); })});
}

bool ProcessWatcher::isRunning(std::int32_t pid) const {
    const auto found = watched_.find(pid);
    if (found == watched_.end()) return false;
    pollfd ended{.fd = found->second.file, .events = POLLIN, .revents = 0};
    return poll(&ended, 1, 0) == 0;
}

void ProcessWatcher::processEnded(std::int32_t pid) {
    auto node = watched_.extract(pid);
    if (node.empty()) return;
    node.mapped().subscription.cancel();
    close(node.mapped().file);
    ended_(pid);
}

}  // namespace velmorand
