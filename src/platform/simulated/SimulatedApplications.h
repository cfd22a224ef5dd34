#pragma once

#include "platform/InstalledApplication.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmorand {

/// An application of a simulated desktop as it lies on the disk.
struct SimulatedInstalledApplication {
    /// Absent in a bundle that has none.
    std::optional<std::string> bundleIdentifier = "org.example.Application";
    std::string name = "Application";
    std::optional<ApplicationIcon> icon = {};
    /// Whether it is offered to the user.
    bool isListed = true;
};

/// The installed applications of a simulated desktop. A test installs them and takes them away.
class SimulatedApplications {
public:
    /// Puts the application at this location, in the place of what was there.
    void install(const std::filesystem::path& location, SimulatedInstalledApplication application) {
        applications_.insert_or_assign(location, std::move(application));
    }
    /// Nothing is at this location any more.
    void remove(const std::filesystem::path& location) { applications_.erase(location); }

    /// As in `Workspace`; of several the first location in alphabetical order counts.
    [[nodiscard]] std::optional<std::filesystem::path> withIdentifier(std::string_view identifier) const {
        for (const auto& [location, application] : applications_) {
            if (application.bundleIdentifier == identifier) return location;
        }
        return std::nullopt;
    }
    [[nodiscard]] std::string displayName(const std::filesystem::path& location) const {
        const auto* application = find(location);
        if (application != nullptr) return application->name;
        return location.filename().empty() ? location.string() : location.filename().string();
    }
    [[nodiscard]] std::optional<ApplicationIcon> icon(const std::filesystem::path& location) const {
        const auto* application = find(location);
        return application == nullptr ? std::nullopt : application->icon;
    }
    [[nodiscard]] std::optional<std::string> identifier(const std::filesystem::path& location) const {
        const auto* application = find(location);
        return application == nullptr ? std::nullopt : application->bundleIdentifier;
    }
    [[nodiscard]] std::vector<InstalledApplication> listed() const {
        std::vector<InstalledApplication> found;
        for (const auto& [location, application] : applications_) {
            if (application.isListed && application.bundleIdentifier)
                found.push_back({location, *application.bundleIdentifier, application.name, application.icon});
        }
        return found;
    }

private:
    [[nodiscard]] const SimulatedInstalledApplication* find(const std::filesystem::path& location) const {
        const auto found = applications_.find(location);
        return found == applications_.end() ? nullptr : &found->second;
    }

    std::map<std::filesystem::path, SimulatedInstalledApplication> applications_;
};

}  // namespace velmorand
