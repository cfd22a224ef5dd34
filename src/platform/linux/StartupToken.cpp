#include "platform/linux/StartupToken.h"

#include "base/UnicodeText.h"

#include <cstdlib>
#include <utility>

namespace velmorand {
namespace {

std::optional<std::string> take(const char* name) {
    auto token = startupToken(std::getenv(name));
    unsetenv(name);
    return token;
}

}  // namespace

std::optional<std::string> startupToken(const char* text) {
    std::string token = text == nullptr ? "" : text;
    const bool isText = isValidUtf8(token) && !hasControlCharacter(token) && !hasNoncharacter(token);
    return token.empty() || !isText ? std::nullopt : std::optional(std::move(token));
}

StartupTokens takeStartupTokens() {
    return {.activationToken = take("XDG_ACTIVATION_TOKEN"), .desktopStartupId = take("DESKTOP_STARTUP_ID")};
}

}  // namespace velmorand
