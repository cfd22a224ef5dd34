#pragma once

#include "desktop/harness/TestKeyboard.h"
#include "desktop/harness/XConnection.h"

#include <cstdint>
#include <string>

namespace velmorand::desktop {

/// The two mechanisms of X for receiving a key wherever the focus is. They do not see each other.
enum class GrabKind : std::uint8_t { core, inputExtension };

/// Another client that wants keys: it asks the server for one grab at a time and is told of a conflict.
class GrabbingClient {
public:
    /// Stands for every combination of modifiers.
    static constexpr std::uint32_t anyModifier = 0xffffffff;

    /// Throws when the display cannot be had.
    explicit GrabbingClient(const std::string& displayName);

    /// Whether the key with exactly these X modifiers is its own now.
    [[nodiscard]] bool grab(GrabKind kind, Key key, std::uint32_t mask);
    void release(GrabKind kind, Key key, std::uint32_t mask);

    /// Whether nobody else has a grab of either kind on the key, whatever the modifiers.
    [[nodiscard]] bool isFree(Key key);

    /// How many presses it has received since this was asked last.
    [[nodiscard]] int takePresses();

private:
    XConnection connection_;
};

}  // namespace velmorand::desktop
