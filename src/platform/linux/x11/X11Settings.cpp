#include "platform/linux/x11/X11Settings.h"

#include "platform/linux/x11/X11PropertyReader.h"

#include <fmt/format.h>

#include <array>
#include <chrono>
#include <utility>

namespace velmorand {
namespace {

constexpr std::chrono::milliseconds queryTimeout{750};
/// When to ask a server again that did not answer.
constexpr std::chrono::seconds retryDelay{2};

constexpr std::string_view animationsSetting = "Gtk/EnableAnimations";

}  // namespace

X11Settings::X11Settings(X11Connection& connection, RunLoop& runLoop) : connection_(connection), runLoop_(runLoop) {
    handler_ = connection.handle([this](const xcb_generic_event_t& event) { handle(event); });
    look(std::chrono::steady_clock::now() + X11Connection::startTimeout);
}

std::optional<bool> X11Settings::reducesMotion() {
    const auto animations = settings_.find(animationsSetting);
    return animations == settings_.end() ? std::nullopt : std::optional(animations->second == 0);
}

void X11Settings::handle(const xcb_generic_event_t& event) {
    if (concerns(event)) lookSoon();
}

bool X11Settings::concerns(const xcb_generic_event_t& event) const {
    switch (eventType(event)) {
        case XCB_CLIENT_MESSAGE: {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            return message.type == managerMessage_ && message.format == 32 && message.data.data32[1] == selection_;
        }
        case XCB_DESTROY_NOTIFY: return reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == manager_;
        case XCB_PROPERTY_NOTIFY: {
            const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            return change.window == manager_ && change.atom == property_;
        }
        default: return false;
    }
}

/// Changes come in bursts, and a burst is looked at once.
void X11Settings::lookSoon() {
    if (std::exchange(looks_, true)) return;
    look_ = runLoop_.after(Duration::zero(), [this] {
        looks_ = false;
        look(std::chrono::steady_clock::now() + queryTimeout);
    });
}

/// What was known stays known while the server does not answer.
void X11Settings::look(Deadline deadline) {
    auto failure = internAtoms(deadline);
    if (!failure) failure = findManager(deadline);
    if (failure && *failure != X11Failure::lost) retry_ = runLoop_.after(retryDelay, [this] { lookSoon(); });
}

std::optional<X11Failure> X11Settings::internAtoms(Deadline deadline) {
    if (property_ != XCB_ATOM_NONE) return std::nullopt;
    const std::array names{fmt::format("_XSETTINGS_S{}", connection_.screenNumber()), std::string("MANAGER"),
                           std::string("_XSETTINGS_SETTINGS")};
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        cookies[i] =
            xcb_intern_atom(connection_.raw(), 0, static_cast<std::uint16_t>(names[i].size()), names[i].data());
    }
    std::optional<X11Failure> failure;
    const std::array targets{&selection_, &managerMessage_, &property_};  // the last one stands for all
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto reply = connection_.reply<xcb_intern_atom_reply_t>(cookies[i], deadline);
        if (!reply) failure = reply.error();
        if (reply && !failure) *targets[i] = (*reply)->atom;
    }
    return failure;
}

/// A manager that is not the selection's owner any more when its events have been asked for may have gone before that,
/// and its end would not be told.
std::optional<X11Failure> X11Settings::findManager(Deadline deadline) {
    const auto first = connection_.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection_.raw(), selection_), deadline);
    if (!first) return first.error();
    manager_ = (*first)->owner;
    if (manager_ == XCB_WINDOW_NONE) {
        settings_.clear();
        return std::nullopt;
    }
    connection_.requestEvents(manager_, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    const auto request = requestProperty(connection_, manager_, property_, x11_property_limit::settings);
    const auto ownerRequest = xcb_get_selection_owner(connection_.raw(), selection_);
    const auto value = readProperty(connection_, request, deadline);
    const auto second = connection_.reply<xcb_get_selection_owner_reply_t>(ownerRequest, deadline);
    if (!second) return second.error();
    if ((*second)->owner != manager_) {
        lookSoon();
        return std::nullopt;
    }
    if (!value) return value.error();
    const bool isSettings = value->type == property_ && value->format == 8;
    settings_ = (isSettings ? decodeXSettings(value->data) : std::nullopt).value_or(XSettings{});
    return std::nullopt;
}

}  // namespace velmorand
