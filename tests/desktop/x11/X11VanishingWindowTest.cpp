#include "desktop/harness/XRelay.h"
#include "desktop/x11/X11Test.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace velmorand::desktop {
namespace {

constexpr Rect wanted{120, 90, 500, 400};

template <typename Outcome>
auto taken(Outcome outcome) {
    if (!outcome) throw std::runtime_error(outcome.error().message);
    return std::move(*outcome);
}

template <typename Result>
std::optional<AXError> errorOf(const Result& result) {
    return result ? std::nullopt : std::optional(result.error());
}

/// A window that another client destroys at any moment: each test makes its call again and again, with the window
/// destroyed before the first request of the call, before the second, and so on until the call is over before that.
class X11VanishingWindowTest : public X11Test {
protected:
    void SetUp() override {
        open();
        bystander_ = openWindow(TestWindow{.title = "Bystander"});
        bystanderPid_ = lastClient().pid();
        relay_ = taken(XRelay::start({.server = desktop().displayName()}));
        client_ = std::make_unique<XConnection>(taken(XConnection::open(desktop().displayName())));
        killer_ = std::make_unique<XConnection>(taken(XConnection::open(desktop().displayName())));
        connect(relay_->displayName());
        ASSERT_EQ(windowSystem().missingForTrust(soon()), std::nullopt);
    }

    ~X11VanishingWindowTest() override {
        if (relay_) connect();
    }

    /// The call on a window that the platform knows fails at every moment, and succeeds on a window that stays.
    void expectRefusals(const std::function<std::optional<AXError>(WindowID)>& call) {
        eachMoment([&](std::size_t moment) {
            const xcb_window_t number = openVictim();
            const WindowID window = focusedWindow();
            const auto [error, isGone] = interrupted(moment, number, [&] { return call(window); });
            EXPECT_EQ(error, isGone ? std::optional(AXError::invalidElement) : std::nullopt);
            return isGone;
        });
    }

    /// The call, for which the window is new, may answer anything; but the windows in its answer are either there or
    /// known to be gone.
    void expectNothingStale(const std::function<std::vector<WindowID>()>& call) {
        eachMoment([&](std::size_t moment) {
            const xcb_window_t number = openVictim();
            const auto [windows, isGone] = interrupted(moment, number, call);
            for (const WindowID window : windows) {
                const bool isDead = isGone && window.number == number;
                EXPECT_EQ(errorOf(windowSystem().attributes(window, Reading::atOnce, soon())),
                          isDead ? std::optional(AXError::invalidElement) : std::nullopt);
            }
            return isGone;
        });
    }

    static std::vector<WindowID> asList(const std::expected<WindowID, AXError>& window) {
        return window ? std::vector{*window} : std::vector<WindowID>{};
    }

    /// Makes a window of this process, in front of nothing yet.
    void createWindow(xcb_window_t number) {
        xcb_create_window(client_->raw(), XCB_COPY_FROM_PARENT, number, client_->root(), 0, 0, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        client_->synchronise();
    }

    void destroyWindow(xcb_window_t number) { HostileClient(*killer_).destroyWindow(number); }

    /// Done to each window before the call.
    std::function<void(xcb_window_t)> prepare_ = [](xcb_window_t) {};
    /// Done to each window in the call.
    std::function<void(xcb_window_t)> vanish_ = [this](xcb_window_t window) { destroyWindow(window); };
    std::int32_t bystanderPid_ = 0;

private:
    /// More requests than any call makes.
    static constexpr std::size_t mostRequests = 500;
    /// Fewer requests than any call makes.
    static constexpr std::size_t fewestRequests = 5;

    void eachMoment(const std::function<bool(std::size_t)>& goneAt) {
        std::size_t moment = 0;
        for (bool isGone = true; isGone; ++moment) {
            SCOPED_TRACE(testing::Message() << "destroyed before request " << moment << " of the call");
            ASSERT_LT(moment, mostRequests);
            isGone = goneAt(moment);
            ASSERT_FALSE(connection().isLost());
            runPosted();
        }
        EXPECT_GT(moment, fewestRequests);
        const auto bystander = windowSystem().mainWindow(bystanderPid_, soon());
        ASSERT_TRUE(bystander);
        EXPECT_EQ(windowSystem().setFrame(*bystander, wanted, soon()), wanted);
    }

    /// What the call answers, and whether the window was destroyed meanwhile.
    template <typename Call>
    std::pair<std::invoke_result_t<const Call&>, bool> interrupted(std::size_t moment, xcb_window_t window,
                                                                   const Call& call) {
        relay_->interruptAfter(moment, [this, window] { vanish_(window); });
        auto answer = call();
        return {std::move(answer), relay_->endInterruption()};
    }

    /// A window of this process, in front.
    xcb_window_t openVictim() {
        if (victim_ != XCB_WINDOW_NONE) destroyWindow(victim_);
        victim_ = xcb_generate_id(client_->raw());
        createWindow(victim_);
        xcb_map_window(client_->raw(), victim_);
        client_->synchronise();
        EXPECT_TRUE(observer().waitUntil([&] { return observer().isViewable(victim_); }));
        const auto active = pager().activate(victim_);
        EXPECT_TRUE(active) << active.error();
        prepare_(victim_);
        return victim_;
    }

    xcb_window_t bystander_ = XCB_WINDOW_NONE;
    xcb_window_t victim_ = XCB_WINDOW_NONE;
    std::unique_ptr<XRelay> relay_;
    std::unique_ptr<XConnection> client_;
    std::unique_ptr<XConnection> killer_;
};

TEST_F(X11VanishingWindowTest, HasNoAttributes) {
    expectRefusals(
        [this](WindowID window) { return errorOf(windowSystem().attributes(window, Reading::settled, soon())); });
}

TEST_F(X11VanishingWindowTest, CannotBeMovable) {
    expectRefusals([this](WindowID window) { return errorOf(windowSystem().checkMovable(window, soon())); });
}

TEST_F(X11VanishingWindowTest, IsNotPlaced) {
    expectRefusals([this](WindowID window) { return errorOf(windowSystem().setFrame(window, wanted, soon())); });
}

TEST_F(X11VanishingWindowTest, IsNotPlacedWhenItWasMaximised) {
    prepare_ = [this](xcb_window_t window) { EXPECT_TRUE(pager().maximize(window)); };
    expectRefusals([this](WindowID window) { return errorOf(windowSystem().setFrame(window, wanted, soon())); });
}

/// The number of the window goes to another one at once, which answers in its place.
class X11SucceededWindowTest : public X11VanishingWindowTest {
protected:
    void SetUp() override {
        X11VanishingWindowTest::SetUp();
        vanish_ = [this](xcb_window_t window) {
            destroyWindow(window);
            createWindow(window);
        };
    }
};

TEST_F(X11SucceededWindowTest, HasNoAttributes) {
    expectRefusals(
        [this](WindowID window) { return errorOf(windowSystem().attributes(window, Reading::settled, soon())); });
}

TEST_F(X11SucceededWindowTest, CannotBeMovable) {
    expectRefusals([this](WindowID window) { return errorOf(windowSystem().checkMovable(window, soon())); });
}

TEST_F(X11SucceededWindowTest, IsNotPlaced) {
    expectRefusals([this](WindowID window) { return errorOf(windowSystem().setFrame(window, wanted, soon())); });
}

TEST_F(X11SucceededWindowTest, IsNotPlacedWhenItWasMaximised) {
    prepare_ = [this](xcb_window_t window) { EXPECT_TRUE(pager().maximize(window)); };
    expectRefusals([this](WindowID window) { return errorOf(windowSystem().setFrame(window, wanted, soon())); });
}

TEST_F(X11VanishingWindowTest, IsNotTakenForTheFocusedOne) {
    expectNothingStale([this] { return asList(windowSystem().focusedWindow(getpid(), soon())); });
}

TEST_F(X11VanishingWindowTest, IsNotTakenForTheMainOne) {
    expectNothingStale([this] { return asList(windowSystem().mainWindow(getpid(), soon())); });
}

TEST_F(X11VanishingWindowTest, IsNotListed) {
    expectNothingStale([this] { return windowSystem().windows(getpid(), soon()).value_or(std::vector<WindowID>{}); });
}

TEST_F(X11VanishingWindowTest, GivesWayToTheWindowBeforeIt) {
    expectNothingStale([this] {
        const auto application = windowSystem().frontmostApplication();
        return application ? asList(windowSystem().mainWindow(application->pid, soon())) : std::vector<WindowID>{};
    });
}

TEST_F(X11VanishingWindowTest, TakesNoDisplayWithIt) {
    const auto displays = windowSystem().displays();
    expectNothingStale([&] {
        EXPECT_EQ(windowSystem().displays(), displays);
        return std::vector<WindowID>{};
    });
}

TEST_F(X11VanishingWindowTest, DoesNotDisturbAStart) {
    expectNothingStale([this] {
        const auto started = X11WindowSystem::create(connection(), runLoop, std::nullopt);
        EXPECT_TRUE(started);
        return std::vector<WindowID>{};
    });
}

}  // namespace
}  // namespace velmorand::desktop
