#pragma once

#include "base/Subscription.h"
#include "platform/Application.h"
#include "platform/Logger.h"

#include <QtGlobal>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

class QGuiApplication;

namespace velmorand {

class QtRunLoop;

/// The application object over Qt's. SIGTERM, SIGINT, the end of the session and the loss of the X server all take
/// the same termination path, once. The toolkit ends the process by itself when its own connection breaks; the
/// path is run then too.
class QtApplication final : public Application {
public:
    /// Makes Qt's application object: from here on the toolkit may be used. The arguments are the process's own.
    /// At most one exists in a process.
    QtApplication(int& argumentCount, char** arguments, Log& log);
    ~QtApplication() override;

    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override { delegate_ = std::move(delegate); }
    [[nodiscard]] int run() override;
    void terminate() override;
    void activate() override;

    /// Follows the signals that ask a process to end, from the running of the loop on.
    void endOnSignals(QtRunLoop& runLoop);

    /// Calls `launched` once, when the delegate was told that launching has finished.
    void afterLaunch(std::function<void()> launched) { afterLaunch_ = std::move(launched); }

    /// Whether the application is about to end.
    [[nodiscard]] bool isTerminating() const { return terminating_; }

    /// Tells the delegate that the program was started again; nothing when the application is about to end.
    void reopen(const std::optional<std::string>& activationToken);

    /// Has a window of the window system, by its number there, given the keyboard.
    void setWindowActivator(std::function<void(std::uint32_t window)> activator) { activator_ = std::move(activator); }

    /// Told in a turn of the loop when one of the toolkit's windows gets the keyboard and none had it before.
    void setOnActivation(std::function<void()> onActivation);

    /// Ends the application with status 1 because the X server is gone, which it logs once.
    void endAfterLoss();

private:
    static void processExits();
    static void forwardToolkitMessage(QtMsgType type, const QMessageLogContext& context, const QString& text);
    void reportLoss();
    void endByToolkit();
    void takeTerminationPath();

    Log& log_;
    Logger logger_;
    bool lossReported_ = false;
    std::unique_ptr<QGuiApplication> application_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    std::function<void(std::uint32_t)> activator_;
    std::function<void()> afterLaunch_;
    Subscription signals_;
    int signalFile_ = -1;
    int exitStatus_ = 0;
    bool running_ = false;
    bool terminating_ = false;
    bool terminated_ = false;
};

}  // namespace velmorand
