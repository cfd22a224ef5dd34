#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/ApplicationIdentity.h"

#include <array>
#include <cctype>
#include <string>
#include <string_view>

namespace velmorand {
namespace {

void checkSandbox(const std::string& text) {
    const auto id = applicationIDFromSandboxInformation(text);
    require(id == applicationIDFromSandboxInformation(text + "\n[Application]\n"), "an empty group changes nothing");
    if (!id) return;
    require(!id->empty() && id->find('\n') == std::string::npos, "an id is a line of text");
    require(text.find("[Application]") < text.rfind("name=" + *id), "an id comes from its group");
}

/// As systemd writes an id into the name of a unit.
std::string escaped(std::string_view id) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const char character : id) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) != 0 || character == '.' || character == '_')
            result += character;
        else
            result += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
    return result;
}

void checkControlGroup(const std::string& text, const std::string& known) {
    const auto isKnown = [&known](const std::string& id) { return id == known; };
    const auto id = applicationIDFromControlGroup(text, isKnown);
    require(!id || *id == known, "only an id that is known is found");
    require(!applicationIDFromControlGroup(text, [](const std::string&) { return false; }),
            "nothing is found where nothing is known");

    const std::string name = "0::/user.slice/app.slice/app-";
    const std::array units{name + escaped(known) + ".scope", name + escaped(known) + "-1234.scope",
                           name + "launcher-" + escaped(known) + "-1234.scope",
                           name + escaped(known) + "@instance.service"};
    for (const std::string& unit : units) {
        require(applicationIDFromControlGroup(unit, isKnown) == known, "an id is found again in the name of its unit");
    }
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    const std::string known = "a" + input.text(40);
    const std::string text = input.remainingText();
    velmorand::checkSandbox(text);
    velmorand::checkControlGroup(text, known);
    return 0;
}
