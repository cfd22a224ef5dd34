#include "platform/linux/QtApplication.h"

#include "platform/linux/QtRunLoop.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QMetaObject>
#include <csignal>
#include <cstdlib>
#include <utility>

namespace velmorand {
namespace {

/// Whom the end of the process concerns: the toolkit calls `exit` when its connection breaks, and nothing but the
/// exit handlers runs then.
std::function<void()>& exitAction() {
    static std::function<void()> action;
    return action;
}

void runExitAction() {
    if (const auto action = std::exchange(exitAction(), nullptr)) action();
}

/// The toolkit's own messages go where ours go, each on one line.
Log*& toolkitLog() {
    static Log* log = nullptr;
    return log;
}

void forwardToolkitMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    const bool isProblem = type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg;
    if (Log* log = toolkitLog())
        log->write(isProblem ? LogLevel::error : LogLevel::debug, "toolkit", text.toStdString());
}

sigset_t endingSignals() {
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

}  // namespace

QtApplication::QtApplication(int& argumentCount, char** arguments, Log& log) : logger_(log, "app") {
    // Blocked before the toolkit starts its threads, which inherit the mask: the signals then wait for us.
    const sigset_t signals = endingSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);

    toolkitLog() = &log;
    qInstallMessageHandler(forwardToolkitMessage);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    application_ = std::make_unique<QGuiApplication>(argumentCount, arguments);

    exitAction() = [this] { takeTerminationPath(); };
    static const int registered = std::atexit(runExitAction);
    static_cast<void>(registered);
}

QtApplication::~QtApplication() {
    exitAction() = nullptr;
    signals_.cancel();
    if (signalFile_ >= 0) close(signalFile_);
    application_.reset();
    qInstallMessageHandler(nullptr);
    toolkitLog() = nullptr;
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

void QtApplication::endAfterLoss(std::string_view reason) {
    if (terminated_) return;
    logger_.error("{}", reason);
    exitStatus_ = 1;
    terminate();
}

void QtApplication::takeTerminationPath() {
    if (std::exchange(terminated_, true)) return;
    if (const auto delegate = delegate_.lock()) delegate->applicationWillTerminate();
}

}  // namespace velmorand
