#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/x11/X11KeyTranslator.h"

#include <optional>
#include <string>
#include <vector>

namespace velmorand {
namespace {

void checkCharacters(const std::string& characters) {
    if (characters.empty()) return;
    const auto first = static_cast<unsigned char>(characters.front());
    require(characters.size() <= 6, "a key writes one character");
    require(first >= 0x20 && first != 0x7F, "a key writes no control character");
}

void checkKey(const X11KeyTranslator& translator, std::uint8_t keycode, std::uint32_t state) {
    const auto event = translator.keyDown(keycode, state);
    if (!event) return;
    require(event->keyCode <= 127, "a key is told by a virtual key code");
    require(event->modifierFlags == translator.modifierFlags(state), "a key has the modifiers of its event");
    checkCharacters(event->charactersIgnoringModifiers);
    const auto shifted = translator.keyDown(keycode, state ^ 0xFFU);
    require(shifted && shifted->charactersIgnoringModifiers == event->charactersIgnoringModifiers,
            "what a key writes does not depend on the modifiers");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    const auto firstKeycode = input.number<std::uint8_t>();
    const auto keyCount = input.between<std::size_t>(0, 255);
    const auto state = input.number<std::uint32_t>();
    const std::vector<std::uint8_t> records = input.remainingBytes();
    const auto map = velmorand::decodeKeyMap(records, firstKeycode, keyCount);
    if (!map) return 0;
    velmorand::require(map->keys.size() == keyCount, "every key is there");
    const velmorand::X11KeyTranslator translator{.keys = *map, .modifiers = {.alt = 8, .super = 64}};
    for (unsigned int keycode = 0; keycode < 256; ++keycode)
        velmorand::checkKey(translator, static_cast<std::uint8_t>(keycode), state);
    return 0;
}
