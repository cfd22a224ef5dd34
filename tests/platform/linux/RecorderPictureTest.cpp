#include "platform/linux/RecorderPicture.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string>

namespace velmorand {
namespace {

constexpr std::uint32_t paper = 0xFBF6EF;

/// Drawing needs the toolkit's fonts, but no screen.
class RecorderPictureTest : public testing::Test {
protected:
    RecorderPictureTest() { setenv("QT_QPA_PLATFORM", "offscreen", 1); }

    [[nodiscard]] static RecorderPanelContent content() {
        return {.title = "Velmorand",
                .prompt = "Press the new shortcut for Top Right",
                .heldModifierSymbols = {},
                .message = {"Include at least one of Command, Control, or Option."}};
    }

    static void expectWhole(const RecorderPicture& picture) {
        EXPECT_EQ(picture.pixels.size(), std::size_t{picture.width} * picture.height);
        EXPECT_EQ(picture.pixels.front(), paper);
        EXPECT_EQ(picture.pixels.back(), paper);
        EXPECT_TRUE(std::ranges::all_of(picture.pixels, [](std::uint32_t pixel) { return pixel <= 0xFFFFFF; }));
    }

    /// Whether anything is drawn in these rows left or right of where texts may be.
    static void expectFreeMargins(const RecorderPicture& picture) {
        for (std::size_t y = 0; y < picture.height; ++y) {
            for (std::size_t x = 0; x < 20; ++x) {
                EXPECT_EQ(picture.pixels[y * picture.width + x], paper);
                EXPECT_EQ(picture.pixels[(y + 1) * picture.width - 1 - x], paper);
            }
        }
    }

private:
    int argumentCount_ = 1;
    std::array<char, 5> name_{"test"};
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    std::unique_ptr<QGuiApplication> application_ = [this] {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        return std::make_unique<QGuiApplication>(argumentCount_, arguments_.data());
    }();
};

TEST_F(RecorderPictureTest, IsAsLargeAsThePanelInPixels) {
    const RecorderPicture plain = drawRecorderPanel(content(), 1);
    const RecorderPicture twice = drawRecorderPanel(content(), 2);

    EXPECT_EQ(plain.width, 480);
    EXPECT_EQ(twice.width, 960);
    EXPECT_EQ(twice.height, 2 * plain.height);
    expectWhole(plain);
    expectWhole(twice);
}

TEST_F(RecorderPictureTest, HeldModifiersAndTextsChangeIt) {
    const RecorderPicture before = drawRecorderPanel(content(), 1);
    RecorderPanelContent held = content();
    held.heldModifierSymbols = {"⌃", "⌥", "⇧", "⌘"};
    RecorderPanelContent asking = content();
    asking.message = {"This shortcut is already used by Maximize.", "Press Return to replace it."};

    EXPECT_NE(drawRecorderPanel(held, 1).pixels, before.pixels);
    EXPECT_NE(drawRecorderPanel(asking, 1).pixels, before.pixels);
    EXPECT_EQ(drawRecorderPanel(content(), 1).pixels, before.pixels);
}

TEST_F(RecorderPictureTest, LongerTextsMakeItHigherUpToALimit) {
    const RecorderPicture plain = drawRecorderPanel(content(), 1);
    RecorderPanelContent longer = content();
    for (int i = 0; i < 8; ++i) longer.message.push_back("Another line that has something to say about it.");
    const RecorderPicture higher = drawRecorderPanel(longer, 1);
    EXPECT_GT(higher.height, plain.height);
    expectWhole(higher);

    RecorderPanelContent endless = content();
    endless.prompt = std::string(20'000, 'W');
    endless.message.assign(500, std::string(20'000, 'W'));
    endless.heldModifierSymbols.assign(500, "⌘");
    const RecorderPicture highest = drawRecorderPanel(endless, 1);
    EXPECT_LT(highest.height, 600);
    expectWhole(highest);
    expectFreeMargins(highest);
}

TEST_F(RecorderPictureTest, OddTextsStayInside) {
    for (const std::string& text :
         {std::string(), std::string("\n\n\n"), std::string("a\tb\0c", 5), std::string("\xff\xfe\x80"),
          std::string("مرحبا بالعالم"),
          std::string("日本語のとても長いテキストをここに書きます。日本語のとても長いテキスト"),
          std::string("👩‍👩‍👧‍👦 👩‍👩‍👧‍👦"), std::string("<b>bold</b> & more")}) {
        const RecorderPicture picture = drawRecorderPanel(
            {.title = text, .prompt = text, .heldModifierSymbols = {text, text}, .message = {text, text}}, 1.5);
        expectWhole(picture);
        expectFreeMargins(picture);
    }
}

TEST_F(RecorderPictureTest, ScalesThatMakeNoSenseAreBounded) {
    EXPECT_EQ(drawRecorderPanel(content(), 0).width, 480);
    EXPECT_EQ(drawRecorderPanel(content(), -3).width, 480);
    EXPECT_EQ(drawRecorderPanel(content(), 1000).width, 480 * 8);
}

}  // namespace
}  // namespace velmorand
