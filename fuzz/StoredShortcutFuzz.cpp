#include "base/JsonValue.h"
#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "shortcuts/KeyboardShortcutCoding.h"
#include "windows/WindowActionCoding.h"

namespace velmorand {
namespace {

/// As the document is when it was written to a file and read again.
JsonValue stored(const JsonValue& document) {
    return JsonValue::parse(document.write()).value();
}

void checkShortcut(const JsonValue& document) {
    const auto shortcut = decodeKeyboardShortcut(document);
    const auto hotKey = decodeHotKey(document);
    if (!shortcut) {
        require(!shortcut.error().description.empty(), "a document that is refused is told why");
        return;
    }
    require(hotKey && *hotKey == shortcut->hotKey, "a shortcut is a hot key with a label");
    require(decodeKeyboardShortcut(stored(encodeKeyboardShortcut(*shortcut))) == shortcut,
            "a shortcut is the same after it was stored");
}

void checkAction(const JsonValue& document) {
    const auto action = decodeWindowAction(document);
    require(!action || decodeWindowAction(stored(encodeWindowAction(*action))) == action,
            "an action is the same after it was stored");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    const auto document = velmorand::JsonValue::parse(input.remainingText());
    if (!document) return 0;
    velmorand::checkShortcut(*document);
    velmorand::checkAction(*document);
    return 0;
}
