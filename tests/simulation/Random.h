#pragma once

#include <cassert>
#include <cstdint>
#include <iterator>

namespace velmorand::simulation {

/// Numbers that look random and follow from the seed alone, the same on every machine (the splitmix64 sequence).
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    [[nodiscard]] std::uint64_t next() {
        std::uint64_t value = state_ += 0x9e3779b97f4a7c15ULL;
        value = (value ^ (value >> 30U)) * 0xbf58476d1ce4e5b9ULL;
        value = (value ^ (value >> 27U)) * 0x94d049bb133111ebULL;
        return value ^ (value >> 31U);
    }

    /// At least 0 and less than `limit`, which is positive.
    [[nodiscard]] std::uint32_t below(std::uint32_t limit) {
        assert(limit > 0);
        return static_cast<std::uint32_t>((next() >> 32U) % limit);
    }

    /// At least 0 and less than 1.
    [[nodiscard]] double fraction() { return static_cast<double>(next() >> 11U) * 0x1.0p-53; }

    [[nodiscard]] double between(double lowest, double highest) { return lowest + (highest - lowest) * fraction(); }
    /// The same on whole numbers.
    [[nodiscard]] double wholeBetween(int lowest, int highest) {
        return lowest + static_cast<double>(below(static_cast<std::uint32_t>(highest - lowest + 1)));
    }

    [[nodiscard]] bool chance(std::uint32_t percent) { return below(100) < percent; }

    /// One of them; there is at least one.
    template <typename Items>
    [[nodiscard]] auto& of(Items& items) {
        return items[below(static_cast<std::uint32_t>(std::size(items)))];
    }

private:
    std::uint64_t state_;
};

}  // namespace velmorand::simulation
