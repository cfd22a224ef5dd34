#include "platform/linux/x11/X11RecorderWindow.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <string>
#include <vector>

namespace velmorand {
namespace {

/// Key events and the focus; the keys that are down when the focus comes; what becomes of the window; times.
constexpr std::uint32_t windowEvents = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                       XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_KEYMAP_STATE |
                                       XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;

constexpr std::string_view windowClass("velmorand\0Velmorand\0", 20);
constexpr std::size_t longestTitle = 512;

/// Of the window hints (ICCCM): whether the window takes keys.
constexpr std::uint32_t inputHint = 1;
/// Of the size hints (ICCCM): the program chose the position, smallest and largest size, and gravity.
constexpr std::uint32_t positionHint = 1U << 2U;
constexpr std::uint32_t smallestSizeHint = 1U << 4U;
constexpr std::uint32_t largestSizeHint = 1U << 5U;
constexpr std::uint32_t gravityHint = 1U << 9U;
/// Of the desktop's conventions: who asks for the activation.
constexpr std::uint32_t fromPager = 2;

/// The most bytes of one request that any server takes.
constexpr std::size_t mostBytesAtOnce = std::size_t{128} * 1024;

/// At most so many bytes of the text, and no part of a character.
std::string_view shortened(std::string_view text, std::size_t most) {
    if (text.size() <= most) return text;
    while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U) --most;
    return text.substr(0, most);
}

/// How the screen's pixels hold the three colours.
struct PixelLayout {
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    std::size_t bytes = 0;
    std::size_t rowUnit = 0;  ///< bytes of which a row is a multiple
};

PixelLayout layoutOf(const X11Connection& connection) {
    const xcb_screen_t& screen = connection.screen();
    PixelLayout layout;
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0; xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id != screen.root_visual) continue;
            layout.red = visual.data->red_mask;
            layout.green = visual.data->green_mask;
            layout.blue = visual.data->blue_mask;
        }
    }
    for (auto format = xcb_setup_pixmap_formats_iterator(&connection.setup()); format.rem > 0;
         xcb_format_next(&format)) {
        if (format.data->depth != screen.root_depth) continue;
        layout.bytes = format.data->bits_per_pixel / 8U;
        layout.rowUnit = format.data->scanline_pad / 8U;
    }
    return layout;
}

/// One colour of 0 to 255 where the mask has it.
std::uint32_t placed(std::uint32_t value, std::uint32_t mask) {
    if (mask == 0) return 0;
    const int shift = std::countr_zero(mask);
    const std::uint64_t most = mask >> shift;
    return static_cast<std::uint32_t>(value * most / 255U) << shift;
}

std::uint32_t pixelFor(std::uint32_t color, const PixelLayout& layout) {
    return placed(color >> 16U & 0xFFU, layout.red) | placed(color >> 8U & 0xFFU, layout.green) |
           placed(color & 0xFFU, layout.blue);
}

/// The rows as the server wants them, in its order of bytes.
std::vector<std::uint8_t> rowsFor(const RecorderPicture& picture, const PixelLayout& layout, bool isLeastFirst) {
    const std::size_t row = (picture.width * layout.bytes + layout.rowUnit - 1) / layout.rowUnit * layout.rowUnit;
    std::vector<std::uint8_t> bytes(row * picture.height);
    for (std::size_t y = 0; y < picture.height; ++y) {
        for (std::size_t x = 0; x < picture.width; ++x) {
            const std::uint32_t pixel = pixelFor(picture.pixels[y * picture.width + x], layout);
            for (std::size_t i = 0; i < layout.bytes; ++i) {
                const std::size_t byte = isLeastFirst ? i : layout.bytes - 1 - i;
                bytes[y * row + x * layout.bytes + i] = static_cast<std::uint8_t>(pixel >> (8U * byte));
            }
        }
    }
    return bytes;
}

}  // namespace

X11RecorderWindow::X11RecorderWindow(X11Connection& connection, const X11Atoms& atoms, const Rect& area,
                                     std::string_view title, const RecorderPicture& picture)
    : connection_(connection),
      atoms_(atoms),
      window_(xcb_generate_id(connection.raw())),
      width_(picture.width),
      height_(picture.height) {
    const auto x = static_cast<std::int16_t>(std::max(area.x, area.midX() - width_ / 2.0));
    const auto y = static_cast<std::int16_t>(std::max(area.y, area.midY() - height_ / 2.0));
    xcb_create_window(connection_.raw(), XCB_COPY_FROM_PARENT, window_, connection_.root(), x, y, width_, height_, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &windowEvents);
    describe();
    setTitle(title);
    setPicture(picture);
    xcb_map_window(connection_.raw(), window_);
    connection_.flush();
}

X11RecorderWindow::~X11RecorderWindow() {
    xcb_destroy_window(connection_.raw(), window_);
    connection_.flush();
}

void X11RecorderWindow::describe() {
    setBytes(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, windowClass);
    setWords(XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, std::array<std::uint32_t, 9>{inputHint, 1});
    setWords(atoms_[X11AtomName::netWMWindowType], XCB_ATOM_ATOM,
             std::array{atoms_[X11AtomName::netWMWindowTypeDialog]});
    setWords(atoms_[X11AtomName::netWMState], XCB_ATOM_ATOM,
             std::array{atoms_[X11AtomName::netWMStateAbove], atoms_[X11AtomName::netWMStateSkipTaskbar],
                        atoms_[X11AtomName::netWMStateSkipPager]});
    setWords(atoms_[X11AtomName::wmProtocols], XCB_ATOM_ATOM,
             std::array{atoms_[X11AtomName::wmDeleteWindow], atoms_[X11AtomName::netWMPing]});
    setWords(atoms_[X11AtomName::netWMPid], XCB_ATOM_CARDINAL, std::array{static_cast<std::uint32_t>(getpid())});
    std::array<char, 256> machine{};  // without its name the process number means nothing
    if (gethostname(machine.data(), machine.size() - 1) == 0)
        setBytes(XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, machine.data());
}

void X11RecorderWindow::setTitle(std::string_view title) {
    title = shortened(title, longestTitle);
    setBytes(atoms_[X11AtomName::netWMName], atoms_[X11AtomName::utf8String], title);
    setBytes(XCB_ATOM_WM_NAME, atoms_[X11AtomName::utf8String], title);
}

void X11RecorderWindow::setSizeHints() {
    std::array<std::uint32_t, 18> hints{};
    hints[0] = positionHint | smallestSizeHint | largestSizeHint | gravityHint;
    hints[5] = hints[7] = width_;
    hints[6] = hints[8] = height_;
    hints[17] = XCB_GRAVITY_CENTER;
    setWords(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
}

void X11RecorderWindow::setPicture(const RecorderPicture& picture) {
    const bool hasOtherSize = picture.width != width_ || picture.height != height_;
    width_ = picture.width;
    height_ = picture.height;
    setSizeHints();
    if (hasOtherSize) {
        const std::array<std::uint32_t, 2> size{width_, height_};
        xcb_configure_window(connection_.raw(), window_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             size.data());
    }
    const PixelLayout layout = layoutOf(connection_);
    const bool isDrawable = width_ > 0 && height_ > 0 && layout.red != 0 && layout.bytes > 0 && layout.rowUnit > 0;
    if (!isDrawable) return;  // a screen without colours of its own: the window says by its title what it is
    const auto bytes = rowsFor(picture, layout, connection_.setup().image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST);
    const std::uint8_t depth = connection_.screen().root_depth;
    const xcb_pixmap_t pixmap = xcb_generate_id(connection_.raw());
    const xcb_gcontext_t context = xcb_generate_id(connection_.raw());
    xcb_create_pixmap(connection_.raw(), depth, pixmap, window_, width_, height_);
    xcb_create_gc(connection_.raw(), context, pixmap, 0, nullptr);
    const std::size_t row = bytes.size() / height_;
    const auto rowsAtOnce = static_cast<std::uint16_t>(std::clamp<std::size_t>(mostBytesAtOnce / row, 1, height_));
    for (std::uint16_t y = 0; y < height_; y = static_cast<std::uint16_t>(y + rowsAtOnce)) {
        const auto rows = std::min(rowsAtOnce, static_cast<std::uint16_t>(height_ - y));
        xcb_put_image(connection_.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width_, rows, 0,
                      static_cast<std::int16_t>(y), 0, depth, static_cast<std::uint32_t>(rows * row),
                      bytes.data() + y * row);
    }
    xcb_change_window_attributes(connection_.raw(), window_, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection_.raw(), 0, window_, 0, 0, 0, 0);
    xcb_free_gc(connection_.raw(), context);
    xcb_free_pixmap(connection_.raw(), pixmap);  // the window keeps it
    connection_.flush();
}

void X11RecorderWindow::activate(bool hasWindowManager, xcb_timestamp_t time) {
    if (hasWindowManager) {
        sendToRoot({.response_type = XCB_CLIENT_MESSAGE,
                    .format = 32,
                    .sequence = 0,
                    .window = window_,
                    .type = atoms_[X11AtomName::netActiveWindow],
                    .data = {.data32 = {fromPager, time, 0, 0, 0}}});
    } else {
        xcb_set_input_focus(connection_.raw(), XCB_INPUT_FOCUS_POINTER_ROOT, window_, XCB_CURRENT_TIME);
    }
    connection_.flush();
}

void X11RecorderWindow::answerPing(const xcb_client_message_event_t& ping) {
    xcb_client_message_event_t answer = ping;
    answer.response_type = XCB_CLIENT_MESSAGE;
    answer.window = connection_.root();
    sendToRoot(answer);
    connection_.flush();
}

void X11RecorderWindow::sendToRoot(const xcb_client_message_event_t& message) {
    xcb_send_event(connection_.raw(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

void X11RecorderWindow::setBytes(xcb_atom_t property, xcb_atom_t type, std::string_view bytes) {
    xcb_change_property(connection_.raw(), XCB_PROP_MODE_REPLACE, window_, property, type, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

void X11RecorderWindow::setWords(xcb_atom_t property, xcb_atom_t type, std::span<const std::uint32_t> words) {
    xcb_change_property(connection_.raw(), XCB_PROP_MODE_REPLACE, window_, property, type, 32,
                        static_cast<std::uint32_t>(words.size()), words.data());
}

}  // namespace velmorand
