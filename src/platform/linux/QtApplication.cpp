#include "platform/linux/QtApplication.h"

#include "platform/linux/QtRunLoop.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QMetaObject>
#include <QSessionManager>
#include <QWindow>
#include <csignal>
#include <cstdlib>
#include <utility>

namespace velmorand {
namespace {

/// The toolkit calls plain functions, which find their way back through this. At most one exists in a process.
QtApplication* theApplication = nullptr;

constexpr QLatin1StringView lossInTheToolkitsWords("The X11 connection broke");

}  // namespace

void QtApplication::processExits() {
    if (theApplication != nullptr) theApplication->endByToolkit();
}

void QtApplication::forwardToolkitMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    if (theApplication == nullptr) return;
    if (text.startsWith(lossInTheToolkitsWords)) return;  // told once, in our own words
    const bool isProblem = type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg;
    theApplication->log_.write(isProblem ? LogLevel::error : LogLevel::debug, "toolkit", text.toStdString());
}

namespace {

sigset_t endingSignals() {
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

/// Whether the program starts at log-in is a setting of its own: a session manager that remembers what was running
/// would start it a second time.
void stayOutOfSavedSession(QSessionManager& manager) {
    manager.setRestartHint(QSessionManager::RestartNever);
}

}  // namespace

QtApplication::QtApplication(int& argumentCount, char** arguments, Log& log) : log_(log), logger_(log, "app") {
    // Blocked before the toolkit starts its threads, which inherit the mask: the signals then wait for us.
    const sigset_t signals = endingSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);

    theApplication = this;
    qInstallMessageHandler(forwardToolkitMessage);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    application_ = std::make_unique<QGuiApplication>(argumentCount, arguments);
    QObject::connect(application_.get(), &QGuiApplication::saveStateRequest, application_.get(), stayOutOfSavedSession,
                     Qt::DirectConnection);
    static const int registered = std::atexit(processExits);
    static_cast<void>(registered);
}

QtApplication::~QtApplication() {
    theApplication = nullptr;
    signals_.cancel();
    if (signalFile_ >= 0) close(signalFile_);
    application_.reset();
    qInstallMessageHandler(nullptr);
}

void QtApplication::endOnSignals(QtRunLoop& runLoop) {
    const sigset_t signals = endingSignals();
    signalFile_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (signalFile_ < 0) {
        sigprocmask(SIG_UNBLOCK, &signals, nullptr);  // better ended without ceremony than not at all
        return;
    }
    signals_ = runLoop.watch(signalFile_, [this] {
        signalfd_siginfo received{};
        while (read(signalFile_, &received, sizeof received) == sizeof received) terminate();
    });
}

int QtApplication::run() {
    running_ = true;
    QMetaObject::invokeMethod(
        application_.get(),
        [this] {
            const auto delegate = delegate_.lock();
            if (delegate && !terminating_) delegate->applicationDidFinishLaunching();
            if (afterLaunch_) afterLaunch_();
        },
        Qt::QueuedConnection);
    if (!terminating_) QGuiApplication::exec();
    takeTerminationPath();
    return exitStatus_;
}

void QtApplication::terminate() {
    if (std::exchange(terminating_, true) || !running_) return;
    QMetaObject::invokeMethod(application_.get(), [] { QGuiApplication::exit(0); }, Qt::QueuedConnection);
}

void QtApplication::reopen(const std::optional<std::string>& activationToken) {
    const auto delegate = delegate_.lock();
    if (delegate && !terminating_) delegate->applicationShouldHandleReopen(activationToken);
}

void QtApplication::setOnActivation(std::function<void()> onActivation) {
    QObject::connect(
        application_.get(), &QGuiApplication::applicationStateChanged, application_.get(),
        [onActivation = std::move(onActivation)](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive) onActivation();
        },
        Qt::QueuedConnection);
}

void QtApplication::activate() {
    for (const QWindow* window : QGuiApplication::topLevelWindows()) {
        if (!window->isVisible() || !activator_) continue;
        activator_(static_cast<std::uint32_t>(window->winId()));
        return;
    }
}

void QtApplication::reportLoss() {
    if (!std::exchange(lossReported_, true)) logger_.error("The connection to the X server is lost.");
}

void QtApplication::endAfterLoss() {
    reportLoss();
    exitStatus_ = 1;
    terminate();
}

/// Nothing else ends the process while the application exists.
void QtApplication::endByToolkit() {
    reportLoss();
    takeTerminationPath();
}

void QtApplication::takeTerminationPath() {
    if (std::exchange(terminated_, true)) return;
    if (const auto delegate = delegate_.lock()) delegate->applicationWillTerminate();
}

}  // namespace velmorand
