#include "platform/linux/FileUserDefaults.h"
#include "preferences/PreferencesStateCoding.h"
#include "preferences/PreferencesStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using Milliseconds = std::chrono::duration<double, std::milli>;

/// An empty folder below another, removed with everything in it when the object dies.
class NewFolder {
public:
    explicit NewFolder(const fs::path& above) {
        std::string name = above / "velmorand-bench-XXXXXX";
        if (mkdtemp(name.data()) != nullptr) path_ = name;
    }
    ~NewFolder() {
        std::error_code ignored;
        if (!path_.empty()) fs::remove_all(path_, ignored);
    }
    NewFolder(const NewFolder&) = delete;
    NewFolder& operator=(const NewFolder&) = delete;

    /// Empty when it could not be made.
    [[nodiscard]] const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

/// How long each of so many saves took: the record written as a document and stored, safe on the disk. Fewer when one
/// failed, which is told.
std::vector<Milliseconds> timeSaves(UserDefaults& defaults, std::size_t saves) {
    std::vector<Milliseconds> times;
    PreferencesState state = defaultPreferencesState();
    while (times.size() < saves) {
        state.outerPadding = static_cast<double>(times.size() % 50);
        const auto before = std::chrono::steady_clock::now();
        const auto stored = defaults.setData(PreferencesStore::key, encodePreferencesState(state).value_or(""));
        times.emplace_back(std::chrono::steady_clock::now() - before);
        if (stored) continue;
        std::fprintf(stderr, "%s\n", stored.error().description.c_str());
        return {};
    }
    return times;
}

int run(const fs::path& above, std::size_t saves) {
    const NewFolder folder(above);
    FileUserDefaults defaults(folder.path() / "velmorand");
    if (folder.path().empty()) {
        std::fprintf(stderr, "Cannot make a folder in %s.\n", above.c_str());
        return 1;
    }
    auto times = timeSaves(defaults, saves);
    if (times.empty()) return 1;
    std::ranges::sort(times);
    const auto at = [&times](double part) { return times[static_cast<std::size_t>(part * double(times.size() - 1))]; };
    fmt::print("{} saves: median {:.2f} ms, 99 of 100 within {:.2f} ms, worst {:.2f} ms\n", times.size(),
               at(0.5).count(), at(0.99).count(), at(1).count());
    return 0;
}

}  // namespace
}  // namespace velmorand

int main(int argumentCount, char** arguments) {
    const std::span given(arguments, static_cast<std::size_t>(argumentCount));
    const auto folder = given.size() > 1 ? std::filesystem::path(given[1]) : std::filesystem::temp_directory_path();
    const auto saves = given.size() > 2 ? std::strtoul(given[2], nullptr, 10) : 1000UL;
    return velmorand::run(folder, saves);
}
