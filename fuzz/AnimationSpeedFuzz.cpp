#include "fuzz/support/FuzzInput.h"
#include "fuzz/support/Require.h"
#include "platform/linux/KdeAnimationSpeed.h"

#include <cmath>
#include <string>

namespace velmorand {
namespace {

void checkFactor(const std::string& text) {
    const auto factor = decodeAnimationDurationFactor(text);
    require(!factor || (std::isfinite(*factor) && *factor >= 0), "a factor is a length of time");
    require(decodeAnimationDurationFactor(text + "\n[Other]\nAnimationDurationFactor=3\n") == factor,
            "other groups do not matter");
    require(decodeAnimationDurationFactor(text + "\n[KDE]\nAnimationDurationFactor=0.5\n") == 0.5,
            "the last value counts");
    require(decodeAnimationDurationFactor(text + "\n[KDE]\nAnimationDurationFactor=fast\n") == std::nullopt,
            "a word is no factor");
}

}  // namespace
}  // namespace velmorand

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velmorand::FuzzInput input(data, size);
    velmorand::checkFactor(input.remainingText());
    return 0;
}
