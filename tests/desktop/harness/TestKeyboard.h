#pragma once

#include "desktop/harness/XObserver.h"

#include <initializer_list>
#include <span>
#include <string_view>

namespace velmorand::desktop {

/// Keys of a keyboard by their place on a US layout; the values are X keycodes.
enum class Key : std::uint8_t {
    escape = 9,
    digit1 = 10,
    digit2 = 11,
    digit3 = 12,
    digit4 = 13,
    digit5 = 14,
    digit6 = 15,
    digit7 = 16,
    digit8 = 17,
    digit9 = 18,
    digit0 = 19,
    minus = 20,
    backspace = 22,
    tab = 23,
    q = 24,
    w = 25,
    e = 26,
    r = 27,
    t = 28,
    y = 29,
    u = 30,
    i = 31,
    o = 32,
    p = 33,
    leftBracket = 34,
    rightBracket = 35,
    enter = 36,
    leftControl = 37,
    a = 38,
    s = 39,
    d = 40,
    f = 41,
    g = 42,
    h = 43,
    j = 44,
    k = 45,
    l = 46,
    leftShift = 50,
    z = 52,
    x = 53,
    c = 54,
    v = 55,
    b = 56,
    n = 57,
    m = 58,
    period = 60,
    slash = 61,
    leftAlt = 64,
    space = 65,
    capsLock = 66,
    f1 = 67,
    f2 = 68,
    f3 = 69,
    f4 = 70,
    f5 = 71,
    f6 = 72,
    f7 = 73,
    f8 = 74,
    f9 = 75,
    f10 = 76,
    numLock = 77,
    scrollLock = 78,
    f11 = 95,
    f12 = 96,
    rightAlt = 108,
    home = 110,
    up = 111,
    pageUp = 112,
    left = 113,
    right = 114,
    end = 115,
    down = 116,
    pageDown = 117,
    leftSuper = 133,
    rightSuper = 134,
    menu = 135,
};

/// A key that stays down, and repeats, until this object dies.
class HeldKey {
public:
    HeldKey(XConnection& connection, std::vector<Key> keys);
    HeldKey(HeldKey&& other) noexcept;
    HeldKey& operator=(HeldKey&&) = delete;
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;
    ~HeldKey();

private:
    XConnection& connection_;
    std::vector<Key> keys_;
};

/// Presses keys as a keyboard of the X server would, so that grabs, repeats and locks work as they do for a user.
class TestKeyboard {
public:
    /// \p observer must outlive the keyboard. Fails without the server's extension for tests.
    [[nodiscard]] static std::expected<TestKeyboard, HarnessError> attach(XObserver& observer);

    /// Presses \p modifiers in order, presses and releases \p key, and releases the modifiers in reverse order. Returns
    /// when the server has processed all of it.
    void press(std::span<const Key> modifiers, Key key);
    void press(std::initializer_list<Key> modifiers, Key key) {
        press(std::span<const Key>(modifiers.begin(), modifiers.size()), key);
    }
    void press(Key key) { press({}, key); }
    /// Presses the keys on which a US layout has these characters: small letters, digits, spaces and "-./".
    void type(std::string_view text);

    /// The same without the releases, which come with the end of the returned object.
    [[nodiscard]] HeldKey hold(std::initializer_list<Key> modifiers, Key key);

    /// Presses the lock key if the server's state is not yet the wanted one; fails when it does not become so.
    std::expected<void, HarnessError> setNumLock(bool isOn) { return setLock(Key::numLock, XCB_MOD_MASK_2, isOn); }
    std::expected<void, HarnessError> setCapsLock(bool isOn) { return setLock(Key::capsLock, XCB_MOD_MASK_LOCK, isOn); }
    /// The same for the lock key that sets the modifier \p mask.
    std::expected<void, HarnessError> setLock(Key key, std::uint16_t mask, bool isOn);
    /// The modifiers and locks that the server holds active at the moment.
    [[nodiscard]] std::uint16_t activeModifiers();

private:
    explicit TestKeyboard(XObserver& observer) : observer_(observer) {}

    XObserver& observer_;
};

}  // namespace velmorand::desktop
