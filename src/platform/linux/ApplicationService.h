#pragma once

#include "base/Subscription.h"
#include "platform/linux/EarlyBus.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

struct sd_bus_message;
struct sd_bus_slot;

namespace velmorand {

class QtRunLoop;

/// The program as an application on the session bus (org.freedesktop.Application): other copies of it, launchers and the
/// bus itself ask it to come to the front. It opens no files and has no actions, and says so. It never waits for the bus;
/// when the bus ends, so does the service, and the program goes on.
class ApplicationService {
public:
    /// Told in a turn of its own with what the caller's desktop gave along; answers whether it is done. Who called an
    /// application that is about to end hears nothing until the connection closes, and then finds nobody.
    using Reopened = std::function<bool(const std::optional<std::string>& activationToken)>;

    /// `bus` has the name of the program. The bus and the run loop must outlive the service.
    ApplicationService(EarlyBus& bus, QtRunLoop& runLoop, Reopened reopened);
    ~ApplicationService();

    ApplicationService(const ApplicationService&) = delete;
    ApplicationService& operator=(const ApplicationService&) = delete;

    /// Answers from now on; what was asked before has waited.
    void start();

    /// In a turn of its own.
    void activate(sd_bus_message* message);

private:
    struct DropSlot {
        void operator()(sd_bus_slot* slot) const;
    };

    void handleMessages();

    EarlyBus& bus_;
    QtRunLoop& runLoop_;
    Reopened reopened_;
    std::unique_ptr<sd_bus_slot, DropSlot> slot_;
    Subscription readable_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace velmorand
