#include "settings/ApplicationIconProvider.h"

#include "platform/linux/support/ScopedEnvironment.h"
#include "platform/linux/support/ScratchFolder.h"
#include "settings/ApplicationIconSource.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QIcon>
#include <array>

namespace velmorand {
namespace {

constexpr const char* square = R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">)"
                               R"(<rect width="16" height="16" fill="#ff0000"/></svg>)";

/// A provider with a theme that has the icon "editor", without a display.
class ApplicationIconProviderTest : public testing::Test {
protected:
    ApplicationIconProviderTest() {
        folder.write("test/index.theme", "[Icon Theme]\nName=Test\nDirectories=apps\n\n[apps]\nSize=16\nType=Scalable\n"
                                         "MinSize=1\nMaxSize=1024\n");
        folder.write("test/apps/editor.svg", square);
        QIcon::setThemeSearchPaths({QString::fromStdString(folder.path().string())});
        QIcon::setThemeName(QStringLiteral("test"));
    }

    [[nodiscard]] QPixmap picture(ApplicationIcon::Source source, const std::string& name, const QSize& size = {}) {
        const QString address = sourceOfIcon(ApplicationIcon{source, name});
        return provider.requestPixmap(address.section(u'/', 3), &told, size);
    }
    [[nodiscard]] static bool has(ApplicationIcon::Source source, const std::string& name) {
        return hasPictureOfIcon(sourceOfIcon(ApplicationIcon{source, name}));
    }
    [[nodiscard]] std::string at(const std::string& file) const { return (folder.path() / file).string(); }

    ScratchFolder folder;
    ScopedEnvironment runtimeFolder{"XDG_RUNTIME_DIR", folder.path().string()};

private:
    int argumentCount_ = 3;
    std::array<char, 5> name_{"test"};
    std::array<char, 10> option_{"-platform"};
    std::array<char, 10> platform_{"offscreen"};
    std::array<char*, 4> arguments_{name_.data(), option_.data(), platform_.data(), nullptr};
    QGuiApplication application_{argumentCount_, arguments_.data()};

protected:
    ApplicationIconProvider provider;
    QSize told;
};

TEST_F(ApplicationIconProviderTest, DrawsIconsOfTheThemeAsLargeAsTheyAreWanted) {
    const QPixmap pixmap = picture(ApplicationIcon::Source::theme, "editor", {48, 48});

    EXPECT_EQ(pixmap.size(), QSize(48, 48));
    EXPECT_EQ(told, QSize(48, 48));
    EXPECT_EQ(pixmap.toImage().pixelColor(24, 24), QColor(255, 0, 0));
    EXPECT_EQ(picture(ApplicationIcon::Source::theme, "editor").size(), QSize(36, 36));
    EXPECT_EQ(picture(ApplicationIcon::Source::theme, "editor", {100000, 100000}).size(), QSize(512, 512));
}

TEST_F(ApplicationIconProviderTest, DrawsIconsOfFiles) {
    folder.write("picture 100%.svg", square);

    EXPECT_EQ(picture(ApplicationIcon::Source::file, at("picture 100%.svg"), {20, 20}).size(), QSize(20, 20));
}

TEST_F(ApplicationIconProviderTest, HasNoPictureOfWhatIsNotThereOrIsNone) {
    folder.write("text.png", "no picture");
    folder.write("cut off.svg", std::string_view(square).substr(0, 20));

    EXPECT_TRUE(picture(ApplicationIcon::Source::theme, "viewer").isNull());
    EXPECT_TRUE(picture(ApplicationIcon::Source::file, at("missing.png")).isNull());
    EXPECT_TRUE(picture(ApplicationIcon::Source::file, at("text.png")).isNull());
    EXPECT_TRUE(picture(ApplicationIcon::Source::file, at("cut off.svg")).isNull());
    EXPECT_TRUE(provider.requestPixmap(QStringLiteral("nonsense"), nullptr, {}).isNull());
}

TEST_F(ApplicationIconProviderTest, KnowsWhereThereIsAPicture) {
    folder.write("picture.svg", square);
    folder.write("text.png", "no picture");

    EXPECT_TRUE(has(ApplicationIcon::Source::theme, "editor"));
    EXPECT_FALSE(has(ApplicationIcon::Source::theme, "viewer"));
    EXPECT_TRUE(has(ApplicationIcon::Source::file, at("picture.svg")));
    EXPECT_FALSE(has(ApplicationIcon::Source::file, at("text.png")));
    EXPECT_FALSE(has(ApplicationIcon::Source::file, at("missing.png")));
    EXPECT_FALSE(hasPictureOfIcon({}));
    EXPECT_FALSE(hasPictureOfIcon(QStringLiteral("image://other/theme/ZWRpdG9y")));
}

}  // namespace
}  // namespace velmorand
