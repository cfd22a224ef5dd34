#include "desktop/bus/StatusItemFixture.h"
#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/support/RedirectedStandardError.h"

#include <unistd.h>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <utility>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StatusItemTest : public StatusItemFixture {
protected:
    [[nodiscard]] StatusImage image(StatusImageKind kind, std::string_view name) {
        return bar().image(kind, name, "Description").value_or(StatusImage{});
    }
    /// What came last; waits for it.
    [[nodiscard]] bool signalsBecome(const std::vector<std::string>& expected) {
        return runUntil([&] { return panel().signalsSeen() == expected; });
    }
    [[nodiscard]] static std::string text(const QVariantMap& properties, const char* name) {
        return properties.value(QString::fromLatin1(name)).toString().toStdString();
    }
};

TEST_F(StatusItemTest, MakesItselfKnownUnderANameWithItsProcess) {
    startPanel();
    makeItem();

    const QString name = panel().waitForItem();
    EXPECT_TRUE(name.startsWith(QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(getpid()))) << name.toStdString();
    EXPECT_TRUE(item().hasButton());
}

TEST_F(StatusItemTest, APanelThatComesLaterLearnsOfIt) {
    makeItem();
    runPosted();

    startPanel();

    EXPECT_NE(panel().waitForItem(), QString());
}

TEST_F(StatusItemTest, APanelThatComesBackLearnsOfItAgain) {
    startPanel();
    makeItem();
    const QString name = panel().waitForItem();
    stopPanel();

    startPanel();

    EXPECT_EQ(panel().waitForItem(), name);
}

TEST_F(StatusItemTest, APanelThatIsNotReadyYetIsToldAgain) {
    startPanel();
    panel().refuseRegistrations(2);

    makeItem();

    EXPECT_NE(panel().waitForItem(), QString());
}

TEST_F(StatusItemTest, WhereSomebodyElseHasTheNameTheConnectionsOwnOneServes) {
    startPanel();
    makeItem();
    const QString name = panel().waitForItem();
    const auto dash = name.lastIndexOf(u'-') + 1;
    const QString next = name.first(dash) + QString::number(name.sliced(dash).toInt() + 1);
    QDBusConnection other = connectToBus();
    ASSERT_TRUE(other.registerService(next));
    endItem();

    makeItem();

    EXPECT_EQ(panel().waitForItem(1), ownBus_.baseService());
    EXPECT_EQ(text(panel().itemProperties(), "Id"), "velmorand");
}

TEST_F(StatusItemTest, AnItemThatFollowsAnotherHasANameOfItsOwn) {
    show({});
    const QString first = panel().registered().last();
    endItem();
    makeItem();

    EXPECT_NE(panel().waitForItem(1), first);
    EXPECT_EQ(text(panel().itemProperties(), "Id"), "velmorand");
    EXPECT_EQ(panel().bus().interface()->isServiceRegistered(first).value(), false);
}

TEST_F(StatusItemTest, TellsWhatItIs) {
    show({});
    item().setImage(image(StatusImageKind::resource, "MenuBarTemplate"));
    item().setTitle("Line one\nand\tmore");
    item().setToolTip("Fish & Chips");

    const QVariantMap properties = panel().itemProperties();
    EXPECT_EQ(text(properties, "Category"), "ApplicationStatus");
    EXPECT_EQ(text(properties, "Id"), "velmorand");
    EXPECT_EQ(text(properties, "Status"), "Active");
    EXPECT_EQ(text(properties, "Title"), "Line one and more");
    EXPECT_EQ(text(properties, "IconName"), "app.velmorand.Velmorand-symbolic");
    EXPECT_EQ(text(properties, "IconAccessibleDesc"), "Description");
    EXPECT_TRUE(text(properties, "IconThemePath").ends_with("/share/velmorand/icons"))
        << text(properties, "IconThemePath");
    EXPECT_EQ(properties.value(QStringLiteral("ItemIsMenu")), QVariant(true));
    EXPECT_EQ(properties.value(QStringLiteral("Menu")).value<QDBusObjectPath>().path(), QStringLiteral("/MenuBar"));
    const auto toolTip = qdbus_cast<BusToolTip>(properties.value(QStringLiteral("ToolTip")));
    EXPECT_EQ(toolTip.title.toStdString(), "Fish &\u2060 Chips");
    EXPECT_EQ(toolTip.text.toStdString(), "");
    EXPECT_EQ(properties.value(QStringLiteral("ToolTip")).value<QDBusArgument>().currentSignature(),
              QStringLiteral("(sa(iiay)ss)"));
}

TEST_F(StatusItemTest, PanelsThatDoNotReadItsFolderGetThePicturesThemselves) {
    show({});
    for (const auto& [kind, name] : {std::pair{StatusImageKind::resource, "MenuBarTemplate"},
                                     std::pair{StatusImageKind::symbol, "rectangle.3.group"},
                                     std::pair{StatusImageKind::symbol, "exclamationmark.triangle"}}) {
        item().setImage(image(kind, name));

        const QVariant sent = panel().itemProperties().value(QStringLiteral("IconPixmap"));
        ASSERT_EQ(sent.value<QDBusArgument>().currentSignature(), QStringLiteral("a(iiay)"));
        const auto pixmaps = qdbus_cast<QList<BusPixmap>>(sent);

        std::vector<int> widths;
        for (const BusPixmap& pixmap : pixmaps) {
            widths.push_back(pixmap.width);
            EXPECT_EQ(pixmap.height, pixmap.width) << name;
            ASSERT_EQ(pixmap.pixels.size(), 4 * pixmap.width * pixmap.height) << name;
            EXPECT_EQ(pixmap.pixels.first(4), QByteArray(4, '\0')) << name << ": the corner is transparent";
            EXPECT_TRUE(pixmap.pixels.contains('\xff')) << name << ": something is seen";
        }
        EXPECT_THAT(widths, ElementsAre(16, 22, 24, 32, 48)) << name;
    }
}

TEST_F(StatusItemTest, WithoutItsIconsThereAreNoImagesAndTheTitleHasAnIconOfTheTheme) {
    show({});
    const LinuxStatusBar bare(ownBus_, runLoop, QString::fromStdString(folder().string()));
    EXPECT_EQ(bare.image(StatusImageKind::resource, "MenuBarTemplate", ""), std::nullopt);
    EXPECT_EQ(LinuxStatusBar(ownBus_, runLoop, {}).image(StatusImageKind::resource, "MenuBarTemplate", ""),
              std::nullopt);

    item().setTitle("Velmorand");

    EXPECT_EQ(text(panel().itemProperties(), "IconName"), "preferences-system");
}

TEST_F(StatusItemTest, WithoutATitleOfItsOwnItHasTheProgramsName) {
    show({});
    EXPECT_EQ(text(panel().itemProperties(), "Title"), "Velmorand");
}

TEST_F(StatusItemTest, TellsChangesAndOnlyThose) {
    show({});
    item().setImage(image(StatusImageKind::resource, "MenuBarTemplate"));
    item().setTitle("one");
    item().setToolTip("one");
    ASSERT_TRUE(signalsBecome({"NewIcon", "NewTitle", "NewToolTip"}));
    panel().forgetSignals();

    item().setImage(image(StatusImageKind::resource, "MenuBarTemplate"));
    item().setTitle("one");
    item().setToolTip("one");
    item().setImage(image(StatusImageKind::symbol, "exclamationmark.triangle"));

    EXPECT_TRUE(signalsBecome({"NewIcon"}));
    EXPECT_EQ(text(panel().itemProperties(), "IconName"), "app.velmorand.Velmorand.warning-symbolic");
    StatusImage secondWarning = image(StatusImageKind::symbol, "exclamationmark.triangle");
    secondWarning.description = "Another";
    item().setImage(secondWarning);
    EXPECT_TRUE(signalsBecome({"NewIcon", "NewIcon"}));
    EXPECT_EQ(text(panel().itemProperties(), "IconAccessibleDesc"), "Another");
    item().setImage(image(StatusImageKind::symbol, "rectangle.3.group"));
    EXPECT_EQ(text(panel().itemProperties(), "IconName"), "app.velmorand.Velmorand.windows-symbolic");
}

TEST_F(StatusItemTest, OnlyItsOwnImagesAreFound) {
    EXPECT_EQ(bar().image(StatusImageKind::resource, "MenuBarTemplate", "Text"),
              (StatusImage{StatusImageKind::resource, "MenuBarTemplate", "Text", false}));
    EXPECT_NE(bar().image(StatusImageKind::symbol, "rectangle.3.group", ""), std::nullopt);
    EXPECT_NE(bar().image(StatusImageKind::symbol, "exclamationmark.triangle", ""), std::nullopt);
    EXPECT_EQ(bar().image(StatusImageKind::symbol, "MenuBarTemplate", ""), std::nullopt);
    EXPECT_EQ(bar().image(StatusImageKind::symbol, "star", ""), std::nullopt);
    EXPECT_EQ(bar().image(StatusImageKind::resource, "", ""), std::nullopt);
}

TEST_F(StatusItemTest, CallsOfPanelsWithoutMenusDoNothing) {
    show({});
    for (const char* member : {"Activate", "SecondaryActivate", "ContextMenu"})
        EXPECT_EQ(panel().askItem(QString::fromLatin1(member), {1, 2}).type(), QDBusMessage::ReplyMessage) << member;
    EXPECT_EQ(panel().askItem(QStringLiteral("Scroll"), {1, QStringLiteral("vertical")}).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(panel().askItem(QStringLiteral("Nonsense")).type(), QDBusMessage::ErrorMessage);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(StatusItemTest, DescribesItselfToWhoeverLooksAtTheBus) {
    show({});
    for (const auto& [path, interface] : {std::pair{"/StatusNotifierItem", "org.kde.StatusNotifierItem"},
                                          std::pair{"/MenuBar", "com.canonical.dbusmenu"}}) {
        const std::string description = panel().describe(QString::fromLatin1(path)).toStdString();
        EXPECT_THAT(description, testing::HasSubstr(std::string("<interface name=\"") + interface + "\">"));
        EXPECT_THAT(description, testing::HasSubstr("<interface name=\"org.freedesktop.DBus.Properties\">"));
    }
}

TEST_F(StatusItemTest, WithoutABusNothingHappensAndNothingIsWritten) {
    const RedirectedStandardError errors;
    LinuxStatusBar bar(QDBusConnection(QStringLiteral("none")), runLoop, statusIconFolder());
    const auto item = bar.makeStatusItem();
    item->setImage(image(StatusImageKind::resource, "MenuBarTemplate"));
    item->setTitle("title");
    item->setToolTip("tip");
    item->attachMenu({});
    item->setMenuItems({{.title = "Line", .isEnabled = true}});
    runPosted();

    EXPECT_EQ(errors.text(), "");
}

TEST_F(StatusItemTest, ABusThatEndsTakesNothingElseWithIt) {
    show({});
    const RedirectedStandardError errors;
    bus().process().terminate();
    ASSERT_TRUE(runUntil([this] { return !ownBus_.isConnected(); }));
    item().setImage(image(StatusImageKind::symbol, "rectangle.3.group"));
    item().setMenuItems({{.title = "Line", .isEnabled = true}});
    runPosted();
    endItem();
    makeItem();
    runPosted();

    EXPECT_EQ(errors.text(), "");
}

TEST_F(StatusItemTest, NobodyWaitsForABusThatDoesNotAnswer) {
    startPanel();
    bus().process().freeze();
    const MonotonicTime before = runLoop.now();

    makeItem();
    item().setImage(image(StatusImageKind::resource, "MenuBarTemplate"));
    item().setMenuItems({{.title = "Line", .isEnabled = true}});
    runPosted();
    endItem();
    makeItem();
    runPosted();

    EXPECT_LT(runLoop.now() - before, std::chrono::seconds(2));
    bus().process().thaw();
    EXPECT_NE(panel().waitForItem(), QString());
}

}  // namespace
}  // namespace velmorand::desktop
