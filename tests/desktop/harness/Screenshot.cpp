#include "desktop/harness/Screenshot.h"

#include "desktop/harness/Deadline.h"

#include <fmt/format.h>

#include <QImage>
#include <QString>
#include <chrono>
#include <cstddef>
#include <utility>

namespace velmorand::desktop {

namespace {

/// A picture that did not change for this long is complete.
constexpr std::chrono::milliseconds drawingPause{120};
constexpr std::chrono::milliseconds longestDrawing{3000};

/// The root window with everything on it; null when the server does not give it in 32 bits per pixel.
QImage readScreen(XConnection& connection) {
    const auto geometry =
        connection.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(connection.raw(), connection.root()));
    if (!geometry) return {};
    const auto pixels = connection.reply<xcb_get_image_reply_t>(xcb_get_image(
        connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(), 0, 0, geometry->width, geometry->height, ~0U));
    constexpr std::size_t bytesPerPixel = 4;
    const std::size_t bytesPerRow = bytesPerPixel * geometry->width;
    const auto length = pixels ? static_cast<std::size_t>(xcb_get_image_data_length(pixels.get())) : 0;
    if (length < bytesPerRow * geometry->height) return {};
    const QImage view(xcb_get_image_data(pixels.get()), geometry->width, geometry->height,
                      static_cast<qsizetype>(bytesPerRow), QImage::Format_RGB32);
    return view.copy();
}

void letDraw(XConnection& connection) {
    const Deadline pause(drawingPause);
    while (!pause.passed() && connection.isAlive()) connection.waitForEvent(pause.remaining());
}

struct Colour {
    int red;
    int green;
    int blue;
};

constexpr Colour skyTop{0x2b, 0x4a, 0x6f};
constexpr Colour skyBottom{0x7f, 0xa3, 0xb5};

std::uint32_t blended(const Colour& from, const Colour& to, int step, int steps) {
    const auto mix = [&](int a, int b) { return static_cast<std::uint32_t>(a + (b - a) * step / steps); };
    return mix(from.red, to.red) << 16U | mix(from.green, to.green) << 8U | mix(from.blue, to.blue);
}

/// Fills \p area of \p pixmap from top to bottom.
void drawGradient(XConnection& connection, xcb_pixmap_t pixmap, xcb_gcontext_t context, const PixelRect& area) {
    for (int row = 0; row < area.height; ++row) {
        const std::uint32_t colour = blended(skyTop, skyBottom, row, area.height);
        const xcb_rectangle_t line{static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y + row),
                                   static_cast<std::uint16_t>(area.width), 1};
        xcb_change_gc(connection.raw(), context, XCB_GC_FOREGROUND, &colour);
        xcb_poly_fill_rectangle(connection.raw(), pixmap, context, 1, &line);
    }
}

/// A pixmap as large as the root window, black; it belongs to the connection.
xcb_pixmap_t blackPixmap(XConnection& connection, xcb_gcontext_t context) {
    const auto geometry =
        connection.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(connection.raw(), connection.root()));
    if (!geometry) return XCB_PIXMAP_NONE;
    const xcb_pixmap_t pixmap = xcb_generate_id(connection.raw());
    xcb_create_pixmap(connection.raw(), geometry->depth, pixmap, connection.root(), geometry->width, geometry->height);
    const xcb_rectangle_t everything{0, 0, geometry->width, geometry->height};
    const std::uint32_t black = 0;
    xcb_change_gc(connection.raw(), context, XCB_GC_FOREGROUND, &black);
    xcb_poly_fill_rectangle(connection.raw(), pixmap, context, 1, &everything);
    return pixmap;
}

}  // namespace

std::expected<void, HarnessError> saveScreenshot(XConnection& connection, const std::filesystem::path& file) {
    auto picture = readScreen(connection);
    // Programs draw after their windows have changed; the picture is of what stays.
    const Deadline deadline(longestDrawing);
    while (!deadline.passed()) {
        letDraw(connection);
        auto next = readScreen(connection);
        if (next == picture) break;
        picture = std::move(next);
    }
    if (picture.isNull()) return std::unexpected(HarnessError{"no screenshot: the X server gives no usable picture"});
    if (!picture.save(QString::fromStdString(file.string()), "PNG")) {
        return std::unexpected(HarnessError{fmt::format("cannot write {}", file.string())});
    }
    return {};
}

void paintBackground(XConnection& connection, std::span<const PixelRect> displays) {
    auto* raw = connection.raw();
    const xcb_gcontext_t context = xcb_generate_id(raw);
    xcb_create_gc(raw, context, connection.root(), 0, nullptr);
    const xcb_pixmap_t pixmap = blackPixmap(connection, context);
    for (const auto& display : displays) drawGradient(connection, pixmap, context, display);
    xcb_free_gc(raw, context);
    xcb_change_window_attributes(raw, connection.root(), XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(raw, 0, connection.root(), 0, 0, 0, 0);
    // Compositing managers paint the background themselves, from the pixmap that this property names.
    for (const auto* name : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"}) {
        xcb_change_property(raw, XCB_PROP_MODE_REPLACE, connection.root(), connection.atom(name), XCB_ATOM_PIXMAP, 32,
                            1, &pixmap);
    }
    connection.synchronise();
}

}  // namespace velmorand::desktop
