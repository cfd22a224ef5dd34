#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/x11/XSettings.h"

#include <array>
#include <bit>
#include <span>
#include <vector>

namespace velmorand {
namespace {

constexpr std::size_t headerLength = 12;
/// Of a whole number, beside its name.
constexpr std::size_t settingLength = 12;

/// The settings as a manager on this machine would publish them.
std::vector<std::uint8_t> published(const XSettings& settings) {
    std::vector<std::uint8_t> bytes{std::endian::native == std::endian::big ? std::uint8_t{1} : std::uint8_t{0}};
    const auto add = [&](auto number) {
        const auto raw = std::bit_cast<std::array<std::uint8_t, sizeof number>>(number);
        bytes.insert(bytes.end(), raw.begin(), raw.end());
    };
    bytes.resize(8);
    add(static_cast<std::uint32_t>(settings.size()));
    for (const auto& [name, value] : settings) {
        add(std::uint16_t{0});
        add(static_cast<std::uint16_t>(name.size()));
        bytes.insert(bytes.end(), name.begin(), name.end());
        bytes.resize((bytes.size() + 3) / 4 * 4);
        add(std::uint32_t{0});
        add(value);
    }
    return bytes;
}

void checkSettings(const std::vector<std::uint8_t>& bytes) {
    const auto settings = decodeXSettings(std::as_bytes(std::span(bytes)));
    if (!settings) return;
    std::size_t needed = headerLength;
    for (const auto& [name, value] : *settings) needed += settingLength + name.size();
    require(needed <= bytes.size(), "no more comes out than is there");
    const std::vector<std::uint8_t> again = published(*settings);
    require(decodeXSettings(std::as_bytes(std::span(again))) == settings, "what was read can be published again");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::checkSettings({data, data + size});
    return 0;
}
