#include "settings/ApplicationIconSource.h"

#include "settings/support/QtPrinting.h"

#include <gtest/gtest.h>

#include <QUrl>

namespace velmorand {
namespace {

/// The part of an address that reaches the provider of its pictures.
QString idOf(const QString& source) {
    return QUrl(source).toString(QUrl::RemoveScheme | QUrl::RemoveAuthority).mid(1);
}

TEST(ApplicationIconSourceTest, IsEmptyWithoutAnIcon) {
    EXPECT_EQ(sourceOfIcon(std::nullopt), "");
}

TEST(ApplicationIconSourceTest, LeadsToTheSameIcon) {
    for (const std::string name :
         {"editor", "org.example.Editor", "/opt/The Editor/100%#?&.png", "é/%2F", "a\xFF", "~"}) {
        for (const auto source : {ApplicationIcon::Source::theme, ApplicationIcon::Source::file}) {
            const ApplicationIcon icon{source, name};
            EXPECT_EQ(iconOfSourceId(idOf(sourceOfIcon(icon))), icon) << name;
        }
    }
}

TEST(ApplicationIconSourceTest, LeadsNowhereFromAnyOtherText) {
    for (const char* id : {"", "theme", "theme/", "file/", "other/ZQ", "theme/not base64!", "ZQ"})
        EXPECT_EQ(iconOfSourceId(id), std::nullopt) << id;
}

}  // namespace
}  // namespace velmorand
