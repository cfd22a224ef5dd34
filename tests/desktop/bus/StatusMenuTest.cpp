#include "desktop/bus/StatusItemFixture.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <algorithm>
#include <iterator>

namespace velmorand::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const QString clicked = QStringLiteral("clicked");

const MenuItem header{.kind = MenuItemKind::sectionHeader, .title = "Windows", .isEnabled = true};
const MenuItem left{.title = "Left",
                    .action = "move",
                    .representedObject = "left",
                    .keyEquivalent = "\uF702",
                    .keyEquivalentModifiers = {.option = true, .command = true},
                    .isEnabled = true};
const MenuItem right{.title = "Right", .action = "move", .representedObject = "right"};
const MenuItem line{.kind = MenuItemKind::separator};
const MenuItem quit{.title = "Quit", .action = "quit", .isEnabled = true};

class StatusMenuTest : public StatusItemFixture {
protected:
    [[nodiscard]] static std::vector<std::string> labels(const ReceivedMenu& menu) {
        std::vector<std::string> labels;
        std::ranges::transform(menu.lines, std::back_inserter(labels), &ReceivedLine::label);
        return labels;
    }
    [[nodiscard]] static int idOf(const ReceivedMenu& menu, const std::string& label) {
        const auto found = std::ranges::find(menu.lines, label, &ReceivedLine::label);
        return found == menu.lines.end() ? -1 : found->id;
    }
    /// Lets the time of an opening pass, as when nobody tells its end.
    void letOpeningPass() {
        bool passed = false;
        const RunLoop::Timer timer = runLoop.after(std::chrono::milliseconds(550), [&] { passed = true; });
        ASSERT_TRUE(runUntil([&] { return passed; }));
    }
};

TEST_F(StatusMenuTest, TheMenuSaysWhatItCanDo) {
    show({});
    const QVariantMap properties = panel().menuProperties();
    EXPECT_EQ(properties.value(QStringLiteral("Version")).toUInt(), 3U);
    EXPECT_EQ(properties.value(QStringLiteral("Status")).toString(), QStringLiteral("normal"));
    EXPECT_EQ(properties.value(QStringLiteral("TextDirection")).toString(), QStringLiteral("ltr"));
    EXPECT_TRUE(properties.contains(QStringLiteral("IconThemePath")));
}

TEST_F(StatusMenuTest, LinesGoOverTheBusWithWhatSetsThemApart) {
    show({header, left, right, line, quit});

    const ReceivedMenu menu = panel().open();

    EXPECT_EQ(menu.properties, (QVariantMap{{QStringLiteral("children-display"), QStringLiteral("submenu")}}));
    ASSERT_THAT(menu.lines, SizeIs(5));
    const QString label = QStringLiteral("label");
    const QString enabled = QStringLiteral("enabled");
    EXPECT_EQ(menu.lines[0].properties, (QVariantMap{{label, QStringLiteral("Windows")}, {enabled, false}}));
    EXPECT_EQ(menu.lines[2].properties, (QVariantMap{{label, QStringLiteral("Right")}, {enabled, false}}));
    EXPECT_EQ(menu.lines[3].properties, (QVariantMap{{QStringLiteral("type"), QStringLiteral("separator")}}));
    EXPECT_EQ(menu.lines[4].properties, (QVariantMap{{label, QStringLiteral("Quit")}}));
    EXPECT_EQ(qdbus_cast<QList<QStringList>>(menu.lines[1].properties.value(QStringLiteral("shortcut"))),
              (QList<QStringList>{{QStringLiteral("Alt"), QStringLiteral("Super"), QStringLiteral("Left")}}));
}

TEST_F(StatusMenuTest, EachOpeningShowsTheLinesOfThatMoment) {
    show({left});
    EXPECT_THAT(labels(panel().open()), ElementsAre("Left"));
    panel().close();
    setLinesOfNextOpening({right, quit});
    EXPECT_THAT(labels(panel().open()), ElementsAre("Right", "Quit"));
    panel().close();
    setLinesOfNextOpening({left, line});
    EXPECT_THAT(labels(panel().openByGroup()), ElementsAre("Left", ""));
    panel().close();

    EXPECT_THAT(told(), ElementsAre("needs update", "closed", "needs update", "closed", "needs update", "closed"));
}

TEST_F(StatusMenuTest, AQuestionForOneMakesTheLinesAnewWithoutASignal) {
    show({left});
    panel().forgetSignals();

    const ReceivedMenu first = panel().open();
    panel().close();
    const ReceivedMenu second = panel().open();
    runPosted();

    EXPECT_LT(first.revision, second.revision);
    EXPECT_THAT(panel().signalsSeen(), IsEmpty());
}

TEST_F(StatusMenuTest, AQuestionForAGroupMakesTheLinesAnewWithASignal) {
    show({left});
    panel().forgetSignals();

    const ReceivedMenu menu = panel().openByGroup();

    EXPECT_THAT(panel().signalsSeen(), ElementsAre("LayoutUpdated " + std::to_string(menu.revision) + " 0"));
}

TEST_F(StatusMenuTest, AllQuestionsOfOneOpeningMakeTheLinesOnce) {
    show({left});

    const ReceivedMenu first = panel().layout();
    const ReceivedMenu second = panel().open();
    const ReceivedMenu third = panel().openByGroup();
    EXPECT_TRUE(panel().event(0, QStringLiteral("opened")));
    const ReceivedMenu fourth = panel().layout();

    EXPECT_THAT(told(), ElementsAre("needs update"));
    EXPECT_EQ(first.revision, fourth.revision);
    EXPECT_EQ(second.lines.at(0).id, third.lines.at(0).id);
}

TEST_F(StatusMenuTest, AnOpeningWhoseEndNobodyTellsIsEndedByTheNext) {
    show({left});
    EXPECT_THAT(labels(panel().openByGroup()), ElementsAre("Left"));
    letOpeningPass();
    setLinesOfNextOpening({quit});
    EXPECT_THAT(labels(panel().openByGroup()), ElementsAre("Quit"));

    EXPECT_THAT(told(), ElementsAre("needs update", "closed", "needs update"));
}

TEST_F(StatusMenuTest, WhoOpensWithoutAQuestionIsToldOfTheNewLines) {
    show({left});
    EXPECT_THAT(labels(panel().layout()), ElementsAre("Left"));
    panel().close();
    setLinesOfNextOpening({quit});
    panel().forgetSignals();

    EXPECT_TRUE(panel().event(0, QStringLiteral("opened")));

    ASSERT_TRUE(runUntil([this] { return panel().signalsSeen().size() == 1; }));
    EXPECT_THAT(labels(panel().layout()), ElementsAre("Quit"));
}

TEST_F(StatusMenuTest, LinesThatChangeBetweenOpeningsAreTold) {
    show({left});
    const ReceivedMenu before = panel().open();
    panel().close();
    panel().forgetSignals();

    item().setMenuItems({left});
    item().setMenuItems({left, quit});

    ASSERT_TRUE(runUntil([this] { return !panel().signalsSeen().empty(); }));
    EXPECT_THAT(panel().signalsSeen(), ElementsAre("LayoutUpdated " + std::to_string(before.revision + 1) + " 0"));
}

TEST_F(StatusMenuTest, AClickTellsTheChoiceAfterTheMenuIsClosed) {
    show({header, left, quit});
    const ReceivedMenu menu = panel().open();

    EXPECT_TRUE(panel().event(idOf(menu, "Left"), clicked));
    panel().close();

    EXPECT_THAT(told(), ElementsAre("needs update", "closed", "chosen move left"));
}

TEST_F(StatusMenuTest, ClicksThatComeInAGroupCountToo) {
    show({left, quit});
    const ReceivedMenu menu = panel().open();
    const QDBusMessage reply = panel().events({{idOf(menu, "Left"), clicked}, {99, clicked}});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().at(0)), QList<int>{99});
    EXPECT_EQ(panel().events({{98, clicked}, {99, clicked}}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(panel().events({}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(panel().askMenu(QStringLiteral("EventGroup"), {7}).type(), QDBusMessage::ErrorMessage) << "a number";

    EXPECT_THAT(told(), ElementsAre("needs update", "closed", "chosen move left"));
}

TEST_F(StatusMenuTest, WhatCannotBeChosenIsNotChosen) {
    show({header, right, line, left});
    const ReceivedMenu menu = panel().open();

    for (const std::size_t place : {0U, 1U, 2U}) EXPECT_TRUE(panel().event(menu.lines.at(place).id, clicked)) << place;
    EXPECT_TRUE(panel().event(menu.lines.at(3).id, QStringLiteral("hovered")));
    EXPECT_TRUE(panel().event(0, clicked));

    EXPECT_THAT(told(), ElementsAre("needs update"));
}

TEST_F(StatusMenuTest, NumbersThatNoLineHasAreRefused) {
    show({left});
    const ReceivedMenu menu = panel().open();

    EXPECT_FALSE(panel().event(77, clicked));
    EXPECT_FALSE(panel().event(-1, clicked));
    EXPECT_EQ(panel().askMenu(QStringLiteral("AboutToShow"), {77}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(panel().askMenu(QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(QList<int>{77})}).type(),
              QDBusMessage::ErrorMessage);
    EXPECT_EQ(panel().askMenu(QStringLiteral("GetLayout"), {77, -1, QStringList()}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(panel().askMenu(QStringLiteral("GetProperty"), {77, QStringLiteral("label")}).type(),
              QDBusMessage::ErrorMessage);
    const QDBusMessage some =
        panel().askMenu(QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(QList<int>{0, 77})});
    EXPECT_EQ(qdbus_cast<QList<int>>(some.arguments().at(0)), QList<int>{0});
    EXPECT_EQ(qdbus_cast<QList<int>>(some.arguments().at(1)), QList<int>{77});
    EXPECT_THAT(told(), ElementsAre("needs update"));
}

TEST_F(StatusMenuTest, AClickMeantForAnEarlierMenuHitsWhatItWasMeantForOrNothing) {
    show({left, right, quit});
    const ReceivedMenu earlier = panel().open();
    panel().close();
    MenuItem renamed = left;
    renamed.title = "To the Left";
    MenuItem other = quit;
    other.action = "settings";
    setLinesOfNextOpening({right, other, renamed});
    const ReceivedMenu now = panel().open();
    forgetTold();

    EXPECT_TRUE(panel().event(idOf(earlier, "Left"), clicked));
    EXPECT_FALSE(panel().event(idOf(earlier, "Quit"), clicked));
    EXPECT_TRUE(panel().event(idOf(earlier, "Right"), clicked));

    EXPECT_EQ(idOf(now, "To the Left"), idOf(earlier, "Left"));
    EXPECT_THAT(told(), ElementsAre("closed", "chosen move left"));
}

TEST_F(StatusMenuTest, OnlyWhatIsAskedForIsTold) {
    show({left, right});
    static_cast<void>(panel().open());

    const ReceivedMenu shallow = panel().layout(0, 0);
    EXPECT_THAT(shallow.lines, IsEmpty());
    const ReceivedMenu enabled = panel().layout(0, 1, {QStringLiteral("enabled")});
    ASSERT_THAT(enabled.lines, SizeIs(2));
    EXPECT_EQ(enabled.properties, QVariantMap());
    EXPECT_EQ(enabled.lines[0].properties, QVariantMap());
    EXPECT_EQ(enabled.lines[1].properties, (QVariantMap{{QStringLiteral("enabled"), false}}));
    const ReceivedMenu below = panel().layout(enabled.lines[1].id, -1, {QStringLiteral("label")});
    EXPECT_EQ(below.properties, (QVariantMap{{QStringLiteral("label"), QStringLiteral("Right")}}));

    const QDBusMessage usual =
        panel().askMenu(QStringLiteral("GetProperty"), {enabled.lines[0].id, QStringLiteral("enabled")});
    EXPECT_EQ(usual.arguments().at(0).value<QDBusVariant>().variant(), QVariant(true));
    EXPECT_EQ(panel().askMenu(QStringLiteral("GetProperty"), {enabled.lines[0].id, QStringLiteral("colour")}).type(),
              QDBusMessage::ErrorMessage);

    EXPECT_THAT(panel().lines({enabled.lines[1].id}), SizeIs(1));
    EXPECT_THAT(panel().lines({}), SizeIs(3)) << "the menu and its two lines";
    EXPECT_THAT(panel().lines({77}), IsEmpty());
}

TEST_F(StatusMenuTest, TheItemMayGoWhileItsMenuOpensOrWhenALineIsChosen) {
    bool hasGone = false;
    startPanel();
    makeItem();
    item().attachMenu({.needsUpdate =
                           [&] {
                               hasGone = true;
                               endItem();
                           },
                       .didClose = {},
                       .chosen = {}});
    ASSERT_NE(panel().waitForItem(), QString());
    EXPECT_EQ(panel().askMenu(QStringLiteral("AboutToShow"), {0}).errorName(),
              QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"));
    ASSERT_TRUE(hasGone);

    makeItem();
    bool isChosen = false;
    item().attachMenu({.needsUpdate = [this] { item().setMenuItems({left}); },
                       .didClose = {},
                       .chosen =
                           [&](const MenuItem&) {
                               isChosen = true;
                               endItem();
                           }});
    ASSERT_NE(panel().waitForItem(1), QString());
    const ReceivedMenu menu = panel().open();
    EXPECT_TRUE(panel().event(idOf(menu, "Left"), clicked));
    EXPECT_TRUE(runUntil([&] { return isChosen; }));
}

TEST_F(StatusMenuTest, NothingIsToldOnceTheItemHasGone) {
    std::vector<std::string> seen;
    startPanel();
    makeItem();
    item().attachMenu({.needsUpdate = [this] { item().setMenuItems({left}); },
                       .didClose =
                           [&] {
                               seen.emplace_back("closed");
                               endItem();
                           },
                       .chosen = [&](const MenuItem&) { seen.emplace_back("chosen"); }});
    ASSERT_NE(panel().waitForItem(), QString());
    const int id = idOf(panel().open(), "Left");

    const QDBusMessage reply = panel().events({{id, clicked}, {0, QStringLiteral("opened")}, {id, clicked}});

    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(runUntil([&] { return !seen.empty(); }));
    runPosted();
    EXPECT_THAT(seen, ElementsAre("closed"));
}

TEST_F(StatusMenuTest, EventsOfAGroupAreToldInTheirOrder) {
    show({left});
    const int id = idOf(panel().open(), "Left");
    forgetTold();

    static_cast<void>(panel().events({{id, clicked}, {0, QStringLiteral("opened")}, {0, QStringLiteral("closed")}}));

    EXPECT_THAT(told(), ElementsAre("closed", "chosen move left", "needs update", "closed"));
}

TEST_F(StatusMenuTest, AQuestionOfLongAgoDoesNotAnnounceAnOpening) {
    show({left});
    EXPECT_EQ(panel().askMenu(QStringLiteral("AboutToShow"), {0}).arguments(), QVariantList{true});
    bool passed = false;
    const RunLoop::Timer timer = runLoop.after(std::chrono::milliseconds(2100), [&] { passed = true; });
    ASSERT_TRUE(runUntil([&] { return passed; }));
    setLinesOfNextOpening({quit});

    EXPECT_TRUE(panel().event(0, QStringLiteral("opened")));

    EXPECT_THAT(labels(panel().layout()), ElementsAre("Quit"));
}

TEST_F(StatusMenuTest, QuestionsOfAnotherShapeAreRefused) {
    show({left});
    static_cast<void>(panel().open());

    for (const auto& [member, arguments] :
         {std::pair{"GetLayout", QVariantList{0}}, std::pair{"Event", QVariantList{QStringLiteral("0")}},
          std::pair{"GetGroupProperties", QVariantList{0, 0}}, std::pair{"Nonsense", QVariantList{}}}) {
        EXPECT_EQ(panel().askMenu(QString::fromLatin1(member), arguments).errorName(),
                  QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"))
            << member;
    }
}

}  // namespace
}  // namespace velmorand::desktop
