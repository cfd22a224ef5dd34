#pragma once

#include "platform/linux/support/ScopedEnvironment.h"
#include "platform/linux/support/ScratchFolder.h"
#include "platform/simulated/SimulatedLog.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <ostream>
#include <string>

namespace velmorand {

/// What a desktop's page is opened with; each argument ends with a bar.
struct SettingsPageRow {
    std::string desktop;
    std::string program;
    std::string arguments;

    friend void PrintTo(const SettingsPageRow& row, std::ostream* out) { *out << row.program; }
};

/// Programs in a folder that is all of PATH; each tells through a pipe that it was started, and how.
class SettingsPageFixture : public testing::Test {
protected:
    /// This desktop runs, with those programs, until the object dies.
    class Desktop {
    public:
        Desktop(const SettingsPageFixture& fixture, const std::string& name)
            : name_("XDG_CURRENT_DESKTOP", name), path_("PATH", (fixture.folder_.path() / "bin").native()) {}

    private:
        ScopedEnvironment name_;
        ScopedEnvironment path_;
    };

    SettingsPageFixture() { folder_.makePipe("told"); }
    ~SettingsPageFixture() override { close(pipe_); }

    SettingsPageFixture(const SettingsPageFixture&) = delete;
    SettingsPageFixture& operator=(const SettingsPageFixture&) = delete;

    void SetUp() override {
        pipe_ = ::open((folder_.path() / "told").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        ASSERT_GE(pipe_, 0);
    }

    /// A program of the shell's own commands alone, as there is no other in PATH.
    void install(const std::string& name, const std::string& command = R"(printf '%s|' "${0##*/}" "$@")") {
        write("bin/" + name, "#!/bin/sh\n{ " + command + "; } >" + (folder_.path() / "told").native() + "\n");
    }
    void write(const std::string& name, const std::string& text) {
        folder_.write(name, text);
        std::filesystem::permissions(folder_.path() / name, std::filesystem::perms::owner_all);
    }

    /// What the program told before it ended; empty when none was started.
    std::string told() {
        std::string text;
        for (;;) {
            pollfd waiting{.fd = pipe_, .events = POLLIN, .revents = 0};
            if (poll(&waiting, 1, 15'000) <= 0) return text;
            std::array<char, 256> buffer{};
            const ssize_t count = read(pipe_, buffer.data(), buffer.size());
            if (count <= 0) return text;
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
    }

    ScratchFolder folder_;
    SimulatedLog log;

private:
    int pipe_ = -1;
};

}  // namespace velmorand
