#include "platform/linux/support/StorageCalls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fmt/format.h>

#include <cassert>
#include <cerrno>
#include <cstdio>
#include <utility>

namespace velmorand {
namespace {

StorageCalls* current = nullptr;

template <typename Function>
Function* systemsOwn(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

StorageCalls::StorageCalls() {
    assert(current == nullptr);
    current = this;
}

StorageCalls::~StorageCalls() {
    current = nullptr;
}

void StorageCalls::failSynchronizing(std::function<bool(const std::filesystem::path&)> which, int error) {
    whichFails_ = std::move(which);
    synchronizingError_ = error;
}

int StorageCalls::beforeSynchronizing(int file) {
    if (current == nullptr) return 0;
    std::error_code ignored;
    const auto path = std::filesystem::read_symlink(fmt::format("/proc/self/fd/{}", file), ignored);
    current->seen_.push_back("fsync " + path.native());
    return current->whichFails_ && current->whichFails_(path) ? current->synchronizingError_ : 0;
}

void StorageCalls::beforeRenaming(const char* from, const char* to) {
    if (current != nullptr) current->seen_.push_back(fmt::format("rename {} {}", from, to));
}

int StorageCalls::atEndOfListing() {
    return current == nullptr ? 0 : current->listingError_;
}

}  // namespace velmorand

// These stand before the system's own functions of the same names for everything in this executable.

extern "C" int fsync(int file) {
    if (const int error = velmorand::StorageCalls::beforeSynchronizing(file)) {
        errno = error;
        return -1;
    }
    return velmorand::systemsOwn<int(int)>("fsync")(file);
}

extern "C" int rename(const char* from, const char* to) noexcept {
    velmorand::StorageCalls::beforeRenaming(from, to);
    return velmorand::systemsOwn<int(const char*, const char*)>("rename")(from, to);
}

extern "C" dirent* readdir(DIR* folder) {
    dirent* entry = velmorand::systemsOwn<dirent*(DIR*)>("readdir")(folder);
    if (entry != nullptr) return entry;
    if (const int error = velmorand::StorageCalls::atEndOfListing()) errno = error;
    return nullptr;
}
