#include "settings/TranslatedText.h"

#include "settings/ShortcutRecorderViewModel.h"
#include "settings/ShortcutRow.h"
#include "settings/support/QtPrinting.h"
#include "shortcuts/ShortcutRecorderPanel.h"
#include "support/DesktopFixture.h"

#include <QCoreApplication>
#include <QTranslator>
#include <array>

namespace velmorand {
namespace {

using enum WindowAction;

constexpr std::uint64_t optionFlag = 0x80000;
constexpr std::uint64_t commandFlag = 0x100000;
constexpr std::uint32_t keyA = 0;
constexpr std::uint32_t keyK = 40;
constexpr std::uint32_t keyRightArrow = 124;

/// A language in which every text is the English one in brackets with its context.
class BracketTranslator : public QTranslator {
public:
    [[nodiscard]] QString translate(const char* context, const char* sourceText, const char* /*disambiguation*/,
                                    int /*count*/) const override {
        return QStringLiteral("<%1 %2>")
            .arg(QLatin1StringView(context))
            .replace(QStringLiteral("%2"), QString::fromUtf8(sourceText));
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

class TranslatedTextTest : public DesktopFixture {
protected:
    TranslatedTextTest() { QCoreApplication::installTranslator(&translator_); }

    void press(std::uint32_t keyCode, std::uint64_t flags, const std::string& characters) {
        platform.recorderPanelHost().press({keyCode, flags, characters});
        platform.runLoop().runPending();
    }

private:
    int argumentCount_ = 1;
    std::array<char, 5> name_{"test"};
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    QCoreApplication application_{argumentCount_, arguments_.data()};
    BracketTranslator translator_;

protected:
    ShortcutRecorderPanel panel{platform.recorderPanelHost(), platform.runLoop()};
    ShortcutRecorderViewModel view{panel};
};

TEST_F(TranslatedTextTest, ActionsHaveTheirNamesInTheUsersLanguage) {
    const ShortcutRow row(topLeft, [] {});

    EXPECT_EQ(row.title(), "<WindowAction Top Left>");
    EXPECT_EQ(titlesOf(std::array{leftHalf, topLeft}), "<WindowAction Left>, <WindowAction Top Left>");
}

TEST_F(TranslatedTextTest, TheRecorderSpeaksTheUsersLanguage) {
    panel.open(topLeft, preferencesStore);

    EXPECT_EQ(view.prompt(), "<ShortcutRecorder Press the new shortcut for <WindowAction Top Left>>");
    EXPECT_EQ(view.hint(), "<ShortcutRecorder Press Escape to cancel — add a modifier to bind Escape itself.>");
    EXPECT_EQ(view.cancelTitle(), "<ShortcutRecorder Cancel>");
    EXPECT_EQ(view.removeTitle(), "<ShortcutRecorder Remove Current Shortcut>");
    press(keyA, 0, "a");
    EXPECT_EQ(view.hint(), "<ShortcutRecorder Include at least one of Command, Control, or Option.>");
}

TEST_F(TranslatedTextTest, SoDoItsQuestions) {
    panel.open(topLeft, preferencesStore);

    press(keyRightArrow, commandFlag | optionFlag, "");
    EXPECT_EQ(view.questionTitle(), "<ShortcutRecorder This shortcut is already used by <WindowAction Right>.>");
    EXPECT_EQ(view.questionText(),
              "<ShortcutRecorder <WindowAction Right> will have no shortcut until you assign a new one.>");
    EXPECT_EQ(view.confirmTitle(), "<ShortcutRecorder Replace>");
    press(keyK, optionFlag, "k");
    EXPECT_EQ(view.questionText(), "<ShortcutRecorder Add Command or Control for a more reliable global shortcut.>");
    EXPECT_EQ(view.confirmTitle(), "<ShortcutRecorder Use Anyway>");
}

}  // namespace
}  // namespace velmorand
