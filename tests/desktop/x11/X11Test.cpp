#include "desktop/x11/X11Test.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace velmorand::desktop {
namespace {

/// A desktop that does not do its part makes every later step pointless.
template <typename Outcome>
auto require(Outcome outcome) {
    if (!outcome) throw std::runtime_error(outcome.error().message);
    if constexpr (!std::is_void_v<typename Outcome::value_type>) return std::move(*outcome);
}

}  // namespace

X11Test::X11Test() = default;

X11Test::~X11Test() {
    disconnect();
    clients_.clear();
    plainManager_.reset();
}

void X11Test::disconnect() {
    readable_.cancel();
    sleeping_.cancel();
    windowSystem_.reset();
    connection_.reset();
}

void X11Test::TearDown() {
    if (desktop_ && HasFailure()) std::printf("%s\n", desktop_->logTails().c_str());
}

void X11Test::open(const DesktopOptions& options) {
    desktop_ = require(TestDesktop::create(options));
    connect();
}

void X11Test::connect(const std::string& displayName) {
    disconnect();
    setenv("DISPLAY", displayName.c_str(), 1);
    auto connection = X11Connection::open();
    if (!connection) throw std::runtime_error(connection.error());
    connection_ = std::move(*connection);
    auto windowSystem = X11WindowSystem::create(*connection_, runLoop, std::nullopt);
    if (!windowSystem) throw std::runtime_error(windowSystem.error());
    windowSystem_ = std::move(*windowSystem);
    readable_ = runLoop.watch(connection_->file(), [this] { handleConnection(); });
    sleeping_ = runLoop.beforeSleeping([this] { handleConnection(); });
}

void X11Test::startPlainManager(const std::vector<std::string>& options) {
    plainManager_.reset();
    observer().waitUntil([this] { return !observer().windowManagerName(); });
    std::vector<std::string> command{VELMORAND_PLAIN_MANAGER};
    command.insert(command.end(), options.begin(), options.end());
    plainManager_ = require(desktop_->start(command));
    if (!observer().waitUntil([this] { return observer().windowManagerName().has_value(); }))
        throw std::runtime_error("the plain window manager does not start");
    runPosted();
}

void X11Test::startClient(const std::vector<std::string>& command) {
    clients_.push_back(require(desktop_->start(command)));
}

xcb_window_t X11Test::openWindow(const std::vector<std::string>& command, std::string_view title) {
    startClient(command);
    const xcb_window_t window = require(observer().findWindow(title));
    require(pager().activate(window));
    runPosted();
    return window;
}

WindowID X11Test::focusedWindow() {
    const auto application = windowSystem_->frontmostApplication();
    if (!application) throw std::runtime_error("no application is in front");
    const auto window = windowSystem_->focusedWindow(application->pid, soon());
    if (!window) throw std::runtime_error("the application in front has no focused window");
    return *window;
}

void X11Test::handleConnection() {
    const bool hasMore = !connection_->isLost() && connection_->handleEvents();
    if (hasMore) runLoop.post([this] { handleConnection(); });
    if (connection_->isLost()) readable_.cancel();
}

}  // namespace velmorand::desktop
