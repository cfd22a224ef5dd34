#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace velmorand {

/// What an application's icon is drawn from. What it names may be missing: then there is no icon after all.
struct ApplicationIcon {
    enum class Source : std::uint8_t {
        theme,  ///< `name` is looked up in the desktop's icon theme
        file,   ///< `name` is the absolute path of a picture
    };

    Source source = Source::theme;
    std::string name;

    bool operator==(const ApplicationIcon&) const = default;
};

/// An application that the user can choose.
struct InstalledApplication {
    /// Absolute. What is there is the platform's: the application's bundle, or the entry that describes it.
    std::filesystem::path location;
    std::string bundleIdentifier;
    std::string name;
    std::optional<ApplicationIcon> icon;

    bool operator==(const InstalledApplication&) const = default;
};

}  // namespace velmorand
