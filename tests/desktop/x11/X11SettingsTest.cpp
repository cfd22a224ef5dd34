#include "platform/linux/x11/X11Settings.h"

#include "desktop/harness/SettingsManager.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/support/XSettingsBytes.h"

#include <memory>
#include <vector>

namespace velmorand::desktop {
namespace {

constexpr std::string_view animations = "Gtk/EnableAnimations";
constexpr std::string_view property = "_XSETTINGS_SETTINGS";

std::vector<std::uint8_t> withAnimations(std::int32_t enabled, bool isBigEndian = false) {
    return XSettingsBytes(isBigEndian).text("Net/ThemeName", "Plain").integer(animations, enabled).bytes();
}

std::vector<std::uint8_t> withoutAnimations() {
    return XSettingsBytes().text("Net/ThemeName", "Plain").integer("Xft/DPI", 98304).bytes();
}

/// A session whose settings managers are made by the test.
class X11SettingsTest : public X11Test {
protected:
    void SetUp() override { open(); }
    ~X11SettingsTest() override { settings_.reset(); }

    void follow() { settings_ = std::make_unique<X11Settings>(connection(), runLoop); }

    [[nodiscard]] std::unique_ptr<SettingsManager> startManager(const std::vector<std::uint8_t>& published) {
        return std::make_unique<SettingsManager>(observer().connection(), published);
    }

    [[nodiscard]] std::optional<bool> reducesMotion() { return settings_->reducesMotion(); }
    /// Waits until the platform has heard of it.
    [[nodiscard]] bool comesToReduce(std::optional<bool> expected) {
        return runUntil([&] { return reducesMotion() == expected; });
    }

private:
    std::unique_ptr<X11Settings> settings_;
};

TEST_F(X11SettingsTest, NothingIsSaidWithoutAManager) {
    follow();

    EXPECT_EQ(reducesMotion(), std::nullopt);
}

TEST_F(X11SettingsTest, AManagerThatRunsAlreadyIsKnownAtOnce) {
    const auto manager = startManager(withAnimations(0));
    follow();

    EXPECT_EQ(reducesMotion(), true);
}

TEST_F(X11SettingsTest, MotionIsReducedOnlyWhereAnimationsAreOff) {
    const auto manager = startManager(withAnimations(1));
    follow();
    EXPECT_EQ(reducesMotion(), false);

    manager->publish(withoutAnimations());
    EXPECT_TRUE(comesToReduce(std::nullopt));
}

TEST_F(X11SettingsTest, AManagerOfTheOtherByteOrderIsUnderstood) {
    const auto manager = startManager(withAnimations(0, true));
    follow();

    EXPECT_EQ(reducesMotion(), true);
}

TEST_F(X11SettingsTest, AManagerThatAppearsIsFollowed) {
    follow();

    const auto manager = startManager(withAnimations(0));
    EXPECT_TRUE(comesToReduce(true));

    manager->publish(withAnimations(1));
    EXPECT_TRUE(comesToReduce(false));
}

TEST_F(X11SettingsTest, AChangeIsFollowed) {
    const auto manager = startManager(withAnimations(1));
    follow();

    manager->publish(withAnimations(0));
    EXPECT_TRUE(comesToReduce(true));

    manager->publish(withAnimations(1));
    EXPECT_TRUE(comesToReduce(false));
}

TEST_F(X11SettingsTest, AManagerThatGoesTakesItsSettingsWithIt) {
    auto manager = startManager(withAnimations(0));
    follow();
    ASSERT_EQ(reducesMotion(), true);

    manager.reset();

    EXPECT_TRUE(comesToReduce(std::nullopt));
}

TEST_F(X11SettingsTest, AManagerThatTakesOverIsFollowedInsteadOfTheOldOne) {
    const auto old = startManager(withAnimations(0));
    follow();

    const auto next = startManager(withAnimations(1));
    EXPECT_TRUE(comesToReduce(false));

    old->publish(withoutAnimations());  // of no interest any more
    next->publish(withAnimations(0));
    EXPECT_TRUE(comesToReduce(true));
}

TEST_F(X11SettingsTest, AManagerIsFollowedThatComesAfterOneThatWent) {
    auto manager = startManager(withAnimations(0));
    follow();
    manager.reset();
    ASSERT_TRUE(comesToReduce(std::nullopt));

    manager = startManager(withAnimations(1));

    EXPECT_TRUE(comesToReduce(false));
}

TEST_F(X11SettingsTest, APropertyThatIsRemovedSaysNothing) {
    const auto manager = startManager(withAnimations(0));
    follow();

    hostileClient().deleteProperty(manager->window(), property);

    EXPECT_TRUE(comesToReduce(std::nullopt));
}

TEST_F(X11SettingsTest, AMalformedPropertySaysNothing) {
    const auto manager = startManager(withAnimations(0));
    follow();
    const auto good = withAnimations(0);
    const std::vector<std::uint8_t> cutOff(good.begin(), good.end() - 1);
    const auto write = [&](std::string_view type, int format, const std::vector<std::uint8_t>& bytes) {
        hostileClient().setProperty(manager->window(), property, type, format, bytes);
        EXPECT_TRUE(comesToReduce(std::nullopt));
        manager->publish(good);
        EXPECT_TRUE(comesToReduce(true));
    };

    write(property, 8, cutOff);
    write(property, 8, {});
    write(property, 16, good);
    write("STRING", 8, good);
}

TEST_F(X11SettingsTest, AnEndlessPropertyIsNotReadToItsEnd) {
    const auto manager = startManager(withAnimations(0));
    follow();

    hostileClient().fillProperty(manager->window(), property, property, 8, std::size_t{64} << 20U);
    EXPECT_TRUE(comesToReduce(std::nullopt));

    manager->publish(withAnimations(0));
    EXPECT_TRUE(comesToReduce(true));
}

TEST_F(X11SettingsTest, ASelectionThatTheRootWindowOwnsSaysNothing) {
    XConnection& client = observer().connection();
    xcb_set_selection_owner(client.raw(), client.root(), client.atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
    client.synchronise();
    follow();
    EXPECT_EQ(reducesMotion(), std::nullopt);

    const auto manager = startManager(withAnimations(0));
    EXPECT_TRUE(comesToReduce(true));
}

/// A server that does not answer for longer than a look may take: another client has it for itself.
TEST_F(X11SettingsTest, WhatIsKnownIsAnsweredWhileTheServerDoesNot) {
    const auto manager = startManager(withAnimations(0));
    follow();
    XConnection& other = observer().connection();
    xcb_grab_server(other.raw());
    other.synchronise();
    manager->publish(withAnimations(1));

    const MonotonicTime before = runLoop.now();
    EXPECT_EQ(reducesMotion(), true);
    EXPECT_LT(runLoop.now() - before, std::chrono::milliseconds(100));
    runPosted();

    xcb_ungrab_server(other.raw());
    other.synchronise();
    EXPECT_TRUE(comesToReduce(false));
}

}  // namespace
}  // namespace velmorand::desktop
