#pragma once

#include <sys/fsuid.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace velmorand {

/// Lets this process reach files as an ordinary user would until the object dies, also when root runs the tests, who
/// may do everything. Throws when that cannot be had, which fails the test.
class OrdinaryUser {
public:
    /// The folder and what is in it belong to that user from now on.
    explicit OrdinaryUser(const std::filesystem::path& folder) {
        if (!isRoot_) return;
        give(folder);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) give(entry.path());
        setfsuid(nobody);
    }
    ~OrdinaryUser() {
        if (isRoot_) setfsuid(0);
    }

    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t nobody = 65534;

    static void give(const std::filesystem::path& path) {
        if (lchown(path.c_str(), nobody, nobody) != 0)
            throw std::system_error(errno, std::generic_category(), path.string());
    }

    bool isRoot_ = geteuid() == 0;
};

}  // namespace velmorand
