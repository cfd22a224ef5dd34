#pragma once

namespace velmorand {

/// A width and a height in points.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

}  // namespace velmorand
