#include "desktop/x11/X11HotKeyTest.h"

#include <algorithm>
#include <utility>

namespace velmorand::desktop {

X11HotKeyTest::~X11HotKeyTest() = default;

void X11HotKeyTest::start(WindowManagerKind windowManager) {
    open({.windowManager = {.kind = windowManager}});
    client_ = std::make_unique<HotKeyClient>(runLoop);
    ASSERT_EQ(client_->install(), noError);
    auto keyboard = TestKeyboard::attach(observer());
    ASSERT_TRUE(keyboard) << keyboard.error().message;
    keyboard_.emplace(*keyboard);
}

void X11HotKeyTest::catchUp() {
    client_->handleEverythingSent();
    runPosted();
    client_->handleEverythingSent();
}

std::vector<std::uint32_t> X11HotKeyTest::pressedIDs(const std::vector<Combination>& combinations) {
    for (const auto& [modifierKeys, key] : combinations) keyboard().press(modifierKeys, key);
    catchUp();
    return client_->takePressed();
}

void X11HotKeyTest::changeKeysOfModifier(xcb_map_index_t index, const std::vector<Key>& keys) {
    XConnection& connection = observer().connection();
    const auto now = connection.reply<xcb_get_modifier_mapping_reply_t>(xcb_get_modifier_mapping(connection.raw()));
    ASSERT_NE(now, nullptr);
    const std::size_t width = now->keycodes_per_modifier;
    ASSERT_LE(keys.size(), width);
    xcb_keycode_t* row = xcb_get_modifier_mapping_keycodes(now.get()) + static_cast<std::size_t>(index) * width;
    std::fill_n(row, width, xcb_keycode_t{0});
    std::ranges::transform(keys, row, [](Key key) { return std::to_underlying(key); });
    const auto changed = connection.reply<xcb_set_modifier_mapping_reply_t>(xcb_set_modifier_mapping(
        connection.raw(), now->keycodes_per_modifier, xcb_get_modifier_mapping_keycodes(now.get())));
    ASSERT_NE(changed, nullptr);
    ASSERT_EQ(changed->status, XCB_MAPPING_STATUS_SUCCESS);
}

void X11HotKeyTest::setKeysOfModifier(xcb_map_index_t index, const std::vector<Key>& keys) {
    changeKeysOfModifier(index, keys);
    catchUp();
}

void X11HotKeyTest::setLayout(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"setxkbmap", "-rules", "evdev", "-model", "pc105"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    auto process = desktop().start(command);
    ASSERT_TRUE(process) << process.error().message;
    const auto status = process->wait(std::chrono::milliseconds(patience));
    ASSERT_TRUE(status && status->isSuccess()) << process->logTail();
    catchUp();
}

}  // namespace velmorand::desktop
