#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11KeyTranslator.h"

#include <cstdint>
#include <optional>

namespace velmorand {

/// The keyboard of the X server, by the keyboard extension (XKB). The extension is asked for only when the keyboard is
/// described for the first time: from then on the server tells this connection of another keyboard in the extension's
/// words instead of its old ones, so everybody on it asks here whether an event tells of a change. Main thread only.
class X11Keyboard {
public:
    /// `connection` must outlive it.
    explicit X11Keyboard(X11Connection& connection) : connection_(connection) {}

    X11Keyboard(const X11Keyboard&) = delete;
    X11Keyboard& operator=(const X11Keyboard&) = delete;
    ~X11Keyboard() = default;

    /// What the keys mean now; absent when the server does not answer or has no such extension. Afterwards a key that
    /// is held repeats itself on this connection by presses alone, without releases in between.
    [[nodiscard]] std::optional<X11KeyTranslator> describe(Deadline deadline);

    /// Whether keys or modifiers may mean something else now.
    [[nodiscard]] bool tellsOfChange(const xcb_generic_event_t& event) const;

    /// From now on the server tells when other modifiers are held, whoever has the keyboard, or does so no longer. For
    /// a keyboard that was described.
    void followModifiers(bool follow);
    /// The X modifiers that are held or stick after this event; absent for any other event.
    [[nodiscard]] std::optional<std::uint32_t> heldModifiers(const xcb_generic_event_t& event) const;

private:
    [[nodiscard]] bool reach(Deadline deadline);
    [[nodiscard]] std::optional<X11KeyMap> readKeyMap(Deadline deadline);
    [[nodiscard]] std::optional<std::uint8_t> extensionEvent(const xcb_generic_event_t& event) const;

    X11Connection& connection_;
    std::optional<std::uint8_t> firstEvent_;  // once the server has said that it has the extension
};

}  // namespace velmorand
