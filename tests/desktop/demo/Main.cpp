#include "desktop/demo/DemoDesktop.h"
#include "desktop/demo/DemoRun.h"
#include "desktop/demo/DemoTable.h"

#include <fmt/format.h>

#include <csignal>
#include <cstdio>
#include <set>
#include <system_error>

namespace velmorand::desktop {

namespace {

volatile std::sig_atomic_t interrupted = 0;

struct Arguments {
    std::filesystem::path program;
    std::filesystem::path pictures;
    WindowManagerKind windowManager = WindowManagerKind::xfwm4;
};

std::optional<Arguments> parse(std::span<char*> texts) {
    if (texts.size() < 3 || texts.size() > 4) return std::nullopt;
    Arguments arguments{std::filesystem::absolute(texts[1]), std::filesystem::absolute(texts[2])};
    if (texts.size() == 4) {
        const auto chosen = windowManagerNamed(texts[3]);
        if (!chosen) return std::nullopt;
        arguments.windowManager = *chosen;
    }
    return arguments;
}

void fail(std::string_view what, const DemoDesktop* desktop = nullptr) {
    std::fflush(stdout);
    fmt::print(stderr, "\n{}\n{}", what, desktop == nullptr ? "" : desktop->logTails());
}

/// The number of steps that went wrong, or absent when the demo could not go on.
std::optional<int> playScript(DemoDesktop& desktop, const std::filesystem::path& pictures) {
    DemoRun run(desktop, pictures);
    if (auto taken = run.takePicture("start"); !taken) {
        fail(taken.error().message);
        return std::nullopt;
    }
    printHeading(desktop.workAreas());
    int number = 0;
    int failures = 0;
    for (const auto& step : demoScript()) {
        if (interrupted != 0) return std::nullopt;
        const auto row = run.perform(step);
        if (!row) {
            fail(row.error().message, &desktop);
            return std::nullopt;
        }
        printRow(++number, *row);
        if (row->verdict == DemoVerdict::failed) ++failures;
        if (step.picture.empty()) continue;
        if (auto taken = run.takePicture(step.picture); !taken) {
            fail(taken.error().message);
            return std::nullopt;
        }
    }
    return failures;
}

/// Whether the panel shows the program's icon and its menu opens at a click.
bool showMenu(DemoDesktop& desktop, const std::filesystem::path& pictures) {
    const auto menu = desktop.openMenu();
    if (!menu) {
        fail(menu.error().message, &desktop);
        return false;
    }
    fmt::print("\nThe menu of the icon on the panel: {}\n", desktop.fromRoot(*menu).text());
    const auto taken = desktop.observer().screenshot(pictures / "menu.png");
    if (!taken) fail(taken.error().message);
    desktop.keyboard().press(Key::escape);
    return taken.has_value();
}

bool playsEveryAction() {
    std::set<std::string_view> played;
    for (const auto& step : demoScript()) played.insert(step.action);
    return played.size() == demoActions().size();
}

int runDemo(const Arguments& arguments) {
    std::error_code error;
    std::filesystem::create_directories(arguments.pictures, error);
    const auto desktop = DemoDesktop::open(arguments.program, demoActions().size(), arguments.windowManager);
    if (!desktop) {
        fail(desktop.error().message);
        return 1;
    }
    const auto failures = playScript(**desktop, arguments.pictures);
    if (!failures || !showMenu(**desktop, arguments.pictures)) return 1;

    const auto status = (*desktop)->program().terminate();
    fmt::print("\n{} key presses, {} wrong; the program ended with {}. Pictures: {}\n", demoScript().size(), *failures,
               status.text(), arguments.pictures.string());
    if (*failures > 0 || !status.isSuccess() || !playsEveryAction()) {
        fail("The demo failed.", desktop->get());
        return 1;
    }
    return 0;
}

}  // namespace

}  // namespace velmorand::desktop

int main(int count, char** texts) {
    using namespace velmorand::desktop;
    const auto arguments = parse({texts, static_cast<std::size_t>(count)});
    if (!arguments) {
        fmt::print(stderr, "usage: {} <velmorand> <folder for pictures> [window manager]\n", texts[0]);
        return 2;
    }
    const auto interrupt = [](int) { interrupted = 1; };
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    return runDemo(*arguments);
}
