#pragma once

#include "desktop/harness/XConnection.h"

#include <cstdint>

namespace velmorand::desktop {

enum class PointerButton : std::uint8_t { left = 1, middle = 2, right = 3 };

/// Moves and clicks as a mouse of the X server would. All positions are in root coordinates.
class TestPointer {
public:
    /// \p connection must outlive the pointer, and its server must have the extension for tests.
    explicit TestPointer(XConnection& connection) : connection_(connection) {}

    /// These return when the server has processed all of it.
    void moveTo(int x, int y);
    void click(PointerButton button);
    void press(PointerButton button);
    void release(PointerButton button);

private:
    void send(std::uint8_t event, std::uint8_t detail, int x, int y);

    XConnection& connection_;
};

}  // namespace velmorand::desktop
