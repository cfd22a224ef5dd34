#include "desktop/harness/SettingsManager.h"

#include "desktop/harness/HostileClient.h"

namespace velmorand::desktop {
namespace {

/// Of the first screen, the only one of every test desktop.
constexpr std::string_view selection = "_XSETTINGS_S0";
constexpr std::string_view property = "_XSETTINGS_SETTINGS";

}  // namespace

SettingsManager::SettingsManager(XConnection& connection, std::span<const std::uint8_t> settings)
    : connection_(connection), window_(xcb_generate_id(connection.raw())) {
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window_, connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    publish(settings);
    xcb_set_selection_owner(connection.raw(), window_, connection.atom(selection), XCB_CURRENT_TIME);
    announce();
}

SettingsManager::~SettingsManager() {
    HostileClient(connection_).destroyWindow(window_);
}

void SettingsManager::publish(std::span<const std::uint8_t> settings) {
    HostileClient(connection_).setProperty(window_, property, property, 8, settings);
}

void SettingsManager::announce() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = connection_.root();
    message.type = connection_.atom("MANAGER");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = connection_.atom(selection);
    message.data.data32[2] = window_;
    xcb_send_event(connection_.raw(), 0, connection_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    connection_.synchronise();
}

}  // namespace velmorand::desktop
