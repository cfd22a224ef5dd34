#pragma once

#include "desktop/harness/ChildProcess.h"
#include "desktop/harness/SettingsFile.h"
#include "desktop/harness/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace velmorand::desktop {

/// How a program ended, and what it wrote.
struct ProgramEnd {
    ExitStatus status;
    std::string output;
};

/// The folders of a user who has the program installed, in one folder made for the test.
class LoginTest : public testing::Test {
protected:
    static constexpr std::string_view fileName = VELMORAND_IDENTIFIER ".desktop";

    void SetUp() override {
        ASSERT_TRUE(folder_) << folder_.error().message;
        write(at("data/applications") / fileName,
              "[Desktop Entry]\nType=Application\nName=Velmorand\nExec=velmorand\n");
        std::filesystem::create_directory(at("logs"));
    }

    [[nodiscard]] std::filesystem::path at(const std::filesystem::path& relative) const {
        return folder_->path() / relative;
    }
    [[nodiscard]] std::filesystem::path entry() const { return at("config/autostart") / fileName; }

    void write(const std::filesystem::path& file, std::string_view text) {
        const auto written = writeSettingsFile(file, text);
        ASSERT_TRUE(written) << written.error().message;
    }

    /// Runs a program to its end.
    [[nodiscard]] ProgramEnd run(const std::vector<std::string>& arguments) {
        const Environment environment{{"HOME", at("home")},
                                      {"PATH", "/usr/local/bin:/usr/bin:/bin"},
                                      {"LANG", "C.UTF-8"},
                                      {"XDG_CONFIG_HOME", at("config")},
                                      {"XDG_CONFIG_DIRS", at("system")},
                                      {"XDG_DATA_HOME", at("data")},
                                      {"XDG_DATA_DIRS", at("system")},
                                      {"SYSTEMD_LOG_TARGET", "console"}};
        const auto log = at("logs") / std::to_string(++runs_);
        auto process = ChildProcess::start({.arguments = arguments, .environment = environment, .logFile = log});
        if (!process) throw std::runtime_error(process.error().message);
        const auto status = process->wait(std::chrono::seconds(30));
        if (!status) throw std::runtime_error(arguments.front() + " does not end");
        return {*status, process->log()};
    }

private:
    std::expected<TemporaryFolder, HarnessError> folder_ = TemporaryFolder::create("velmorand-login-");
    int runs_ = 0;
};

}  // namespace velmorand::desktop
