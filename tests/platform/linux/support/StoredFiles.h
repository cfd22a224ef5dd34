#pragma once

#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace velmorand {

/// Everything a file holds.
[[nodiscard]] inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The permission bits of what is at the path itself, such as 0600.
[[nodiscard]] inline unsigned int modeOf(const std::filesystem::path& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

/// The names of what lies in a folder.
[[nodiscard]] inline std::set<std::string> namesIn(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) names.insert(entry.path().filename());
    return names;
}

/// User defaults in the folder "settings" of a folder made for the test, with one key.
class StoredFilesTest : public testing::Test {
protected:
    static constexpr std::string_view key = "State";

    /// Stores the value, which has to work.
    void store(std::string_view value) {
        const auto stored = defaults.setData(key, value);
        ASSERT_TRUE(stored) << stored.error().description;
    }

    /// The stored value, or why there is none.
    [[nodiscard]] std::string stored() {
        const auto data = defaults.data(key);
        if (!data) return data.error().description;
        return data->value_or("nothing");
    }

    /// Why the value could not be stored.
    [[nodiscard]] std::string failureToStore(std::string_view value) {
        const auto outcome = defaults.setData(key, value);
        return outcome ? "no failure" : outcome.error().description;
    }

    ScratchFolder scratch;
    const std::filesystem::path folder = scratch.path() / "settings";
    const std::filesystem::path file = folder / key;
    FileUserDefaults defaults{folder};
};

}  // namespace velmorand
