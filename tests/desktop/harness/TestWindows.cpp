#include "desktop/harness/TestWindows.h"

#include <fmt/format.h>

namespace velmorand::desktop {

namespace {

/// Of all windows but the terminal.
void appendCommonArguments(std::vector<std::string>& command, const TestWindow& window) {
    command.insert(command.end(),
                   {"--title", window.title, "--size", fmt::format("{}x{}", window.width, window.height)});
    if (window.minimumWidth > 0 || window.minimumHeight > 0) {
        command.insert(command.end(),
                       {"--minimum-size", fmt::format("{}x{}", window.minimumWidth, window.minimumHeight)});
    }
    if (!window.isResizable) command.emplace_back("--fixed");
}

std::vector<std::string> pythonWindow(const char* script, const TestWindow& window) {
    std::vector<std::string> command{"/usr/bin/python3", fmt::format("{}/{}", VELMORAND_TEST_WINDOWS_FOLDER, script)};
    appendCommonArguments(command, window);
    if (!window.applicationId.empty()) command.insert(command.end(), {"--application-id", window.applicationId});
    return command;
}

}  // namespace

std::vector<std::string> clientSideWindow(const TestWindow& window) {
    return pythonWindow("client_side.py", window);
}

std::vector<std::string> gtk4Window(const TestWindow& window) {
    return pythonWindow("client_side_gtk4.py", window);
}

std::vector<std::string> serverSideWindow(const TestWindow& window) {
    return pythonWindow("server_side.py", window);
}

std::vector<std::string> qtWindow(const TestWindow& window) {
    std::vector<std::string> command{VELMORAND_QT_WINDOW};
    appendCommonArguments(command, window);
    return command;
}

std::vector<std::string> plainWindow(const TestWindow& window) {
    std::vector<std::string> command{VELMORAND_PLAIN_WINDOW};
    appendCommonArguments(command, window);
    if (window.hasStaticGravity) command.emplace_back("--static-gravity");
    if (window.isDialog) command.emplace_back("--dialog");
    if (!window.applicationId.empty()) command.insert(command.end(), {"--class", window.applicationId});
    return command;
}

std::vector<std::string> terminalWindow(const TestWindow& window) {
    constexpr const char* session =
        R"(printf '%s\n' '$ ls' 'Desktop  Documents  Music  Pictures  notes.txt' '$ wc -l notes.txt'
                                        printf '%s' '42 notes.txt' && printf '\n$ '; exec sleep 86400)";
    return {"xterm", "-T",      window.title, "-fa",  "DejaVu Sans Mono", "-fs", "11", "-geometry",
            "72x20", "-bg",     "#1d2330",    "-fg",  "#d8dee9",          "+sb", "-b", "8",
            "-e",    "/bin/sh", "-c",         session};
}

}  // namespace velmorand::desktop
