#pragma once

#include "platform/AXElement.h"

#include <cstddef>
#include <functional>

namespace velmorand {

/// The identity of one window. Keys made from separately obtained references to the same window are equal.
struct WindowKey {
    AXElement element;

    bool operator==(const WindowKey&) const = default;
};

/// Carries an element inside values that are kept for later.
struct UnsafeAXElementWrapper {
    AXElement element;
};

}  // namespace velmorand

template <>
struct std::hash<velmorand::WindowKey> {
    std::size_t operator()(const velmorand::WindowKey& key) const noexcept { return key.element.hash(); }
};
