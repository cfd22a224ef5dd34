#include "desktop/harness/ScreenArea.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace velmorand::desktop {

ScreenArea readScreenArea(XConnection& connection, const PixelRect& rect) {
    const auto image = connection.reply<xcb_get_image_reply_t>(
        xcb_get_image(connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(), static_cast<std::int16_t>(rect.x),
                      static_cast<std::int16_t>(rect.y), static_cast<std::uint16_t>(rect.width),
                      static_cast<std::uint16_t>(rect.height), ~0U));
    ScreenArea area{.rect = rect};
    const std::size_t count = static_cast<std::size_t>(rect.width) * static_cast<std::size_t>(rect.height);
    constexpr std::size_t bytesPerPixel = 4;
    if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) != bytesPerPixel * count)
        return area;
    area.pixels.resize(count);
    std::memcpy(area.pixels.data(), xcb_get_image_data(image.get()), bytesPerPixel * count);
    constexpr std::uint32_t colours = 0xFFFFFF;
    for (std::uint32_t& pixel : area.pixels) pixel &= colours;
    return area;
}

std::optional<PixelRect> changedPart(const ScreenArea& before, const ScreenArea& after) {
    if (before.rect != after.rect || before.pixels.size() != after.pixels.size()) return std::nullopt;
    int left = before.rect.width;
    int right = -1;
    int top = before.rect.height;
    int bottom = -1;
    for (std::size_t place = 0; place < before.pixels.size(); ++place) {
        if (before.pixels[place] == after.pixels[place]) continue;
        const int x = static_cast<int>(place) % before.rect.width;
        const int y = static_cast<int>(place) / before.rect.width;
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    if (right < 0) return std::nullopt;
    return PixelRect{before.rect.x + left, before.rect.y + top, right - left + 1, bottom - top + 1};
}

}  // namespace velmorand::desktop
