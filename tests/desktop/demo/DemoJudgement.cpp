#include "desktop/demo/DemoJudgement.h"

namespace velmorand::desktop {

bool isRoundedToSteps(const PixelRect& wanted, const PixelRect& seen, const SizeSteps& steps) {
    if (framesAgree(seen, wanted, frameTolerance)) return false;
    const int missingWidth = wanted.width - seen.width;
    const int missingHeight = wanted.height - seen.height;
    const PixelRect samePlace{seen.x, seen.y, wanted.width, wanted.height};
    return framesAgree(samePlace, wanted, frameTolerance) && missingWidth >= 0 && missingWidth < steps.width &&
           missingHeight >= 0 && missingHeight < steps.height;
}

}  // namespace velmorand::desktop
