#pragma once

#include "platform/RecorderPanelHost.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace velmorand {

/// What a recorder panel looks like: rows of pixels, each 0xRRGGBB, from the top left.
struct RecorderPicture {
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::vector<std::uint32_t> pixels;
};

/// Makes the picture of a panel with this content.
using RecorderPainter = std::function<RecorderPicture(const RecorderPanelContent&)>;

/// Draws the panel; longer texts are wrapped and make it higher, up to a limit beyond which they are cut. `scale` is how
/// many pixels a point has. The toolkit's application object must exist.
[[nodiscard]] RecorderPicture drawRecorderPanel(const RecorderPanelContent& content, double scale);

}  // namespace velmorand
