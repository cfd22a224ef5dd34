#pragma once

#include <memory>
#include <optional>
#include <string>

namespace velmorand {

/// Told of the events in the life of the application.
class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;
    ApplicationDelegate(const ApplicationDelegate&) = delete;
    ApplicationDelegate& operator=(const ApplicationDelegate&) = delete;

    virtual void applicationDidFinishLaunching() = 0;
    virtual void applicationWillTerminate() = 0;

    /// Somebody has started the program again while it runs, or asks it to come to the front. Told between the other two.
    /// `activationToken` is what the desktop gave along, which lets the next window that is shown take the focus; it is
    /// meant for the windowing system and good for now only. Absent where the desktop gives none.
    virtual void applicationShouldHandleReopen(const std::optional<std::string>& activationToken) = 0;

protected:
    ApplicationDelegate() = default;
};

/// The shared application object (`NSApplication`). Main thread only.
class Application {
public:
    virtual ~Application() = default;
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// The delegate is held weakly: the owner keeps it alive.
    virtual void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) = 0;

    /// Runs the main loop until the application ends: the delegate is told that launching has finished in the
    /// first turn, and that the application will terminate exactly once, whatever ends it. Answers the exit
    /// status of the process: 0 for every wanted end, 1 when the window system was lost.
    [[nodiscard]] virtual int run() = 0;

    /// Gives the keyboard to the application's own window, because the user wants to work with it (`activate`). Without a
    /// window on screen nothing happens.
    virtual void activate() = 0;

    /// Ends the application after the running turn; later calls do nothing.
    virtual void terminate() = 0;

protected:
    Application() = default;
};

}  // namespace velmorand
