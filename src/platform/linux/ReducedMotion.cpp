#include "platform/linux/ReducedMotion.h"

#include <utility>

namespace velmorand {

ReducedMotion::ReducedMotion(std::vector<MotionSource*> sources) : sources_(std::move(sources)) {}

bool ReducedMotion::isWanted() const {
    for (MotionSource* source : sources_) {
        if (const auto reduces = source->reducesMotion()) return *reduces;
    }
    return false;
}

}  // namespace velmorand
