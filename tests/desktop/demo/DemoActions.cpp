#include "desktop/demo/DemoActions.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace velmorand::desktop {

namespace {

constexpr std::array plain{Key::leftSuper, Key::leftAlt};
constexpr std::array withShift{Key::leftSuper, Key::leftShift, Key::leftAlt};
constexpr std::array withControl{Key::leftSuper, Key::leftAlt, Key::leftControl};

constexpr double third = 1.0 / 3.0;

constexpr std::array<DemoAction, 19> actions{{
    {"left", DemoKind::fraction, plain, Key::left, {0, 0, 0.5, 1}},
    {"right", DemoKind::fraction, plain, Key::right, {0.5, 0, 0.5, 1}},
    {"top", DemoKind::fraction, plain, Key::up, {0, 0, 1, 0.5}},
    {"bottom", DemoKind::fraction, plain, Key::down, {0, 0.5, 1, 0.5}},
    {"topLeft", DemoKind::fraction, withShift, Key::e, {0, 0, 0.5, 0.5}},
    {"topRight", DemoKind::fraction, withShift, Key::r, {0.5, 0, 0.5, 0.5}},
    {"bottomLeft", DemoKind::fraction, withShift, Key::t, {0, 0.5, 0.5, 0.5}},
    {"bottomRight", DemoKind::fraction, withShift, Key::y, {0.5, 0.5, 0.5, 0.5}},
    {"leftThird", DemoKind::fraction, withControl, Key::left, {0, 0, third, 1}},
    {"centerThird", DemoKind::fraction, withControl, Key::down, {third, 0, third, 1}},
    {"rightThird", DemoKind::fraction, withControl, Key::right, {2 * third, 0, third, 1}},
    {"leftTwoThirds", DemoKind::fraction, withControl, Key::e, {0, 0, 2 * third, 1}},
    {"centerTwoThirds", DemoKind::fraction, withControl, Key::r, {third / 2, 0, 2 * third, 1}},
    {"rightTwoThirds", DemoKind::fraction, withControl, Key::t, {third, 0, 2 * third, 1}},
    {"nextDisplay", DemoKind::display, plain, Key::rightBracket, {}, +1},
    {"previousDisplay", DemoKind::display, plain, Key::leftBracket, {}, -1},
    {"maximize", DemoKind::maximize, plain, Key::enter},
    {"center", DemoKind::center, withControl, Key::enter},
    {"restore", DemoKind::restore, withShift, Key::p},
}};

}  // namespace

std::span<const DemoAction> demoActions() {
    return actions;
}

const DemoAction& demoAction(std::string_view name) {
    const auto* found = std::ranges::find(actions, name, &DemoAction::name);
    assert(found != actions.end());
    return *found;
}

}  // namespace velmorand::desktop
