#pragma once

#include "base/Subscription.h"
#include "platform/Application.h"
#include "platform/Logger.h"

#include <memory>
#include <string_view>

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

    /// Follows the signals that ask a process to end, from the running of the loop on.
    void endOnSignals(QtRunLoop& runLoop);

    /// Ends the application with status 1 because of `reason`, one line for the log.
    void endAfterLoss(std::string_view reason);

private:
    void takeTerminationPath();

    Logger logger_;
    std::unique_ptr<QGuiApplication> application_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    Subscription signals_;
    int signalFile_ = -1;
    int exitStatus_ = 0;
    bool running_ = false;
    bool terminating_ = false;
    bool terminated_ = false;
};

}  // namespace velmorand
