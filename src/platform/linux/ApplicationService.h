#pragma once

#include "base/Subscription.h"
#include "platform/RunLoop.h"
#include "platform/linux/EarlyBus.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct sd_bus_message;
struct sd_bus_slot;

namespace velmorand {

class QtRunLoop;

/// The program as an application on the session bus (org.freedesktop.Application): other copies of it, launchers and the
/// bus itself ask it to come to the front. It opens no files and has no actions, and says so. It never waits for the bus;
/// when the bus ends, so does the service, and the program goes on.
class ApplicationService {
public:
    /// Whether the application can still come to the front. Who calls one that is about to end hears nothing until the
    /// connection closes, and then finds nobody.
    using CanReopen = std::function<bool()>;

    /// Told in a turn of its own, after the callers were answered: what follows may take its time. Those who call before
    /// that turn share it; the token is the last of those that their desktops gave along.
    using Reopened = std::function<void(const std::optional<std::string>& activationToken)>;

    /// How many messages are handled in one turn; the others wait for the next, and what else waits comes in between.
    static constexpr std::size_t mostMessagesAtOnce = 32;

    /// `bus` has the name of the program. The bus and the run loop must outlive the service.
    ApplicationService(EarlyBus& bus, QtRunLoop& runLoop, CanReopen canReopen, Reopened reopened);
    ~ApplicationService();

    ApplicationService(const ApplicationService&) = delete;
    ApplicationService& operator=(const ApplicationService&) = delete;

    /// Answers from now on; what was asked before has waited.
    void start();

    /// For the bus library: one of the callers.
    void activate(sd_bus_message* message);

private:
    struct DropSlot {
        void operator()(sd_bus_slot* slot) const;
    };

    /// Somebody who waits for the answer.
    using Caller = std::shared_ptr<sd_bus_message>;

    void handleMessages();
    void reopen();

    EarlyBus& bus_;
    QtRunLoop& runLoop_;
    CanReopen canReopen_;
    Reopened reopened_;
    std::vector<Caller> callers_;
    std::optional<std::string> token_;
    std::unique_ptr<sd_bus_slot, DropSlot> slot_;
    Subscription readable_;
    RunLoop::Timer rest_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace velmorand
