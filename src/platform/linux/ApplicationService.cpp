#include "platform/linux/ApplicationService.h"

#include "platform/linux/QtRunLoop.h"
#include "platform/linux/StartupToken.h"

#include <systemd/sd-bus.h>

#include <array>
#include <string_view>
#include <utility>

namespace velmorand {
namespace {

std::shared_ptr<sd_bus_message> hold(sd_bus_message* message) {
    return {sd_bus_message_ref(message), [](sd_bus_message* held) { sd_bus_message_unref(held); }};
}

/// The texts among the platform's data under the two names that a token can have. On X11 the older one is at home.
std::optional<std::string> readActivationToken(sd_bus_message* message) {
    std::optional<std::string> activationToken;
    std::optional<std::string> startupId;
    if (sd_bus_message_enter_container(message, 'a', "{sv}") < 0) return std::nullopt;
    while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
        const char* key = nullptr;
        const char* contents = nullptr;
        const char* text = nullptr;
        char type = 0;
        if (sd_bus_message_read_basic(message, 's', static_cast<void*>(&key)) < 0) break;
        if (sd_bus_message_peek_type(message, &type, &contents) < 0) break;
        if (std::string_view(contents) != "s") {
            sd_bus_message_skip(message, "v");
        } else if (sd_bus_message_read(message, "v", "s", &text) >= 0) {
            if (std::string_view(key) == "desktop-startup-id") startupId = startupToken(text);
            if (std::string_view(key) == "activation-token") activationToken = startupToken(text);
        }
        sd_bus_message_exit_container(message);
    }
    return startupId ? startupId : activationToken;
}

int answerActivate(sd_bus_message* message, void* service, sd_bus_error* /*error*/) {
    static_cast<ApplicationService*>(service)->activate(message);
    return 1;
}

int refuseOpen(sd_bus_message* /*message*/, void* /*service*/, sd_bus_error* error) {
    return sd_bus_error_set(error, SD_BUS_ERROR_NOT_SUPPORTED, "Velmorand opens no files.");
}

int refuseAction(sd_bus_message* /*message*/, void* /*service*/, sd_bus_error* error) {
    return sd_bus_error_set(error, SD_BUS_ERROR_NOT_SUPPORTED, "Velmorand has no such action.");
}

const auto description = std::to_array<sd_bus_vtable>({
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_NAMES("Activate", "a{sv}", SD_BUS_PARAM(platform_data), "", , answerActivate,
                             SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD_WITH_NAMES("Open", "asa{sv}", SD_BUS_PARAM(uris) SD_BUS_PARAM(platform_data), "", , refuseOpen,
                             SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD_WITH_NAMES("ActivateAction", "sava{sv}",
                             SD_BUS_PARAM(action_name) SD_BUS_PARAM(parameter) SD_BUS_PARAM(platform_data), "", ,
                             refuseAction, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
});

}  // namespace

void ApplicationService::DropSlot::operator()(sd_bus_slot* slot) const {
    sd_bus_slot_unref(slot);
}

ApplicationService::ApplicationService(EarlyBus& bus, QtRunLoop& runLoop, CanReopen canReopen, Reopened reopened)
    : bus_(bus), runLoop_(runLoop), canReopen_(std::move(canReopen)), reopened_(std::move(reopened)) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(bus_.raw(), &slot, EarlyBus::path, EarlyBus::interface, description.data(), this);
    slot_.reset(slot);
}

ApplicationService::~ApplicationService() = default;

void ApplicationService::start() {
    readable_ = runLoop_.watch(sd_bus_get_fd(bus_.raw()), [this] { handleMessages(); });
    handleMessages();  // those that have been read together with an answer
}

void ApplicationService::handleMessages() {
    int handled = 1;
    for (std::size_t count = 0; count < mostMessagesAtOnce && handled > 0; ++count)
        handled = sd_bus_process(bus_.raw(), nullptr);
    if (handled < 0) readable_.cancel();
    // What is left may have been read already, so that nothing would tell of it. A posted turn would come before what
    // other files and timers have waiting.
    rest_ = handled > 0 ? runLoop_.after(Duration::zero(), [this] { handleMessages(); }) : RunLoop::Timer();
}

void ApplicationService::activate(sd_bus_message* message) {
    callers_.push_back(hold(message));
    if (auto token = readActivationToken(message)) token_ = std::move(token);
    if (callers_.size() > 1) return;
    runLoop_.post([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) reopen();
    });
}

void ApplicationService::reopen() {
    const auto callers = std::exchange(callers_, {});
    const auto token = std::exchange(token_, std::nullopt);
    if (!canReopen_()) return;
    for (const Caller& caller : callers) sd_bus_reply_method_return(caller.get(), nullptr);
    reopened_(token);
}

}  // namespace velmorand
