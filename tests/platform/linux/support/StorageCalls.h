#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace velmorand {

/// The calls by which this process makes files safe and puts them in their places, seen, and made to fail, between it
/// and the system as long as the object lives. One at a time.
class StorageCalls {
public:
    StorageCalls();
    ~StorageCalls();

    StorageCalls(const StorageCalls&) = delete;
    StorageCalls& operator=(const StorageCalls&) = delete;

    /// In order: "fsync PATH", with the path at the time, and "rename FROM TO".
    [[nodiscard]] const std::vector<std::string>& seen() const { return seen_; }

    /// From now on `fsync()` of a path for which this holds fails with the error number, and does nothing.
    void failSynchronizing(std::function<bool(const std::filesystem::path&)> which, int error);
    /// From now on listing a folder fails with the error number where it would have ended.
    void failListing(int error) { listingError_ = error; }

    /// What the system's functions of these names ask; 0 when the call goes on to the system.
    [[nodiscard]] static int beforeSynchronizing(int file);
    static void beforeRenaming(const char* from, const char* to);
    [[nodiscard]] static int atEndOfListing();

private:
    std::vector<std::string> seen_;
    std::function<bool(const std::filesystem::path&)> whichFails_;
    int synchronizingError_ = 0;
    int listingError_ = 0;
};

}  // namespace velmorand
