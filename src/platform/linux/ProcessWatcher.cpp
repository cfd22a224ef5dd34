#include "platform/linux/ProcessWatcher.h"

#include "platform/linux/QtRunLoop.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace velmorand {
namespace {

bool hasEnded(int file) {
    pollfd ended{.fd = file, .events = POLLIN, .revents = 0};
    return poll(&ended, 1, 0) > 0;
}

}  // namespace

ProcessWatcher::ProcessWatcher(QtRunLoop& runLoop, std::function<void(std::int32_t)> ended)
    : runLoop_(runLoop), ended_(std::move(ended)) {}

ProcessWatcher::~ProcessWatcher() {
    for (auto& [pid, watched] : watched_) {
        watched.subscription.cancel();
        close(watched.file);
    }
}

void ProcessWatcher::watch(std::int32_t pid) {
    if (pid <= 0 || isRunning(pid)) return;
    const auto file = static_cast<int>(syscall(SYS_pidfd_open, pid, 0U));  // no wrapper in the C library yet
    if (file < 0) return;
    if (hasEnded(file)) {  // but its parent has not asked after it yet
        close(file);
        return;
    }
    watched_.emplace(pid, Watched{file, runLoop_.watch(file, [this, pid, file] { processEnded(pid, file); })});
}

bool ProcessWatcher::isRunning(std::int32_t pid) const {
    const auto [first, last] = watched_.equal_range(pid);
    return std::any_of(first, last, [](const auto& entry) { return !hasEnded(entry.second.file); });
}

void ProcessWatcher::processEnded(std::int32_t pid, int file) {
    const auto [first, last] = watched_.equal_range(pid);
    const auto found = std::find_if(first, last, [file](const auto& entry) { return entry.second.file == file; });
    if (found == last) return;
    auto node = watched_.extract(found);
    node.mapped().subscription.cancel();
    close(node.mapped().file);
    ended_(pid);
}

}  // namespace velmorand
