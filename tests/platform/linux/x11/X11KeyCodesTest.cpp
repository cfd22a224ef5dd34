#include "platform/linux/x11/X11KeyCodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <limits>
#include <set>
#include <string>

namespace velmorand {
namespace {

/// One physical key: its virtual key code, its name in the W3C's "UI Events KeyboardEvent code Values", and the kernel's
/// number of the same position. X keycodes of the evdev keyboard model are the kernel's numbers plus 8.
struct KeyRow {
    std::uint32_t virtualKeyCode;
    const char* name;
    std::uint32_t kernelKey;
};

constexpr auto keyRows = std::to_array<KeyRow>({
    {0, "KeyA", KEY_A},
    {1, "KeyS", KEY_S},
    {2, "KeyD", KEY_D},
    {3, "KeyF", KEY_F},
    {4, "KeyH", KEY_H},
    {5, "KeyG", KEY_G},
    {6, "KeyZ", KEY_Z},
    {7, "KeyX", KEY_X},
    {8, "KeyC", KEY_C},
    {9, "KeyV", KEY_V},
    {10, "IntlBackslash", KEY_102ND},
    {11, "KeyB", KEY_B},
    {12, "KeyQ", KEY_Q},
    {13, "KeyW", KEY_W},
    {14, "KeyE", KEY_E},
    {15, "KeyR", KEY_R},
    {16, "KeyY", KEY_Y},
    {17, "KeyT", KEY_T},
    {18, "Digit1", KEY_1},
    {19, "Digit2", KEY_2},
    {20, "Digit3", KEY_3},
    {21, "Digit4", KEY_4},
    {22, "Digit6", KEY_6},
    {23, "Digit5", KEY_5},
    {24, "Equal", KEY_EQUAL},
    {25, "Digit9", KEY_9},
    {26, "Digit7", KEY_7},
    {27, "Minus", KEY_MINUS},
    {28, "Digit8", KEY_8},
    {29, "Digit0", KEY_0},
    {30, "BracketRight", KEY_RIGHTBRACE},
    {31, "KeyO", KEY_O},
    {32, "KeyU", KEY_U},
    {33, "BracketLeft", KEY_LEFTBRACE},
    {34, "KeyI", KEY_I},
    {35, "KeyP", KEY_P},
    {36, "Enter", KEY_ENTER},
    {37, "KeyL", KEY_L},
    {38, "KeyJ", KEY_J},
    {39, "Quote", KEY_APOSTROPHE},
    {40, "KeyK", KEY_K},
    {41, "Semicolon", KEY_SEMICOLON},
    {42, "Backslash", KEY_BACKSLASH},
    {43, "Comma", KEY_COMMA},
    {44, "Slash", KEY_SLASH},
    {45, "KeyN", KEY_N},
    {46, "KeyM", KEY_M},
    {47, "Period", KEY_DOT},
    {48, "Tab", KEY_TAB},
    {49, "Space", KEY_SPACE},
    {50, "Backquote", KEY_GRAVE},
    {51, "Backspace", KEY_BACKSPACE},
    {53, "Escape", KEY_ESC},
    {54, "MetaRight", KEY_RIGHTMETA},
    {55, "MetaLeft", KEY_LEFTMETA},
    {56, "ShiftLeft", KEY_LEFTSHIFT},
    {57, "CapsLock", KEY_CAPSLOCK},
    {58, "AltLeft", KEY_LEFTALT},
    {59, "ControlLeft", KEY_LEFTCTRL},
    {60, "ShiftRight", KEY_RIGHTSHIFT},
    {61, "AltRight", KEY_RIGHTALT},
    {62, "ControlRight", KEY_RIGHTCTRL},
    {64, "F17", KEY_F17},
    {65, "NumpadDecimal", KEY_KPDOT},
    {67, "NumpadMultiply", KEY_KPASTERISK},
    {69, "NumpadAdd", KEY_KPPLUS},
    {71, "NumLock", KEY_NUMLOCK},
    {72, "AudioVolumeUp", KEY_VOLUMEUP},
    {73, "AudioVolumeDown", KEY_VOLUMEDOWN},
    {74, "AudioVolumeMute", KEY_MUTE},
    {75, "NumpadDivide", KEY_KPSLASH},
    {76, "NumpadEnter", KEY_KPENTER},
    {78, "NumpadSubtract", KEY_KPMINUS},
    {79, "F18", KEY_F18},
    {80, "F19", KEY_F19},
    {81, "NumpadEqual", KEY_KPEQUAL},
    {82, "Numpad0", KEY_KP0},
    {83, "Numpad1", KEY_KP1},
    {84, "Numpad2", KEY_KP2},
    {85, "Numpad3", KEY_KP3},
    {86, "Numpad4", KEY_KP4},
    {87, "Numpad5", KEY_KP5},
    {88, "Numpad6", KEY_KP6},
    {89, "Numpad7", KEY_KP7},
    {90, "F20", KEY_F20},
    {91, "Numpad8", KEY_KP8},
    {92, "Numpad9", KEY_KP9},
    {93, "IntlYen", KEY_YEN},
    {94, "IntlRo", KEY_RO},
    {95, "NumpadComma", KEY_KPCOMMA},
    {96, "F5", KEY_F5},
    {97, "F6", KEY_F6},
    {98, "F7", KEY_F7},
    {99, "F3", KEY_F3},
    {100, "F8", KEY_F8},
    {101, "F9", KEY_F9},
    {102, "Lang2", KEY_HANJA},
    {103, "F11", KEY_F11},
    {104, "Lang1", KEY_HANGEUL},
    {105, "F13", KEY_F13},
    {106, "F16", KEY_F16},
    {107, "F14", KEY_F14},
    {109, "F10", KEY_F10},
    {110, "ContextMenu", KEY_COMPOSE},
    {111, "F12", KEY_F12},
    {113, "F15", KEY_F15},
    {114, "Insert", KEY_INSERT},
    {115, "Home", KEY_HOME},
    {116, "PageUp", KEY_PAGEUP},
    {117, "Delete", KEY_DELETE},
    {118, "F4", KEY_F4},
    {119, "End", KEY_END},
    {120, "F2", KEY_F2},
    {121, "PageDown", KEY_PAGEDOWN},
    {122, "F1", KEY_F1},
    {123, "ArrowLeft", KEY_LEFT},
    {124, "ArrowRight", KEY_RIGHT},
    {125, "ArrowDown", KEY_DOWN},
    {126, "ArrowUp", KEY_UP},
});

class X11KeyCodesTest : public testing::TestWithParam<KeyRow> {};

TEST_P(X11KeyCodesTest, MeanTheSamePhysicalKey) {
    EXPECT_EQ(xKeycodeFor(GetParam().virtualKeyCode), GetParam().kernelKey + 8);
}

INSTANTIATE_TEST_SUITE_P(Table, X11KeyCodesTest, testing::ValuesIn(keyRows),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(X11KeyCodeTableTest, HasNoRowsBesides) {
    EXPECT_EQ(x11KeyCodes.size(), keyRows.size());
}

TEST(X11KeyCodeTableTest, NamesEachKeyOnce) {
    std::set<std::uint32_t> virtualKeyCodes;
    std::set<std::uint32_t> xKeycodes;
    for (const X11KeyCodeRow& row : x11KeyCodes) {
        virtualKeyCodes.insert(row.virtualKeyCode);
        xKeycodes.insert(row.xKeycode);
    }

    EXPECT_EQ(virtualKeyCodes.size(), x11KeyCodes.size());
    EXPECT_EQ(xKeycodes.size(), x11KeyCodes.size());
}

TEST(X11KeyCodeTableTest, HoldsOnlyKeycodesThatXCanHave) {
    EXPECT_TRUE(std::ranges::all_of(x11KeyCodes, [](const X11KeyCodeRow& row) { return row.xKeycode >= 8; }));
}

class X11MissingKeyCodesTest : public testing::TestWithParam<std::uint32_t> {};

TEST_P(X11MissingKeyCodesTest, HaveNoXKeycode) {
    EXPECT_EQ(xKeycodeFor(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Table, X11MissingKeyCodesTest,
                         testing::Values(52U, 63U, 66U, 68U, 70U, 77U, 108U, 112U, 127U, 128U, 256U, 0x10000U,
                                         std::numeric_limits<std::uint32_t>::max()));

TEST(X11KeyCodeTableTest, IsReadBothWays) {
    for (const X11KeyCodeRow& row : x11KeyCodes) EXPECT_EQ(virtualKeyCodeFor(row.xKeycode), row.virtualKeyCode);
    EXPECT_EQ(virtualKeyCodeFor(0), std::nullopt);
    EXPECT_EQ(virtualKeyCodeFor(255), std::nullopt);
}

}  // namespace
}  // namespace velmorand
