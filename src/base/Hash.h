#pragma once

#include <cstddef>
#include <functional>

namespace velmorand {

/// Mixes the hash of one more field into `seed`, so that the order of fields matters. The mixing step is the
/// well-known one with the golden-ratio constant 2^64 / phi.
template <typename T>
void hashCombine(std::size_t& seed, const T& field) {
    seed ^= std::hash<T>{}(field) + 0x9e3779b97f4a7c15ULL + (seed << 6U) + (seed >> 2U);
}

}  // namespace velmorand
