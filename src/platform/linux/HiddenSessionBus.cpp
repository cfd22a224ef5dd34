#include "platform/linux/HiddenSessionBus.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace velmorand {
namespace {

constexpr const char* address = "DBUS_SESSION_BUS_ADDRESS";
/// Has the address while it is hidden; empty when there was none.
constexpr const char* hiddenAddress = "VELMORAND_HIDDEN_SESSION_BUS_ADDRESS";

bool sets(std::string_view entry, std::string_view name) {
    return entry.starts_with(name) && entry.substr(name.size()).starts_with('=');
}

}  // namespace

void hideSessionBus() {
    const char* before = std::getenv(address);
    setenv(hiddenAddress, before == nullptr ? "" : before, 1);
    setenv(address, "disabled:", 1);
}

std::vector<std::string> environmentForPrograms() {
    const char* hidden = std::getenv(hiddenAddress);
    std::vector<std::string> entries;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const bool isChanged = hidden != nullptr && (sets(*entry, address) || sets(*entry, hiddenAddress));
        if (!isChanged) entries.emplace_back(*entry);
    }
    if (hidden != nullptr && *hidden != '\0') entries.push_back(std::string(address) + '=' + hidden);
    return entries;
}

}  // namespace velmorand
