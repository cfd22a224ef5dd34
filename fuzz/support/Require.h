#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace velmorand {

/// States what must hold for every input. When it does not, the process ends with the sentence, and the fuzzer keeps
/// the input.
inline void require(bool holds, std::string_view promise) {
    if (holds) return;
    std::fprintf(stderr, "Not kept: %.*s\n", static_cast<int>(promise.size()), promise.data());
    std::abort();
}

}  // namespace velmorand
