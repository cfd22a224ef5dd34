#pragma once

#include "platform/LoginItemService.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

class LoginItemSettings;

/// Where the login item and what it is about are found.
struct LoginItemPlaces {
    /// What is started, an absolute path.
    std::filesystem::path executable;
    /// The user's folder of what is started at log-in, made when it is needed, and those of the system, the most
    /// important first. An entry in an earlier one counts, and hides those of the same name in later ones.
    std::filesystem::path usersFolder;
    std::vector<std::filesystem::path> systemFolders;
    /// The folders with the "applications" that are installed, the most important first.
    std::vector<std::filesystem::path> dataFolders;

    /// For the running executable, by the environment.
    [[nodiscard]] static LoginItemPlaces ofSession();
};

/// The login item on desktops that start what has an entry in an "autostart" folder.
///
/// | there is | status |
/// |---|---|
/// | an entry of the user's that starts a program | `enabled` |
/// | one that the desktop's settings have switched off (`Hidden`, `X-GNOME-Autostart-enabled`) | `requiresApproval` |
/// | one that was switched off here, or whose program is missing | as without any |
/// | something else, or what cannot be read, in its place | `other` |
/// | none of the user's, but one of the system's that starts a program | `enabled` |
/// | none, and the application is installed | `notRegistered` |
/// | none, and no desktop entry of the application (or a hidden one, or its `TryExec` is missing) | `notFound` |
///
/// Registering writes the user's entry whole, through a symbolic link. Unregistering removes it, or the link and not
/// what it leads to; where an entry of the system would count then, it writes one of the user's that hides it. What is
/// in the place of the entry and is none is never touched.
class XdgLoginItems final : public LoginItemService {
public:
    /// `settings` must outlive it. `identifier` names entry, application and icon.
    XdgLoginItems(std::string_view identifier, LoginItemPlaces places, const LoginItemSettings& settings);

    [[nodiscard]] LoginItemStatus status() override;
    [[nodiscard]] std::expected<void, LoginItemError> registerItem() override;
    [[nodiscard]] std::expected<void, LoginItemError> unregisterItem() override;
    void openSystemSettingsLoginItems() override;

private:
    enum class Entry : std::uint8_t { none, starts, isSwitchedOff, isUnregistered, lacksItsProgram, isUnknown };

    [[nodiscard]] static Entry entryOf(std::string_view text);
    [[nodiscard]] Entry usersEntry() const;
    [[nodiscard]] bool isStartedBySystem() const;
    [[nodiscard]] bool isInstalled() const;
    [[nodiscard]] std::filesystem::path usersFile() const { return places_.usersFolder / fileName_; }

    std::string identifier_;
    std::string fileName_;
    LoginItemPlaces places_;
    const LoginItemSettings& settings_;
};

}  // namespace velmorand
