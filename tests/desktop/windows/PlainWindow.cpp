// A window of a program without a toolkit, to be arranged, or a panel that others are arranged beside: what a client can
// be with nothing but the X protocol. On SIGUSR1 it opens another window, with " 2" and so on behind its title.

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Options {
    std::string title = "Plain";
    /// Both parts of WM_CLASS; empty for none.
    std::string windowClass;
    std::uint16_t width = 400;
    std::uint16_t height = 300;
    std::uint32_t minimumWidth = 0;
    std::uint32_t minimumHeight = 0;
    bool isFixed = false;
    bool hasStaticGravity = false;
    bool isDialog = false;
    bool isDock = false;
    /// Where in the root window; absent to leave it to the window manager.
    std::optional<std::array<std::int16_t, 2>> position;
    /// _NET_WM_STRUT_PARTIAL, _NET_WM_STRUT and _NET_WM_DESKTOP; empty for none.
    std::vector<std::uint32_t> partialStrut;
    std::vector<std::uint32_t> strut;
    std::vector<std::uint32_t> desktop;
};

/// "400x300".
template <typename Number>
void parseSize(std::string_view text, Number& width, Number& height) {
    const auto times = text.find('x');
    if (times == std::string_view::npos) return;
    std::from_chars(text.data(), text.data() + times, width);
    std::from_chars(text.data() + times + 1, text.data() + text.size(), height);
}

/// "0,0,32,0".
std::vector<std::uint32_t> parseNumbers(std::string_view text) {
    std::vector<std::uint32_t> numbers;
    std::uint32_t number = 0;
    while (!text.empty()) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc()) break;
        numbers.push_back(number);
        text.remove_prefix(std::min(text.size(), static_cast<std::size_t>(end - text.data()) + 1));
    }
    return numbers;
}

/// What makes a panel of the window; whether \p name is one of these options.
bool parsePanelOption(std::string_view name, std::string_view value, Options& options) {
    const auto numbers = parseNumbers(value);
    if (name == "--position" && numbers.size() == 2) {
        options.position = {static_cast<std::int16_t>(numbers[0]), static_cast<std::int16_t>(numbers[1])};
    } else if (name == "--partial-strut") {
        options.partialStrut = numbers;
    } else if (name == "--strut") {
        options.strut = numbers;
    } else if (name == "--desktop") {
        options.desktop = numbers;
    } else {
        return false;
    }
    return true;
}

Options parse(std::span<char*> arguments) {
    Options options;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string_view name = arguments[i];
        const std::string_view value = i + 1 < arguments.size() ? arguments[i + 1] : "";
        if (name == "--fixed") {
            options.isFixed = true;
        } else if (name == "--static-gravity") {
            options.hasStaticGravity = true;
        } else if (name == "--dialog") {
            options.isDialog = true;
        } else if (name == "--dock") {
            options.isDock = true;
        } else if (parsePanelOption(name, value, options)) {
            ++i;
        } else if (name == "--title") {
            options.title = value;
            ++i;
        } else if (name == "--class") {
            options.windowClass = value;
            ++i;
        } else if (name == "--size") {
            parseSize(value, options.width, options.height);
            ++i;
        } else if (name == "--minimum-size") {
            parseSize(value, options.minimumWidth, options.minimumHeight);
            ++i;
        }
    }
    return options;
}

class PlainWindows {
public:
    PlainWindows(xcb_connection_t* connection, Options options)
        : connection_(connection),
          screen_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data),
          options_(std::move(options)),
          protocols_(atom("WM_PROTOCOLS")),
          deleteWindow_(atom("WM_DELETE_WINDOW")) {}

    void open() {
        const xcb_window_t window = xcb_generate_id(connection_);
        const std::array<std::uint32_t, 2> values{0x7a9cc0, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
        const auto [x, y] = options_.position.value_or(std::array<std::int16_t, 2>{});
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, x, y, options_.width,
                          options_.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
        ++opened_;
        const std::string title = opened_ == 1 ? options_.title : options_.title + " " + std::to_string(opened_);
        setText(window, XCB_ATOM_WM_NAME, title);
        if (!options_.windowClass.empty()) {
            const std::string both = options_.windowClass + '\0' + options_.windowClass + '\0';
            setText(window, XCB_ATOM_WM_CLASS, both);
        }
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, protocols_, XCB_ATOM_ATOM, 32, 1,
                            &deleteWindow_);
        if (options_.isDialog) setType(window, "_NET_WM_WINDOW_TYPE_DIALOG");
        if (options_.isDock) setType(window, "_NET_WM_WINDOW_TYPE_DOCK");
        setNumbers(window, "_NET_WM_STRUT_PARTIAL", options_.partialStrut);
        setNumbers(window, "_NET_WM_STRUT", options_.strut);
        setNumbers(window, "_NET_WM_DESKTOP", options_.desktop);
        setSizeHints(window);
        xcb_map_window(connection_, window);
        xcb_flush(connection_);
        ++alive_;
    }

    /// Handles what has come; false when the last window or the server is gone.
    bool handleEvents() {
        while (const std::unique_ptr<xcb_generic_event_t, void (*)(void*)> event{xcb_poll_for_event(connection_),
                                                                                 std::free}) {
            const int type = event->response_type & 0x7f;
            if (type == XCB_CLIENT_MESSAGE) {
                const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
                if (message.type == protocols_ && message.data.data32[0] == deleteWindow_)
                    xcb_destroy_window(connection_, message.window);
            } else if (type == XCB_DESTROY_NOTIFY) {
                --alive_;
            }
        }
        xcb_flush(connection_);
        return alive_ > 0 && xcb_connection_has_error(connection_) == 0;
    }

private:
    xcb_atom_t atom(std::string_view name) {
        const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, void (*)(void*)> reply{
            xcb_intern_atom_reply(connection_, cookie, nullptr), std::free};
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    void setText(xcb_window_t window, xcb_atom_t property, std::string_view text) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    }

    void setType(xcb_window_t window, std::string_view name) {
        const xcb_atom_t type = atom(name);
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32,
                            1, &type);
    }

    void setNumbers(xcb_window_t window, std::string_view property, const std::vector<std::uint32_t>& numbers) {
        if (numbers.empty()) return;
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), XCB_ATOM_CARDINAL, 32,
                            static_cast<std::uint32_t>(numbers.size()), numbers.data());
    }

    /// WM_NORMAL_HINTS of the inter-client conventions, as words.
    void setSizeHints(xcb_window_t window) {
        constexpr std::uint32_t hasPosition = 1U << 0U;
        constexpr std::uint32_t hasMinimum = 1U << 4U;
        constexpr std::uint32_t hasMaximum = 1U << 5U;
        constexpr std::uint32_t hasGravity = 1U << 9U;
        std::array<std::uint32_t, 18> hints{};
        if (options_.position) hints[0] |= hasPosition;
        if (options_.minimumWidth > 0) {
            hints[0] |= hasMinimum;
            hints[5] = options_.minimumWidth;
            hints[6] = options_.minimumHeight;
        }
        if (options_.isFixed) {
            hints[0] |= hasMinimum | hasMaximum;
            hints[5] = hints[7] = options_.width;
            hints[6] = hints[8] = options_.height;
        }
        if (options_.hasStaticGravity) {
            hints[0] |= hasGravity;
            hints[17] = XCB_GRAVITY_STATIC;
        }
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                            XCB_ATOM_WM_SIZE_HINTS, 32, static_cast<std::uint32_t>(hints.size()), hints.data());
    }

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    Options options_;
    xcb_atom_t protocols_;
    xcb_atom_t deleteWindow_;
    int opened_ = 0;
    int alive_ = 0;
};

}  // namespace

int main(int argumentCount, char** arguments) {
    sigset_t another{};
    sigemptyset(&another);
    sigaddset(&another, SIGUSR1);
    sigprocmask(SIG_BLOCK, &another, nullptr);
    const int signals = signalfd(-1, &another, SFD_CLOEXEC | SFD_NONBLOCK);

    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (signals < 0 || xcb_connection_has_error(connection) != 0) {
        std::fputs("cannot connect to the X server\n", stderr);
        return 1;
    }
    PlainWindows windows(connection, parse({arguments, static_cast<std::size_t>(argumentCount)}));
    windows.open();
    std::array<pollfd, 2> sources{pollfd{xcb_get_file_descriptor(connection), POLLIN, 0}, pollfd{signals, POLLIN, 0}};
    while (windows.handleEvents()) {
        poll(sources.data(), sources.size(), -1);
        signalfd_siginfo received{};
        while (read(signals, &received, sizeof received) == sizeof received) windows.open();
    }
    xcb_disconnect(connection);
    return 0;
}
