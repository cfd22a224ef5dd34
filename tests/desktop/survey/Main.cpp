#include "desktop/survey/SurveyDesktop.h"
#include "desktop/survey/SurveyRun.h"
#include "desktop/survey/SurveyTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <fstream>

namespace velmorand::desktop {

namespace {

struct Arguments {
    std::filesystem::path program;
    std::filesystem::path document;
    std::vector<const SurveyManager*> managers;
};

std::optional<Arguments> parse(std::span<char*> texts) {
    if (texts.size() < 3) return std::nullopt;
    Arguments arguments{std::filesystem::absolute(texts[1]), std::filesystem::absolute(texts[2]), {}};
    for (const auto* name : texts.subspan(3)) {
        const auto* manager = surveyManager(name);
        if (manager == nullptr) return std::nullopt;
        arguments.managers.push_back(manager);
    }
    if (arguments.managers.empty()) {
        for (const auto& manager : surveyManagers()) arguments.managers.push_back(&manager);
    }
    return arguments;
}

void printMiss(const SurveyPress& press, const SurveyOutcome& outcome) {
    fmt::print("  MISSED {}: {}\n    before {}, wanted {}, after {}; around the client {},{},{},{}\n{}",
               press.action->name, outcome.reason, press.before.text(), press.wanted.text(), press.after.text(),
               press.around.left, press.around.right, press.around.top, press.around.bottom, press.log);
}

std::expected<SurveyCell, HarnessError> surveyCell(SurveyRun& run, SurveyStart start) {
    SurveyCell cell;
    const auto report = [&](const SurveyPress& press, const SurveyOutcome& outcome) {
        cell.add(press, outcome);
        if (outcome.verdict == SurveyVerdict::missed) printMiss(press, outcome);
    };
    if (const auto played = run.play(start, report); !played) return std::unexpected(played.error());
    return cell;
}

void printCell(const SurveyManager& manager, SurveyWindow window, SurveyStart start, const SurveyCell& cell) {
    fmt::print("{:<12} {:<20} {:<10} {:>2} landed, {:>2} rounded, {:>2} refused, {:>2} missed\n", manager.name,
               headingOf(window), start == SurveyStart::normal ? "normal" : "maximised", cell.landed(), cell.rounded(),
               cell.refused(), cell.missed());
    std::fflush(stdout);
}

/// Maximised comes last: some window managers never let a window out of it.
std::expected<SurveyRow, HarnessError> surveyRow(const Arguments& arguments, const SurveyManager& manager) {
    auto desktop = SurveyDesktop::open(arguments.program, manager.options);
    if (!desktop) return std::unexpected(desktop.error());
    SurveyRow row{.manager = &manager, .version = (*desktop)->windowManagerVersion()};
    for (const auto window : surveyWindows()) {
        const auto shown = (*desktop)->show(window);
        if (!shown) return std::unexpected(shown.error());
        SurveyRun run(**desktop, *shown);
        for (const auto start : {SurveyStart::normal, SurveyStart::maximized}) {
            auto cell = surveyCell(run, start);
            if (!cell) return std::unexpected(HarnessError{cell.error().message + '\n' + (*desktop)->logTails()});
            printCell(manager, window, start, *cell);
            row.cells[start].push_back(std::move(*cell));
        }
    }
    return row;
}

bool hasMisses(const SurveyRow& row) {
    return std::ranges::any_of(row.cells, [](const auto& entry) {
        return std::ranges::any_of(entry.second, [](const SurveyCell& cell) { return cell.missed() > 0; });
    });
}

int survey(const Arguments& arguments) {
    std::vector<SurveyRow> rows;
    for (const auto* manager : arguments.managers) {
        auto row = surveyRow(arguments, *manager);
        if (!row) {
            fmt::print(stderr, "{}: {}\n", manager->name, row.error().message);
            return 1;
        }
        rows.push_back(std::move(*row));
    }
    std::ofstream document(arguments.document, std::ios::binary | std::ios::trunc);
    document << surveyDocument(rows) << std::flush;
    if (!document) {
        fmt::print(stderr, "cannot write {}\n", arguments.document.string());
        return 1;
    }
    return std::ranges::any_of(rows, hasMisses) ? 1 : 0;
}

}  // namespace

}  // namespace velmorand::desktop

int main(int count, char** texts) {
    using namespace velmorand::desktop;
    const auto arguments = parse({texts, static_cast<std::size_t>(count)});
    if (!arguments) {
        fmt::print(stderr, "usage: {} <velmorand> <document> [window manager...]\nWindow managers:", texts[0]);
        for (const auto& manager : surveyManagers()) fmt::print(stderr, " {}", manager.name);
        fmt::print(stderr, "\n");
        return 2;
    }
    return survey(*arguments);
}
