#include "base/UnicodeText.h"
#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/x11/X11Property.h"

#include <xcb/xproto.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {
namespace {

constexpr std::size_t longestClassPart = 256;
constexpr std::array textTypes{std::uint32_t{XCB_ATOM_STRING}};

/// How many bytes the character has that the text begins with, from the table of well-formed sequences of the Unicode
/// Standard (chapter 3.9); 0 when there is none.
std::size_t lengthOfFirst(std::string_view text) {
    struct Row {
        unsigned char first, last, secondFirst, secondLast;
        std::size_t length;
    };
    constexpr std::array<Row, 9> rows{{{0x00, 0x7F, 0, 0, 1},
                                       {0xC2, 0xDF, 0x80, 0xBF, 2},
                                       {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                       {0xE1, 0xEC, 0x80, 0xBF, 3},
                                       {0xED, 0xED, 0x80, 0x9F, 3},
                                       {0xEE, 0xEF, 0x80, 0xBF, 3},
                                       {0xF0, 0xF0, 0x90, 0xBF, 4},
                                       {0xF1, 0xF3, 0x80, 0xBF, 4},
                                       {0xF4, 0xF4, 0x80, 0x8F, 4}}};
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    for (const Row& row : rows) {
        if (byte(0) < row.first || byte(0) > row.last) continue;
        if (text.size() < row.length) return 0;
        if (row.length > 1 && (byte(1) < row.secondFirst || byte(1) > row.secondLast)) return 0;
        for (std::size_t i = 2; i < row.length; ++i) {
            if (byte(i) < 0x80 || byte(i) > 0xBF) return 0;
        }
        return row.length;
    }
    return 0;
}

bool isPlainText(std::string_view text) {
    for (std::size_t length = 0; !text.empty(); text.remove_prefix(length)) {
        length = lengthOfFirst(text);
        if (length == 0) return false;
        const auto first = static_cast<unsigned char>(text[0]);
        if (first < 0x20 || first == 0x7F) return false;
        if (first == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0) return false;
    }
    return true;
}

std::optional<std::string> identifierIn(std::string_view text, std::size_t longest) {
    const std::string_view part = text.substr(0, text.find('\0'));
    const bool isUsable = !part.empty() && part.size() <= longest && isPlainText(part);
    return isUsable ? std::optional(std::string(part)) : std::nullopt;
}

std::string_view textOf(const X11PropertyValue& property) {
    return {reinterpret_cast<const char*>(property.data.data()), property.data.size()};
}

void checkIdentifier(const X11PropertyValue& property, std::size_t longest) {
    const bool isText = property.type == XCB_ATOM_STRING && property.format == 8;
    require(decodeIdentifier(property, textTypes, longest) ==
                (isText ? identifierIn(textOf(property), longest) : std::nullopt),
            "an identifier is the usable text before the first NUL");
    require(isIdentifier(textOf(property), longest) ==
                (!property.data.empty() && property.data.size() <= longest && isPlainText(textOf(property))),
            "an identifier is plain text of some length");
}

void checkWindowClass(const X11PropertyValue& property) {
    const X11WindowClass windowClass = decodeWindowClass(property, XCB_ATOM_STRING);
    X11WindowClass expected;
    if (property.type == XCB_ATOM_STRING && property.format == 8) {
        const std::string_view text = textOf(property);
        const std::size_t end = text.find('\0');
        const bool hasClass = end != std::string_view::npos && end + 1 < text.size();
        expected.instance = identifierIn(text, longestClassPart);
        expected.className = hasClass ? identifierIn(text.substr(end + 1), longestClassPart) : expected.instance;
    }
    require(windowClass.instance == expected.instance, "the instance name is the first part");
    require(windowClass.className == expected.className, "the class name is the second part, or the only one");
}

void checkCases(const std::string& text) {
    require(isValidUtf8(lowerCased(text)), "lower-cased text is valid whatever came in");
    require(isValidUtf8(upperCased(text)), "upper-cased text is valid whatever came in");
    require(firstCharacter(text).empty() == text.empty(), "only empty text has no first character");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    const auto longest = input.between<std::size_t>(0, 300);
    velmorand::checkIdentifier(input.property(XCB_ATOM_STRING, 8), longest);
    velmorand::checkWindowClass(input.property(XCB_ATOM_STRING, 8));
    velmorand::checkCases(input.remainingText());
    return 0;
}
