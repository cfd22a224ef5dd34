#include "base/UnicodeText.h"
#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/DesktopEntries.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {
namespace {

const std::vector<std::string> locales{"de_AT", "de"};

std::optional<DesktopEntry> parsed(std::string_view text) {
    return parseDesktopEntry("org.example.Editor", text, locales);
}

bool isAbsentOrOneLine(const std::optional<std::string>& value) {
    constexpr std::string_view blanks = " \t\r";
    return !value || (!value->empty() && value->find('\n') == std::string::npos &&
                      blanks.find(value->front()) == std::string_view::npos &&
                      blanks.find(value->back()) == std::string_view::npos);
}

std::string withCarriageReturns(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (character == '\n') result += '\r';
        result += character;
    }
    return result;
}

void checkEntry(const std::string& text) {
    const auto entry = parsed(text);
    require(parsed(withCarriageReturns(text)) == entry, "the kind of line end does not matter");
    require(parsed("# comment\n\n" + text) == entry, "comments and empty lines do not matter");
    require(parsed(text + "\n[Desktop Action]\nType=Application\nName=other\nExec=other\nHidden=true\n") == entry,
            "other groups do not matter");
    if (!entry) return;
    require(entry->id == "org.example.Editor", "the id is the file's");
    require(isAbsentOrOneLine(entry->name), "a name is absent or a line of text");
    require(isAbsentOrOneLine(entry->startupWMClass), "a window class is absent or a line of text");
    require(!entry->name || (isValidUtf8(*entry->name) && !hasControlCharacter(*entry->name)), "a name can be shown");
    require(!entry->icon || (!entry->icon->empty() && isValidUtf8(*entry->icon) && !hasControlCharacter(*entry->icon) &&
                             (entry->icon->front() == '/' || entry->icon->find('/') == std::string::npos)),
            "an icon is absent, a name or an absolute path");
    require(!isListedIn(entry->listing, {"A"}) || !entry->listing.isHiddenInMenus, "what is hidden is not listed");
    require(!entry->executable || (!entry->executable->empty() && entry->executable->find('/') == std::string::npos),
            "a program is absent or has a name without a path");
    require(!parsed(text.substr(0, text.find("Type"))), "an entry without a type is none of an application");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    velmorand::checkEntry(input.remainingText());
    return 0;
}
