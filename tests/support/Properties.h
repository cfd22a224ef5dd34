#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

/// Values for tests of what holds for any value at all.
namespace velmorand {

/// Bytes that now and then are characters.
[[nodiscard]] inline rc::Gen<std::string> anyText() {
    const auto byte = rc::gen::map<std::uint8_t>([](std::uint8_t value) { return static_cast<char>(value); });
    const auto piece =
        rc::gen::oneOf(rc::gen::container<std::string>(1, byte),
                       rc::gen::element<std::string>("a", "B", ".", "\"", "\\", "/", "\n", std::string(1, '\0'), "ä",
                                                     "\u20ac", "\U0001F600", "\uFFFD", "\xE2\x82", "\xED\xA0\x80"));
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](const std::vector<std::string>& pieces) {
                            std::string text;
                            for (const std::string& each : pieces) text += each;
                            return text;
                        });
}

/// Any number but infinite ones and those that are none; often one in the range of a setting.
[[nodiscard]] inline rc::Gen<double> anyFiniteNumber() {
    using Limits = std::numeric_limits<double>;
    const auto anyBits = rc::gen::map<std::uint64_t>([](std::uint64_t bits) {
        const auto number = std::bit_cast<double>(bits);
        return std::isfinite(number) ? number : 0;
    });
    return rc::gen::oneOf(
        anyBits, rc::gen::arbitrary<double>(),
        rc::gen::map(rc::gen::inRange(-100, 6000), [](int hundredths) { return hundredths / 100.0; }),
        rc::gen::element(0.0, -0.0, 0.05, 0.5, 50.0, Limits::max(), Limits::lowest(), Limits::denorm_min()));
}

}  // namespace velmorand
