#include "platform/linux/x11/X11KeyMap.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace velmorand {
namespace {

// Of the keyboard extension's protocol: the parts of a key's group info, and the size of its fixed part, which is four
// types, the group info, the number of levels and the number of keysyms.
constexpr unsigned int groupCountMask = 0x0F;
constexpr unsigned int clampGroup = 0x40;
constexpr unsigned int redirectGroup = 0x80;
constexpr std::size_t recordSize = 8;
constexpr std::size_t groupInfoOffset = 4;
constexpr std::size_t levelsOffset = 5;
constexpr std::size_t keysymCountOffset = 6;

/// Which of a key's groups stands for one that may be beyond them.
std::uint32_t groupOfKey(const X11Key& key, std::uint32_t group) {
    const std::uint32_t count = key.groupInfo & groupCountMask;
    if (count == 0 || group < count) return group;
    if ((key.groupInfo & redirectGroup) != 0) {
        const std::uint32_t target = (key.groupInfo >> 4U) & 3U;
        return target < count ? target : 0;
    }
    if ((key.groupInfo & clampGroup) != 0) return count - 1;
    return group % count;
}

bool isWithin(std::uint32_t keysym, std::uint32_t first, std::uint32_t last) {
    return keysym >= first && keysym <= last;
}

bool isControlCharacter(std::string_view text) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char del = 0x7F;
    const auto first = static_cast<unsigned char>(text.front());
    // The second block of control characters is C2 80 to C2 9F.
    const bool isOfSecondBlock = first == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0;
    return first < firstPrintable || first == del || isOfSecondBlock;
}

}  // namespace

std::uint32_t X11KeyMap::keysym(std::uint8_t keycode, std::uint32_t group, std::size_t level) const {
    if (keycode < firstKeycode) return XKB_KEY_NoSymbol;
    const std::size_t index = static_cast<std::size_t>(keycode) - firstKeycode;
    if (index >= keys.size()) return XKB_KEY_NoSymbol;
    const X11Key& key = keys[index];
    const std::size_t position = static_cast<std::size_t>(groupOfKey(key, group)) * key.levels + level;
    return level < key.levels && position < key.keysyms.size() ? key.keysyms[position] : XKB_KEY_NoSymbol;
}

bool X11KeyMap::isModifierKey(std::uint8_t keycode, std::uint32_t group) const {
    const std::uint32_t plain = keysym(keycode, group, 0);
    return isWithin(plain, XKB_KEY_Shift_L, XKB_KEY_Hyper_R) ||
           isWithin(plain, XKB_KEY_ISO_Lock, XKB_KEY_ISO_Level5_Lock) || plain == XKB_KEY_Mode_switch ||
           plain == XKB_KEY_Num_Lock || plain == XKB_KEY_Scroll_Lock;
}

bool X11KeyMap::isEscape(std::uint8_t keycode, std::uint32_t group) const {
    return keysym(keycode, group, 0) == XKB_KEY_Escape;
}

std::string X11KeyMap::characters(std::uint8_t keycode, std::uint32_t group) const {
    std::uint32_t written = keysym(keycode, group, 0);
    if (isWithin(written, XKB_KEY_KP_Home, XKB_KEY_KP_Delete)) written = keysym(keycode, group, 1);
    std::array<char, 8> buffer{};
    const int size = xkb_keysym_to_utf8(written, buffer.data(), buffer.size());
    if (size <= 1) return {};  // the size counts the end
    std::string text(buffer.data(), static_cast<std::size_t>(size) - 1);
    return text.empty() || isControlCharacter(text) ? std::string() : text;
}

std::optional<X11KeyMap> decodeKeyMap(std::span<const std::uint8_t> records, std::uint8_t firstKeycode,
                                      std::size_t keyCount) {
    X11KeyMap map{.firstKeycode = firstKeycode, .keys = {}};
    for (std::size_t i = 0; i < keyCount; ++i) {
        if (records.size() < recordSize) return std::nullopt;
        X11Key key{.groupInfo = records[groupInfoOffset], .levels = records[levelsOffset], .keysyms = {}};
        std::uint16_t keysymCount = 0;
        std::memcpy(&keysymCount, records.data() + keysymCountOffset, sizeof keysymCount);
        records = records.subspan(recordSize);
        const std::size_t size = keysymCount * sizeof(std::uint32_t);
        if (records.size() < size) return std::nullopt;
        key.keysyms.resize(keysymCount);
        if (size > 0) std::memcpy(key.keysyms.data(), records.data(), size);
        records = records.subspan(size);
        map.keys.push_back(std::move(key));
    }
    return map;
}

}  // namespace velmorand
