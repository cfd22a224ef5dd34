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

/// What a desktop entry says of the menus in which it is to be listed.
struct DesktopEntryListing {
    bool isHiddenInMenus = false;
    /// Names of desktops, as in XDG_CURRENT_DESKTOP: the only ones that list it, and those that do not.
    std::vector<std::string> onlyIn = {};
    std::vector<std::string> notIn = {};
    /// The program, by its name or absolute path, without which the application is not there.
    std::optional<std::string> neededProgram = {};

    bool operator==(const DesktopEntryListing&) const = default;
};

/// What this program needs of one desktop entry.
struct DesktopEntry {
    /// The desktop-file id without ".desktop", such as "org.gnome.Calculator".
    std::string id;
    /// The name in the user's language, if the entry has one.
    std::optional<std::string> name;
    std::optional<std::string> startupWMClass;
    /// The last part of the path of the program that is started.
    std::optional<std::string> executable;
    /// The name of an icon in the desktop's theme, or the absolute path of a picture.
    std::optional<std::string> icon = {};
    DesktopEntryListing listing = {};
    /// Where the entry was read; empty for a text from elsewhere.
    std::filesystem::path path = {};
    /// Whether it has no window of its own but runs in one of a terminal, which is another application.
    bool runsInTerminal = false;

    bool operator==(const DesktopEntry&) const = default;
};

/// Reads the text of a desktop entry; absent when it is none of an application. `locales` are the user's, the most
/// wanted first, such as {"de_AT", "de"}.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string id, std::string_view text,
                                                            const std::vector<std::string>& locales);

/// Whether the menus of a desktop with these names, the most important first, list the entry. What is needed of the
/// programs on this machine is not looked at.
[[nodiscard]] bool isListedIn(const DesktopEntryListing& listing, const std::vector<std::string>& desktops);

/// The desktop entries of the session: those of the user first, then those of the system. Of entries with the same
/// id the first counts. The folders are looked through at first use and again when one of them changed.
///
/// Where a look-up fits several entries, one that the desktop's menus list comes before one that they do not, or that runs
/// in a terminal: what the user can choose is what windows are said to belong to.
class DesktopEntries {
public:
    /// `folders` are data folders (with an "applications" folder inside), the most important first. `desktops` are the
    /// names of the desktop, likewise.
    DesktopEntries(std::vector<std::filesystem::path> folders, std::vector<std::string> locales,
                   std::vector<std::string> desktops = {});

    /// Over the folders, the language and the desktop that the environment names.
    [[nodiscard]] static DesktopEntries ofSession();

    /// The entry with this id; null when there is none. Valid until the next look-up.
    [[nodiscard]] const DesktopEntry* byID(std::string_view id);
    /// The entry that names this window class, exactly or else but for letter case.
    [[nodiscard]] const DesktopEntry* byStartupWMClass(std::string_view windowClass);
    /// The entry whose id, or the last part of a reverse-domain id, is this name but for letter case.
    [[nodiscard]] const DesktopEntry* byBaseName(std::string_view name);
    /// The entry that starts this program.
    [[nodiscard]] const DesktopEntry* byExecutable(std::string_view executable);

    /// The entries that the desktop's menus list, in the order of their ids; without those whose program is missing and
    /// those that run in a terminal.
    [[nodiscard]] std::vector<DesktopEntry> listed();

    /// The entry in this file, wherever it is; absent when there is none of an application. Its id is that of the index
    /// for a file in one of the folders, and else the name of the file.
    [[nodiscard]] std::optional<DesktopEntry> inFile(const std::filesystem::path& file) const;

    /// Whether a file at this path would be looked through.
    [[nodiscard]] bool covers(const std::filesystem::path& file) const { return idOf(file).has_value(); }

private:
    using FolderTimes = std::vector<std::pair<std::filesystem::path, std::filesystem::file_time_type>>;

    void refresh();
    [[nodiscard]] bool isCurrent() const;
    [[nodiscard]] bool canBeChosen(const DesktopEntry& entry) const;
    void readFolder(const std::filesystem::path& folder);
    void readEntry(const std::filesystem::path& folder, const std::filesystem::path& path);
    [[nodiscard]] std::optional<std::string> idOf(const std::filesystem::path& file) const;
    template <typename Matches>
    [[nodiscard]] const DesktopEntry* find(const Matches& matches);

    std::vector<std::filesystem::path> folders_;
    std::vector<std::string> locales_;
    std::vector<std::string> desktops_;
    FolderTimes times_;  // of every folder that was looked through, or is not there
    bool read_ = false;
    std::set<std::string> ids_;  // also of entries that hide a less important one and are none themselves
    std::map<std::string, DesktopEntry, std::less<>> entries_;
};

}  // namespace velmorand
