// A window manager without decorations that knows just enough of the desktop's conventions to be taken for one. Its
// options make it fail in the ways of real ones:
//   --name NAME           calls itself so
//   --no-message          neither advertises nor handles the request to move and resize a window
//   --ignore-message      advertises that request and does not act on it
//   --ignore-configure    does not let clients place windows that it manages
//   --tile                keeps every window in place until it was maximised and put back to normal
//   --keep-maximized      does not put maximised windows back to normal

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Options {
    std::string name = "Plain";
    bool advertisesMessage = true;
    bool handlesMessage = true;
    bool handlesConfigure = true;
    bool tiles = false;
    bool keepsMaximized = false;
};

Options parse(std::span<char*> arguments) {
    Options options;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string_view name = arguments[i];
        if (name == "--name" && i + 1 < arguments.size()) options.name = arguments[++i];
        if (name == "--no-message") options.advertisesMessage = options.handlesMessage = false;
        if (name == "--ignore-message") options.handlesMessage = false;
        if (name == "--ignore-configure") options.handlesConfigure = false;
        if (name == "--tile") options.tiles = true;
        if (name == "--keep-maximized") options.keepsMaximized = true;
    }
    return options;
}

class PlainManager {
public:
    PlainManager(xcb_connection_t* connection, Options options)
        : connection_(connection),
          root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
          options_(std::move(options)) {}

    /// False when another window manager runs.
    bool start() {
        const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        const auto taken = xcb_change_window_attributes_checked(connection_, root_, XCB_CW_EVENT_MASK, &events);
        const std::unique_ptr<xcb_generic_error_t, void (*)(void*)> error{xcb_request_check(connection_, taken),
                                                                          std::free};
        if (error) return false;
        advertise();
        writeClients();
        xcb_flush(connection_);
        return true;
    }

    void run() {
        while (const std::unique_ptr<xcb_generic_event_t, void (*)(void*)> event{xcb_wait_for_event(connection_),
                                                                                 std::free}) {
            handle(*event);
            xcb_flush(connection_);
        }
    }

private:
    struct Client {
        bool isMaximized = false;
        bool isTiled = false;
    };

    xcb_atom_t atom(std::string_view name) {
        const auto known = atoms_.find(name);
        if (known != atoms_.end()) return known->second;
        const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, void (*)(void*)> reply{
            xcb_intern_atom_reply(connection_, cookie, nullptr), std::free};
        return atoms_.emplace(name, reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE}).first->second;
    }

    void write(xcb_window_t window, std::string_view property, xcb_atom_t type,
               const std::vector<std::uint32_t>& items) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                            static_cast<std::uint32_t>(items.size()), items.data());
    }

    void advertise() {
        const xcb_window_t check = xcb_generate_id(connection_);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, check, root_, -10, -10, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, check, atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8,
                            static_cast<std::uint32_t>(options_.name.size()), options_.name.data());
        std::vector<std::uint32_t> supported{atom("_NET_SUPPORTING_WM_CHECK"),
                                             atom("_NET_CLIENT_LIST"),
                                             atom("_NET_CLIENT_LIST_STACKING"),
                                             atom("_NET_ACTIVE_WINDOW"),
                                             atom("_NET_WM_STATE"),
                                             atom("_NET_FRAME_EXTENTS"),
                                             atom("_NET_WM_STATE_MAXIMIZED_HORZ"),
                                             atom("_NET_WM_STATE_MAXIMIZED_VERT")};
        if (options_.advertisesMessage) supported.push_back(atom("_NET_MOVERESIZE_WINDOW"));
        write(root_, "_NET_SUPPORTED", XCB_ATOM_ATOM, supported);
        write(check, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {check});
        write(root_, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {check});
    }

    void handle(const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7f) {
            case XCB_MAP_REQUEST: manage(reinterpret_cast<const xcb_map_request_event_t&>(event).window); return;
            case XCB_CONFIGURE_REQUEST:
                handleConfigure(reinterpret_cast<const xcb_configure_request_event_t&>(event));
                return;
            case XCB_CLIENT_MESSAGE: handleMessage(reinterpret_cast<const xcb_client_message_event_t&>(event)); return;
            case XCB_DESTROY_NOTIFY:
                clients_.erase(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
                writeClients();
                return;
            default: return;
        }
    }

    void manage(xcb_window_t window) {
        xcb_map_window(connection_, window);
        write(window, "WM_STATE", atom("WM_STATE"), {1, XCB_WINDOW_NONE});
        clients_[window].isTiled = options_.tiles;
        writeClients();
        activate(window);
    }

    void activate(xcb_window_t window) {
        xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
        write(root_, "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, {window});
    }

    void writeClients() {
        std::vector<std::uint32_t> windows;
        for (const auto& [window, client] : clients_) windows.push_back(window);
        write(root_, "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, windows);
        write(root_, "_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW, windows);
    }

    [[nodiscard]] bool mayMove(xcb_window_t window) const {
        const auto client = clients_.find(window);
        return client == clients_.end() || !(client->second.isTiled || client->second.isMaximized);
    }

    void handleConfigure(const xcb_configure_request_event_t& request) {
        const bool isManaged = clients_.contains(request.window);
        if (isManaged && (!options_.handlesConfigure || !mayMove(request.window))) return;
        std::vector<std::uint32_t> values;
        const auto take = [&](std::uint16_t field, std::int32_t value) {
            if ((request.value_mask & field) != 0) values.push_back(static_cast<std::uint32_t>(value));
        };
        take(XCB_CONFIG_WINDOW_X, request.x);
        take(XCB_CONFIG_WINDOW_Y, request.y);
        take(XCB_CONFIG_WINDOW_WIDTH, request.width);
        take(XCB_CONFIG_WINDOW_HEIGHT, request.height);
        constexpr std::uint16_t geometry =
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
        xcb_configure_window(connection_, request.window, request.value_mask & geometry, values.data());
    }

    void handleMessage(const xcb_client_message_event_t& message) {
        const auto& data = message.data.data32;
        if (message.type == atom("_NET_ACTIVE_WINDOW")) activate(message.window);
        if (message.type == atom("_NET_MOVERESIZE_WINDOW") && options_.handlesMessage && mayMove(message.window)) {
            const std::array<std::uint32_t, 4> values{data[1], data[2], data[3], data[4]};
            xcb_configure_window(connection_, message.window, static_cast<std::uint16_t>(data[0] >> 8U & 0xFU),
                                 values.data());
        }
        if (message.type == atom("_NET_WM_STATE") && data[1] == atom("_NET_WM_STATE_MAXIMIZED_VERT"))
            setMaximized(message.window, data[0] == 1);
    }

    /// The state only: the tests look at whether the window moves afterwards.
    void setMaximized(xcb_window_t window, bool isMaximized) {
        const auto client = clients_.find(window);
        if (client == clients_.end() || (!isMaximized && options_.keepsMaximized)) return;
        if (client->second.isMaximized && !isMaximized) client->second.isTiled = false;
        client->second.isMaximized = isMaximized;
        std::vector<std::uint32_t> states;
        if (isMaximized) states = {atom("_NET_WM_STATE_MAXIMIZED_VERT"), atom("_NET_WM_STATE_MAXIMIZED_HORZ")};
        write(window, "_NET_WM_STATE", XCB_ATOM_ATOM, states);
    }

    xcb_connection_t* connection_;
    xcb_window_t root_;
    Options options_;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::map<xcb_window_t, Client> clients_;
};

}  // namespace

int main(int argumentCount, char** arguments) {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        std::fputs("cannot connect to the X server\n", stderr);
        return 1;
    }
    PlainManager manager(connection, parse({arguments, static_cast<std::size_t>(argumentCount)}));
    if (!manager.start()) {
        std::fputs("another window manager is running\n", stderr);
        return 1;
    }
    manager.run();
    xcb_disconnect(connection);
    return 0;
}
