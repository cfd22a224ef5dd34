#include "desktop/contract/X11DesktopUnderContract.h"

#include "desktop/harness/KeyboardProbe.h"
#include "desktop/harness/TestWindows.h"
#include "desktop/x11/PanelWindow.h"
#include "platform/linux/support/XSettingsBytes.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QTimer>
#include <QVariantMap>
#include <QWindow>
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace velmorand::desktop {
namespace {

/// Where the primary display begins in the root window, and the room that the tests use around it.
constexpr PixelRect initialDisplay{1000, 200, 1800, 1200};

/// What openbox adds around a window, and around one that cannot be resized.
constexpr Extents usualDecorations{.left = 1, .right = 1, .top = 20, .bottom = 5};
constexpr Extents fixedDecorations{.left = 1, .right = 1, .top = 20, .bottom = 1};

/// The content that makes a window this large with its decorations; 0 stays 0.
int contentWidth(double width, const Extents& decorations) {
    return std::max(0, static_cast<int>(width) - decorations.left - decorations.right);
}

int contentHeight(double height, const Extents& decorations) {
    return std::max(0, static_cast<int>(height) - decorations.top - decorations.bottom);
}

const QString notificationConnection = QStringLiteral("notification server");
const QString launcherConnection = QStringLiteral("launcher");
const QString panelConnection = QStringLiteral("panel");

constexpr std::uint32_t commandMask = 0x0100;
constexpr std::uint32_t shiftMask = 0x0200;
constexpr std::uint32_t optionMask = 0x0800;
constexpr std::uint32_t controlMask = 0x1000;

/// A desktop that does not do its part makes every later step pointless.
template <typename Outcome>
auto require(Outcome outcome) {
    if (!outcome) throw std::runtime_error(outcome.error().message);
    if constexpr (!std::is_void_v<typename Outcome::value_type>) return std::move(*outcome);
}

PixelRect inRoot(const Rect& frame) {
    return PixelRect{static_cast<int>(frame.x), static_cast<int>(frame.y), static_cast<int>(frame.width),
                     static_cast<int>(frame.height)}
        .relativeTo(-initialDisplay.x, -initialDisplay.y);
}

/// The key at the place that the virtual key code means.
Key keyAt(std::uint32_t keyCode) {
    static const std::map<std::uint32_t, Key> keys{{0, Key::a},      {14, Key::e},      {46, Key::m},
                                                   {123, Key::left}, {124, Key::right}, {125, Key::down},
                                                   {126, Key::up},   {36, Key::enter},  {15, Key::r}};
    return keys.at(keyCode);
}

std::vector<Key> modifierKeys(std::uint32_t modifiers) {
    std::vector<Key> keys;
    if ((modifiers & controlMask) != 0) keys.push_back(Key::leftControl);
    if ((modifiers & optionMask) != 0) keys.push_back(Key::leftAlt);
    if ((modifiers & shiftMask) != 0) keys.push_back(Key::leftShift);
    if ((modifiers & commandMask) != 0) keys.push_back(Key::leftSuper);
    return keys;
}

std::uint16_t modifierMask(std::uint32_t modifiers) {
    unsigned int mask = 0;
    if ((modifiers & controlMask) != 0) mask |= XCB_MOD_MASK_CONTROL;
    if ((modifiers & optionMask) != 0) mask |= XCB_MOD_MASK_1;
    if ((modifiers & shiftMask) != 0) mask |= XCB_MOD_MASK_SHIFT;
    if ((modifiers & commandMask) != 0) mask |= XCB_MOD_MASK_4;
    return static_cast<std::uint16_t>(mask);
}

}  // namespace

std::unique_ptr<DesktopUnderContract> X11DesktopUnderContract::make() {
    auto desktop = require(TestDesktop::create(
        {.windowManager = {.kind = WindowManagerKind::openbox}, .monitors = {{"main", initialDisplay, true}}}));
    auto keyboard = require(TestKeyboard::attach(desktop->observer()));
    return std::unique_ptr<DesktopUnderContract>(new X11DesktopUnderContract(std::move(desktop), keyboard));
}

X11DesktopUnderContract::X11DesktopUnderContract(std::unique_ptr<TestDesktop> desktop, TestKeyboard keyboard)
    : desktop_(std::move(desktop)),
      keyboard_(keyboard),
      pager_(desktop_->observer()),
      views_(require(XConnection::open(desktop_->displayName()))) {
    for (const auto& [name, value] : desktop_->environment()) setenv(name.c_str(), value.c_str(), 1);
    unsetenv("JOURNAL_STREAM");
    redirectLog();
    auto platform = makePlatform(argumentCount_, arguments_);
    if (!platform) throw std::runtime_error(platform.error().message);
    platform_ = std::move(*platform);
    platform_->recorderPanelHost().setWindowMaker(
        [this] { return std::make_unique<PanelWindow>(views_, "Recorder", platform_->runLoop()); });
}

X11DesktopUnderContract::~X11DesktopUnderContract() {
    programsWindow_.reset();
    platform_.reset();
    notificationServer_.reset();
    panel_.reset();
    QDBusConnection::disconnectFromBus(launcherConnection);
    QDBusConnection::disconnectFromBus(panelConnection);
    QDBusConnection::disconnectFromBus(notificationConnection);
    clients_.clear();
    dup2(standardError_, STDERR_FILENO);
    close(standardError_);
}

void X11DesktopUnderContract::redirectLog() {
    standardError_ = dup(STDERR_FILENO);
    const int file =
        open((desktop_->folder() / "platform.log").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (standardError_ < 0 || file < 0) throw std::runtime_error("standard error cannot be redirected");
    dup2(file, STDERR_FILENO);
    close(file);
}

std::optional<std::string> X11DesktopUnderContract::reasonAgainst(Ability ability) const {
    switch (ability) {
        case Ability::disconnectAllDisplays: return "an X server always shows a display";
        case Ability::denyNotifications: return "a notification server may still come for a long time";
        case Ability::showNotifications:
        case Ability::showStatusItems:
            if (QDBusConnection::sessionBus().isConnected()) return std::nullopt;
            return "the toolkit keeps the session bus of the first desktop of its process";
        case Ability::revokeTrust:
        case Ability::openSeveralWindowsPerApplication:
        case Ability::minimiseWindows:
        case Ability::makeWindowsFullScreen:
        case Ability::openFixedSizeWindows:
        case Ability::limitWindowSizes:
        case Ability::stopAnswering:
        case Ability::leaveNothingInFront:
        case Ability::hideIdentifiers:
        case Ability::changeDisplays:
        case Ability::takeCombinations:
        case Ability::holdKeys:
        case Ability::setLockKeys:
        case Ability::readLog:
        case Ability::reduceMotion: return std::nullopt;
    }
    std::unreachable();
}

ContractWindow X11DesktopUnderContract::openWindow(const ContractWindowRequest& request) {
    const int client = static_cast<int>(clients_.size());
    const std::string title = "Client" + std::to_string(client);
    const Extents& decorations = request.resizable ? usualDecorations : fixedDecorations;
    auto process = require(desktop_->start(plainWindow({
        .title = title,
        .width = contentWidth(request.frame.width, decorations),
        .height = contentHeight(request.frame.height, decorations),
        .minimumWidth = contentWidth(request.minimumSize.width, decorations),
        .minimumHeight = contentHeight(request.minimumSize.height, decorations),
        .isResizable = request.resizable,
        .applicationId = request.hidesIdentifier ? "" : request.applicationIdentifier,
    })));
    clients_.emplace(client, Client{std::move(process), title});
    return add(client, title, request.frame);
}

ContractWindow X11DesktopUnderContract::openSibling(ContractWindow sibling, const Rect& frame) {
    const int client = windows_.at(sibling).client;
    Client& owner = clients_.at(client);
    owner.process.sendSignal(SIGUSR1);
    return add(client, owner.title + " " + std::to_string(++owner.windows), frame);
}

ContractWindow X11DesktopUnderContract::add(int client, std::string_view title, const Rect& frame) {
    const xcb_window_t id = require(observer().findWindow(title));
    const ContractWindow window{id};
    windows_.emplace(window, OpenWindow{client, id});
    focusWindow(window);
    placeByHand(window, frame);
    int turns = 0;  // in which the platform sees what any program sees of it
    [[maybe_unused]] const bool seen = runUntil([&] { return ++turns > 3; }, std::chrono::seconds{1});
    return window;
}

void X11DesktopUnderContract::closeWindow(ContractWindow window) {
    require(pager_.close(idOf(window)));
}

void X11DesktopUnderContract::focusWindow(ContractWindow window) {
    require(pager_.activate(idOf(window)));
}

void X11DesktopUnderContract::minimiseWindow(ContractWindow window) {
    require(pager_.minimize(idOf(window)));
}

void X11DesktopUnderContract::makeFullScreen(ContractWindow window) {
    require(pager_.setFullscreen(idOf(window), true));
    const auto frame = observer().waitForSettledFrame(idOf(window), initialDisplay, 0);
    if (frame != initialDisplay) throw std::runtime_error("the window does not fill the display");
}

void X11DesktopUnderContract::placeByHand(ContractWindow window, const Rect& frame) {
    require(pager_.place(idOf(window), inRoot(frame), 0));
}

void X11DesktopUnderContract::stopAnswering(ContractWindow /*window*/) {
    desktop_->windowManager()->freeze();
}

std::int32_t X11DesktopUnderContract::pidOf(ContractWindow window) {
    return clients_.at(windows_.at(window).client).process.pid();
}

Rect X11DesktopUnderContract::trueFrameOf(ContractWindow window) {
    const auto frame =
        observer().visibleFrame(idOf(window)).value_or(PixelRect{}).relativeTo(initialDisplay.x, initialDisplay.y);
    return {static_cast<double>(frame.x), static_cast<double>(frame.y), static_cast<double>(frame.width),
            static_cast<double>(frame.height)};
}

void X11DesktopUnderContract::endApplicationOf(ContractWindow window) {
    clients_.at(windows_.at(window).client).process.terminate();
}

void X11DesktopUnderContract::leaveNothingInFront() {
    for (auto& [number, client] : clients_) client.process.terminate();
    observer().waitUntil([this] { return !observer().activeWindow().has_value(); });
}

void X11DesktopUnderContract::revokeTrust() {
    desktop_->stopWindowManager();
}

/// As a launcher does that knows where the program is on the bus, without waiting for the answer.
void X11DesktopUnderContract::reopen(const std::optional<std::string>& activationToken) {
    QVariantMap platformData;
    if (activationToken) platformData[QStringLiteral("desktop-startup-id")] = QString::fromStdString(*activationToken);
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral(VELMORAND_IDENTIFIER), QStringLiteral("/app/velmorand/Velmorand"),
                                       QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call.setArguments({platformData});
    const auto address = QString::fromStdString(desktop_->environment().at("DBUS_SESSION_BUS_ADDRESS"));
    QDBusConnection::connectToBus(address, launcherConnection).asyncCall(call);
}

void X11DesktopUnderContract::setReducesMotion(bool reduces) {
    const XSettingsBytes settings = XSettingsBytes().integer("Gtk/EnableAnimations", reduces ? 0 : 1);
    if (settingsManager_)
        settingsManager_->publish(settings.bytes());
    else
        settingsManager_.emplace(observer().connection(), settings.bytes());
}

void X11DesktopUnderContract::allowNotifications() {
    const auto connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, notificationConnection);
    notificationServer_ =
        std::make_unique<FakeNotificationServer>(connection, QStringList{QStringLiteral("body-markup")});
}

void X11DesktopUnderContract::denyNotifications() {}

std::vector<ContractNotification> X11DesktopUnderContract::shownNotifications() {
    std::vector<ContractNotification> shown;
    for (const auto& [number, notification] : notificationServer_->shown()) {
        QString body = notification.body;
        body.replace(QStringLiteral("&lt;"), QStringLiteral("<")).replace(QStringLiteral("&gt;"), QStringLiteral(">"));
        body.replace(QStringLiteral("&amp;"), QStringLiteral("&"));
        shown.push_back({notification.summary.toStdString(), body.toStdString()});
    }
    return shown;
}

void X11DesktopUnderContract::showStatusBar() {
    panel_ = std::make_unique<FakePanel>(QDBusConnection::connectToBus(QDBusConnection::SessionBus, panelConnection),
                                         [this](const auto& condition) { return runUntil(condition, patience); });
}

void X11DesktopUnderContract::activateProgram() {
    programsWindow_ = std::make_unique<QWindow>();
    programsWindow_->setGeometry(initialDisplay.x + 100, initialDisplay.y + 100, 200, 100);
    programsWindow_->show();
    programsWindow_->requestActivate();
}

void X11DesktopUnderContract::setDisplays(const std::vector<Rect>& axFrames) {
    std::vector<Monitor> monitors;
    for (const Rect& frame : axFrames)
        monitors.push_back({"display" + std::to_string(monitors.size()), inRoot(frame), monitors.empty()});
    require(desktop_->setMonitors(monitors));
}

void X11DesktopUnderContract::press(std::uint32_t keyCode, std::uint32_t modifiers) {
    keyboard_.press(modifierKeys(modifiers), keyAt(keyCode));
}

void X11DesktopUnderContract::holdAndRelease(std::uint32_t keyCode, std::uint32_t modifiers) {
    std::vector<Key> keys = modifierKeys(modifiers);
    keys.push_back(keyAt(keyCode));
    const HeldKey held(observer().connection(), keys);
    // The server repeats a held key for the first time after 660 ms and then every 40 ms.
    observer().waitUntil([] { return false; }, std::chrono::milliseconds(1000));
}

void X11DesktopUnderContract::takeCombination(std::uint32_t keyCode, std::uint32_t modifiers) {
    XConnection& connection = observer().connection();
    xcb_grab_key(connection.raw(), 0, connection.root(), modifierMask(modifiers),
                 static_cast<xcb_keycode_t>(keyAt(keyCode)), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    connection.synchronise();
}

void X11DesktopUnderContract::setLockKeys(bool on) {
    require(keyboard_.setNumLock(on));
    require(keyboard_.setCapsLock(on));
}

void X11DesktopUnderContract::waitForRecorderPanel() {
    if (!runUntil([this] { return !keyboardIsFree(observer().connection()); }, patience))
        throw std::runtime_error("the recorder panel does not get the keyboard");
}

void X11DesktopUnderContract::waitUntilKeyboardIsFree() {
    if (!runUntil([this] { return keyboardIsFree(observer().connection()); }, patience))
        throw std::runtime_error("the keyboard is not given back");
}

void X11DesktopUnderContract::closeRecorderPanel() {
    const auto ofThisProcess = [](const ClientWindow& window) {
        return window.pid == static_cast<std::uint32_t>(getpid());
    };
    std::optional<xcb_window_t> panel;
    observer().waitUntil([&] {
        const auto clients = observer().clients();
        const auto found = std::ranges::find_if(clients, ofThisProcess);
        if (found != clients.end()) panel = found->id;
        return panel.has_value();
    });
    if (!panel) throw std::runtime_error("no window of this process is listed");
    observer().connection().sendToWindowManager(*panel, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, 2, 0, 0, 0});
}

bool X11DesktopUnderContract::runUntil(const std::function<bool()>& condition, Duration deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    QTimer wakeUp;  // the condition may come true without an event of ours
    wakeUp.start(5);
    while (!condition() && std::chrono::steady_clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

void X11DesktopUnderContract::keepMainThreadBusy(Duration span) {
    observer().waitUntil([] { return false; }, std::chrono::duration_cast<std::chrono::milliseconds>(span));
}

std::vector<std::string> X11DesktopUnderContract::logLines() {
    std::ifstream file(desktop_->folder() / "platform.log");
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

std::string X11DesktopUnderContract::version() const {
    return VELMORAND_SHORT_VERSION;
}

}  // namespace velmorand::desktop
