#pragma once

namespace velmorand {

/// A position, or a vector between two positions, in points. The coordinate space is the user's: unless a
/// declaration says otherwise it is the accessibility space (origin at the top-left corner of the primary
/// display, y growing downward).
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

}  // namespace velmorand
