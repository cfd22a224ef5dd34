#pragma once

#include "base/Rect.h"
#include "platform/linux/x11/X11Property.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace velmorand {

/// Turns the fuzzer's bytes into values, as a hostile client could make the server deliver them. When the bytes are
/// used up, what comes is small, empty and zero.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : bytes_(data, size) {}

    template <typename Number>
    [[nodiscard]] Number number() {
        return bytes_.ConsumeIntegral<Number>();
    }
    template <typename Number>
    [[nodiscard]] Number between(Number smallest, Number largest) {
        return bytes_.ConsumeIntegralInRange<Number>(smallest, largest);
    }
    [[nodiscard]] bool boolean() { return bytes_.ConsumeBool(); }
    [[nodiscard]] std::string text(std::size_t longest) { return bytes_.ConsumeRandomLengthString(longest); }
    [[nodiscard]] std::string remainingText() { return bytes_.ConsumeRemainingBytesAsString(); }
    [[nodiscard]] std::vector<std::uint8_t> remainingBytes() { return bytes_.ConsumeRemainingBytes<std::uint8_t>(); }

    /// Mostly of the type and format that its reader looks for, else the first check would end most runs.
    [[nodiscard]] X11PropertyValue property(std::uint32_t wantedType, std::uint8_t wantedFormat) {
        constexpr std::array<std::uint8_t, 4> formats{0, 8, 16, 32};
        X11PropertyValue property{wantedType, wantedFormat, {}};
        const auto shape = number<std::uint8_t>();
        if (shape % 8 == 6) property.type = number<std::uint32_t>();
        if (shape % 8 == 7) property.format = boolean() ? bytes_.PickValueInArray(formats) : number<std::uint8_t>();
        const std::vector<std::uint8_t> data = bytes_.ConsumeBytes<std::uint8_t>(between<std::size_t>(0, longestData));
        std::ranges::transform(data, std::back_inserter(property.data),
                               [](std::uint8_t byte) { return std::byte{byte}; });
        return property;
    }

    /// Within what the X protocol carries; the size may be 0 only if `mayBeEmpty`.
    [[nodiscard]] Rect protocolRect(bool mayBeEmpty = false) {
        const std::uint16_t smallest = mayBeEmpty ? 0 : 1;
        const auto x = number<std::int16_t>();
        const auto y = number<std::int16_t>();
        const auto width = std::max(smallest, number<std::uint16_t>());
        const auto height = std::max(smallest, number<std::uint16_t>());
        return {static_cast<double>(x), static_cast<double>(y), static_cast<double>(width),
                static_cast<double>(height)};
    }

    /// Any numbers but infinite ones and those that are none.
    [[nodiscard]] Rect anyRect() {
        const auto any = [this] {
            return bytes_.ConsumeFloatingPointInRange(std::numeric_limits<double>::lowest(),
                                                      std::numeric_limits<double>::max());
        };
        const double x = any();
        const double y = any();
        const double width = any();
        return {x, y, width, any()};
    }

private:
    static constexpr std::size_t longestData = 1024;

    FuzzedDataProvider bytes_;
};

}  // namespace velmorand
