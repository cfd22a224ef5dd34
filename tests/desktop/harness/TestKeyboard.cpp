#include "desktop/harness/TestKeyboard.h"

#include <fmt/format.h>
#include <xcb/xtest.h>

#include <array>
#include <ranges>
#include <stdexcept>
#include <utility>

namespace velmorand::desktop {

namespace {

void send(XConnection& connection, std::uint8_t event, Key key) {
    xcb_test_fake_input(connection.raw(), event, static_cast<std::uint8_t>(key), XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0,
                        0, 0);
}

struct KeyRow {
    std::uint8_t first;
    std::string_view characters;
};

/// The keyboard by its rows, whose keys count up from the left.
constexpr std::array<KeyRow, 5> keyRows{
    {{10, "1234567890-"}, {24, "qwertyuiop"}, {38, "asdfghjkl"}, {52, "zxcvbnm,./"}, {65, " "}}};

Key keyOf(char character) {
    for (const KeyRow& row : keyRows) {
        const auto place = row.characters.find(character);
        if (place != std::string_view::npos) return static_cast<Key>(row.first + place);
    }
    throw std::invalid_argument(fmt::format("no key for '{}'", character));
}

}  // namespace

HeldKey::HeldKey(XConnection& connection, std::vector<Key> keys) : connection_(connection), keys_(std::move(keys)) {
    for (const Key key : keys_) send(connection_, XCB_KEY_PRESS, key);
    connection_.synchronise();
}

HeldKey::HeldKey(HeldKey&& other) noexcept : connection_(other.connection_), keys_(std::exchange(other.keys_, {})) {}

HeldKey::~HeldKey() {
    for (const Key key : std::views::reverse(keys_)) send(connection_, XCB_KEY_RELEASE, key);
    connection_.synchronise();
}

std::expected<TestKeyboard, HarnessError> TestKeyboard::attach(XObserver& observer) {
    auto& connection = observer.connection();
    if (!connection.reply<xcb_test_get_version_reply_t>(xcb_test_get_version(connection.raw(), 2, 2))) {
        return std::unexpected(HarnessError{"the X server has no XTEST"});
    }
    return TestKeyboard(observer);
}

void TestKeyboard::press(std::span<const Key> modifiers, Key key) {
    std::vector<Key> keys(modifiers.begin(), modifiers.end());
    keys.push_back(key);
    const HeldKey pressed(observer_.connection(), std::move(keys));
}

void TestKeyboard::type(std::string_view text) {
    for (const char character : text) press(keyOf(character));
}

HeldKey TestKeyboard::hold(std::initializer_list<Key> modifiers, Key key) {
    std::vector<Key> keys(modifiers);
    keys.push_back(key);
    return {observer_.connection(), std::move(keys)};
}

std::uint16_t TestKeyboard::activeModifiers() {
    auto& connection = observer_.connection();
    const auto answer =
        connection.reply<xcb_query_pointer_reply_t>(xcb_query_pointer(connection.raw(), connection.root()));
    constexpr std::uint16_t allModifiers = 0xff;
    return answer ? static_cast<std::uint16_t>(answer->mask & allModifiers) : std::uint16_t{0};
}

std::expected<void, HarnessError> TestKeyboard::setLock(Key key, std::uint16_t mask, bool isOn) {
    const auto isAsWanted = [&] { return ((activeModifiers() & mask) != 0) == isOn; };
    if (isAsWanted()) return {};
    press(key);
    if (observer_.waitUntil(isAsWanted)) return {};
    return std::unexpected(HarnessError{
        fmt::format("the lock of key {} did not change; modifiers {:#x}", static_cast<int>(key), activeModifiers())});
}

}  // namespace velmorand::desktop
