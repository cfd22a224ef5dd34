#pragma once

#include "platform/linux/LoginItemSettings.h"
#include "platform/linux/XdgLoginItems.h"
#include "platform/linux/support/ScratchFolder.h"
#include "platform/linux/support/StoredFiles.h"
#include "platform/simulated/SimulatedLog.h"

#include <gtest/gtest.h>

#include <expected>
#include <filesystem>
#include <string>

namespace velmorand {

/// What the user is told of an outcome.
[[nodiscard]] inline std::string failureOf(const std::expected<void, LoginItemError>& outcome) {
    return outcome ? "no failure" : outcome.error().description;
}

/// The login item of a program in a folder made for the test, with folders of the user's and two of the system's. The
/// program is there and installed.
class XdgLoginItemsFixture : public testing::Test {
protected:
    static constexpr std::string_view fileName = "app.velmorand.Velmorand.desktop";

    XdgLoginItemsFixture() {
        writeProgram("bin/velmorand");
        writeInstalled("Type=Application\nName=Velmorand\nExec=velmorand\n");
    }

    void writeProgram(const std::filesystem::path& relative) const {
        scratch.write(relative, "#!/bin/sh\n");
        std::filesystem::permissions(scratch.path() / relative, std::filesystem::perms::owner_all);
    }
    /// Writes the user's entry, the one of a folder of the system's, the one that says that the program is installed.
    void writeUsers(const std::string& lines) const { writeEntry("config/autostart", lines); }
    void writeSystems(const std::string& where, const std::string& lines) const {
        writeEntry(where + "/autostart", lines);
    }
    void writeInstalled(const std::string& lines) const { writeEntry("data/applications", lines); }
    void writeEntry(const std::filesystem::path& where, const std::string& lines) const {
        scratch.write(where / fileName, "[Desktop Entry]\n" + lines);
    }

    /// Lines that start the program, and nothing more.
    [[nodiscard]] std::string starting() const {
        return "Type=Application\nName=Velmorand\nExec=" + program.native() + "\n";
    }

    ScratchFolder scratch;
    const std::filesystem::path program = scratch.path() / "bin/velmorand";
    const std::filesystem::path folder = scratch.path() / "config/autostart";
    const std::filesystem::path file = folder / fileName;
    SimulatedLog log;
    LoginItemSettings settings{log};
    LoginItemPlaces places{program,
                           folder,
                           {scratch.path() / "first/autostart", scratch.path() / "second/autostart"},
                           {scratch.path() / "nothing", scratch.path() / "data"}};
    XdgLoginItems items{"app.velmorand.Velmorand", places, settings};
};

}  // namespace velmorand
