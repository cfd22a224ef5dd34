#pragma once

#include "desktop/x11/GrabbingClient.h"
#include "desktop/x11/HotKeyClient.h"
#include "desktop/x11/X11Test.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace velmorand::desktop {

/// A combination as a user presses it.
struct Combination {
    std::vector<Key> modifierKeys;
    Key key;
};

/// Hot keys on an X server of their own, which for most tests needs no window manager.
class X11HotKeyTest : public X11Test {
protected:
    ~X11HotKeyTest() override;

    /// Opens the desktop and a program with a handler.
    void start(WindowManagerKind windowManager = WindowManagerKind::none);

    [[nodiscard]] HotKeyClient& client() { return *client_; }
    /// Also ends its connection.
    void endClient() { client_.reset(); }
    [[nodiscard]] TestKeyboard& keyboard() { return *keyboard_; }
    [[nodiscard]] GrabbingClient otherClient() { return GrabbingClient(desktop().displayName()); }

    /// Lets the client hear everything that has happened, and do what follows from it.
    void catchUp();
    /// Presses and releases the combinations in order; answers the ids that the client was told.
    [[nodiscard]] std::vector<std::uint32_t> pressedIDs(const std::vector<Combination>& combinations);

    /// Puts these keys on the X modifier instead of those that are there.
    void changeKeysOfModifier(xcb_map_index_t index, const std::vector<Key>& keys);
    /// The same, and the client has followed when this returns.
    void setKeysOfModifier(xcb_map_index_t index, const std::vector<Key>& keys);
    /// Sets up the keyboard as the user's session would, with these arguments of `setxkbmap`. The client knows when
    /// this returns.
    void setLayout(const std::vector<std::string>& arguments);

private:
    std::unique_ptr<HotKeyClient> client_;
    std::optional<TestKeyboard> keyboard_;
};

}  // namespace velmorand::desktop
