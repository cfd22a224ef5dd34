#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmorand {

/// What this program needs of one desktop entry.
struct DesktopEntry {
    /// The desktop-file id without ".desktop", such as "org.gnome.Calculator".
    std::string id;
    /// The name in the user's language, if the entry has one.
    std::optional<std::string> name;
    std::optional<std::string> startupWMClass;
    /// The last part of the path of the program that is started.
    std::optional<std::string> executable;

    bool operator==(const DesktopEntry&) const = default;
};

/// Reads the text of a desktop entry; absent when it is none of an application. `locales` are the user's, the most
/// wanted first, such as {"de_AT", "de"}.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string id, std::string_view text,
                                                            const std::vector<std::string>& locales);

/// The desktop entries of the session: those of the user first, then those of the system. Of entries with the same
/// id the first counts. The folders are looked through at first use and again when one of them changed.
class DesktopEntries {
public:
    /// `folders` are data folders (with an "applications" folder inside), the most important first.
    DesktopEntries(std::vector<std::filesystem::path> folders, std::vector<std::string> locales);

    /// Over the folders and the language that the environment names.
    [[nodiscard]] static DesktopEntries ofSession();

    /// The entry with this id; null when there is none. Valid until the next look-up.
    [[nodiscard]] const DesktopEntry* byID(std::string_view id);
    /// The entry that names this window class, exactly or else but for letter case.
    [[nodiscard]] const DesktopEntry* byStartupWMClass(std::string_view windowClass);
    /// The entry whose id, or the last part of a reverse-domain id, is this name but for letter case.
    [[nodiscard]] const DesktopEntry* byBaseName(std::string_view name);
    /// The entry that starts this program.
    [[nodiscard]] const DesktopEntry* byExecutable(std::string_view executable);

private:
    using FolderTimes = std::vector<std::pair<std::filesystem::path, std::filesystem::file_time_type>>;

    void refresh();
    [[nodiscard]] bool isCurrent() const;
    void readFolder(const std::filesystem::path& folder);
    void readEntry(const std::filesystem::path& folder, const std::filesystem::path& path);
    template <typename Matches>
    [[nodiscard]] const DesktopEntry* find(const Matches& matches);

    std::vector<std::filesystem::path> folders_;
    std::vector<std::string> locales_;
    FolderTimes times_;  // of every folder that was looked through, or is not there
    bool read_ = false;
    std::set<std::string> ids_;  // also of entries that hide a less important one and are none themselves
    std::map<std::string, DesktopEntry, std::less<>> entries_;
};

}  // namespace velmorand
