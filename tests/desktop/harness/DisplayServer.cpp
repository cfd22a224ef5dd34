#include "desktop/harness/DisplayServer.h"

#include "desktop/harness/Deadline.h"

#include <fmt/format.h>

#include <fstream>

namespace velmorand::desktop {

namespace {

/// No real device is touched: the screen lies in memory, and the only keys and pointers are those of the tests. The
/// mode makes the screen start in its full size.
constexpr std::string_view severalOutputsConfiguration = R"(Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoEnableDevices" "false"
    Option "AutoAddGPU" "false"
    Option "DontVTSwitch" "true"
EndSection
Section "Device"
    Identifier "memory"
    Driver "dummy"
    VideoRam {kilobytes}
EndSection
Section "Monitor"
    Identifier "first"
    HorizSync 1.0-2000.0
    VertRefresh 1.0-200.0
    Modeline "whole" {clock} {width} {hsyncStart} {hsyncEnd} {htotal} {height} {vsyncStart} {vsyncEnd} {vtotal}
EndSection
Section "Screen"
    Identifier "screen"
    Device "memory"
    Monitor "first"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "whole"
        Virtual {width} {height}
    EndSubSection
EndSection
)";

std::expected<std::filesystem::path, HarnessError> writeConfiguration(const DisplayServer::Options& options) {
    auto file = options.folder / "x-server.conf";
    const int htotal = options.width + 80;
    const int vtotal = options.height + 20;
    const double clock = htotal * vtotal * 60.0 / 1e6;
    std::ofstream stream(file);
    stream << fmt::format(severalOutputsConfiguration,
                          fmt::arg("kilobytes", options.width * options.height * 4 / 1024 + 4096),
                          fmt::arg("clock", fmt::format("{:.2f}", clock)), fmt::arg("width", options.width),
                          fmt::arg("hsyncStart", options.width + 8), fmt::arg("hsyncEnd", options.width + 40),
                          fmt::arg("htotal", htotal), fmt::arg("height", options.height),
                          fmt::arg("vsyncStart", options.height + 4), fmt::arg("vsyncEnd", options.height + 12),
                          fmt::arg("vtotal", vtotal))
           << std::flush;
    if (!stream) return std::unexpected(HarnessError{"cannot write " + file.string()});
    return file;
}

std::vector<std::string> commandWithOneOutput(const DisplayServer::Options& options) {
    return {"Xvfb", "-screen", "0", fmt::format("{}x{}x24", options.width, options.height)};
}

/// The server itself, not the command in the PATH: that one refuses configuration files of ordinary users.
std::vector<std::string> commandWithSeveralOutputs(const DisplayServer::Options& options,
                                                   const std::filesystem::path& configuration) {
    return {"/usr/lib/xorg/Xorg", "-config",     configuration, "-logfile", options.folder / "x-server-own.log",
            "-sharevts",          "-novtswitch", "+iglx"};
}

std::expected<std::vector<std::string>, HarnessError> commandOf(const DisplayServer::Options& options) {
    std::vector<std::string> command;
    switch (options.outputs) {
        case OutputKind::single: command = commandWithOneOutput(options); break;
        case OutputKind::several: {
            const auto configuration = writeConfiguration(options);
            if (!configuration) return std::unexpected(configuration.error());
            command = commandWithSeveralOutputs(options, *configuration);
            break;
        }
    }
    // Without -noreset the server would start afresh whenever its last client leaves.
    command.insert(command.end(), {"-displayfd", "3", "-dpi", "96", "-nolisten", "tcp", "-noreset"});
    return command;
}

/// Without an input device this server numbers keys in a way of its own; the one of all real keyboards on Linux is
/// wanted.
std::expected<void, HarnessError> setUpKeyboard(const DisplayServer::Options& options, const std::string& displayName) {
    auto process = ChildProcess::start(
        {.arguments = {"setxkbmap", "-display", displayName, "-rules", "evdev", "-model", "pc105", "-layout", "us"},
         .environment = options.environment,
         .logFile = options.folder / "keyboard.log"});
    if (!process) return std::unexpected(process.error());
    const auto status = process->wait(patience);
    if (status && status->isSuccess()) return {};
    return std::unexpected(HarnessError{"the keyboard cannot be set up\n" + process->logTail()});
}

}  // namespace

std::expected<DisplayServer, HarnessError> DisplayServer::start(const Options& options) {
    const auto command = commandOf(options);
    if (!command) return std::unexpected(command.error());
    auto process = ChildProcess::start({.arguments = *command,
                                        .environment = options.environment,
                                        .logFile = options.folder / "x-server.log",
                                        .reportsOnDescriptor3 = true});
    if (!process) return std::unexpected(process.error());
    const auto number = process->reportedLine(patience);
    if (!number || number->empty()) {
        return std::unexpected(HarnessError{"the X server does not start\n" + process->logTail()});
    }
    const auto displayName = ":" + *number;
    if (options.outputs == OutputKind::several) {
        if (auto done = setUpKeyboard(options, displayName); !done) return std::unexpected(done.error());
    }
    return DisplayServer(std::move(*process), displayName);
}

}  // namespace velmorand::desktop
