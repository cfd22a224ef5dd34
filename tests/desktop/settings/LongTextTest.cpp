#include "desktop/harness/Pager.h"
#include "desktop/settings/ShortcutRecorderTest.h"

#include <fmt/format.h>

#include <QColor>
#include <QImage>
#include <QString>
#include <array>

namespace velmorand::desktop {
namespace {

constexpr int controlOptionShiftCommand = 4096 + 2048 + 512 + 256;
constexpr const char* outlineOfCaps = "#D9CBB5";
constexpr int rowPadding = 14;
constexpr int pencilSize = 16;

/// Texts that need more room than the usual ones, in the smallest window.
class LongTextTest : public ShortcutRecorderTest, public testing::WithParamInterface<int> {
protected:
    /// As where the desktop's text is larger by this many percent of the usual.
    [[nodiscard]] static Environment textScale(int percent) {
        return {{"QT_ENABLE_HIGHDPI_SCALING", "0"}, {"QT_FONT_DPI", fmt::format("{}", 96 * percent / 100)}};
    }
    void openSmallest(int percent, std::string_view pane) {
        ASSERT_NO_FATAL_FAILURE(startProgram(textScale(percent)));
        ASSERT_NO_FATAL_FAILURE(openWindow());
        choosePane(pane);
        const auto placed = Pager(observer()).place(window(), {100, 100, 722, 545}, 30);
        ASSERT_TRUE(placed) << placed.error();
    }
    [[nodiscard]] PixelRect frameOf(std::string_view role, std::string_view name) {
        return expectShown(role, name).frame.value_or(PixelRect{});
    }
    /// How many pixels of the screen have the colour there.
    [[nodiscard]] int count(const QColor& colour, const PixelRect& area) {
        const std::string file = configuration("screen.png").string();
        const auto written = observer().screenshot(file);
        EXPECT_TRUE(written) << written.error();
        const QImage screen(QString::fromStdString(file));
        int found = 0;
        for (int y = area.y; y < area.bottom(); ++y) {
            for (int x = area.x; x < area.right(); ++x) found += screen.pixelColor(x, y) == colour ? 1 : 0;
        }
        return found;
    }
};

TEST_P(LongTextTest, KeyCapsLeaveThePencilAlone) {
    const auto shortcut = [](int keyCode, std::string_view label) {
        return fmt::format(R"({{"keyCode":{},"modifiers":{},"keyDisplay":"{}"}})", keyCode, controlOptionShiftCommand,
                           label);
    };
    store(fmt::format(R"({{"shortcuts":{{"left":{},"right":{}}}}})", shortcut(114, "Key 114"),
                      shortcut(40, std::string(100, 'W'))));
    ASSERT_NO_FATAL_FAILURE(openSmallest(GetParam(), "Shortcuts"));

    for (const char* action : {"Left", "Right"}) {
        const PixelRect row = frameOf("push button", action);
        const int pencil = row.right() - rowPadding - pencilSize;
        EXPECT_GT(count(outlineOfCaps, {row.x, row.y, pencil - row.x, row.height}), 100) << action;
        EXPECT_EQ(count(outlineOfCaps, {pencil, row.y, row.right() - pencil, row.height}), 0) << action;
    }
}

TEST_P(LongTextTest, TheSidebarKeepsItsTextsApartAndToItself) {
    ASSERT_NO_FATAL_FAILURE(openSmallest(GetParam(), "About"));
    expectShown("", "Privacy");

    const int border = frameOf("", "Privacy").x;
    int bottom = 0;
    for (const char* name : {"Velmorand", "Arrange • Snap • Focus", "General", "Shortcuts", "Ignored Apps", "About"}) {
        const PixelRect text = frameOf("", name);
        EXPECT_LE(text.right(), border) << name;
        EXPECT_GE(text.y, bottom) << name;
        bottom = text.bottom();
    }
    const PixelRect link = frameOf("link", "Help & Support");
    EXPECT_LE(link.right(), border);
    EXPECT_GE(link.y, bottom);
}

TEST_P(LongTextTest, AboutStaysInThePane) {
    ASSERT_NO_FATAL_FAILURE(openSmallest(GetParam(), "About"));

    const int border = observer().visibleFrame(window()).value_or(PixelRect{}).right();
    for (const char* name : {"Velmorand collects no data.", "app.velmorand.Velmorand", "support@velmorand.app",
                             "Thank you for using Velmorand. Happy arranging!"})
        EXPECT_LT(frameOf("", name).right(), border) << name;
    EXPECT_GE(frameOf("", "Velmorand collects no data.").x, frameOf("", "Privacy").right());
    EXPECT_GE(frameOf("", "support@velmorand.app").x, frameOf("", "Support").right());
}

TEST_P(LongTextTest, TheTitleOfAPaneIsInOneLineBesideOrAboveItsButton) {
    constexpr int lineHeight = 32;
    ASSERT_NO_FATAL_FAILURE(openSmallest(GetParam(), "Shortcuts"));

    const PixelRect heading = frameOf("heading", "Shortcuts");
    const PixelRect button = frameOf("push button", "Reset Defaults");
    EXPECT_LT(heading.height, 2 * lineHeight * GetParam() / 100);
    EXPECT_TRUE(heading.right() <= button.x || heading.bottom() <= button.y) << heading << " and " << button;
    EXPECT_LE(button.right(), observer().visibleFrame(window()).value_or(PixelRect{}).right());
}

INSTANTIATE_TEST_SUITE_P(At, LongTextTest, testing::Values(100, 125, 200),
                         [](const auto& percent) { return fmt::format("{}Percent", percent.param); });

}  // namespace
}  // namespace velmorand::desktop
