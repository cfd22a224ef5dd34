#include "platform/contract/DesktopUnderContract.h"

#include <stdexcept>

namespace velmorand {

void PrintTo(const DesktopFactory& factory, std::ostream* out) {
    *out << factory.name;
}

std::string nameOfDesktop(const testing::TestParamInfo<DesktopFactory>& info) {
    return info.param.name;
}

DesktopContract::DesktopContract() = default;
DesktopContract::~DesktopContract() = default;

void DesktopContract::finishTurn() {
    bool finished = false;
    runLoop().post([&finished] { finished = true; });
    if (!desktop->runUntil([&finished] { return finished; }, deadline))
        throw std::runtime_error("the main loop does not run what is posted");
}

AXElement DesktopContract::applicationOf(ContractWindow window) {
    return accessibility().createApplication(desktop->pidOf(window));
}

AXElement DesktopContract::elementOf(ContractWindow window) {
    const auto focused = accessibility().copyAttributeValue(applicationOf(window), ax_attribute::focusedWindow);
    if (!focused || !std::holds_alternative<AXElement>(*focused))
        throw std::runtime_error("the application has no focused window");
    return std::get<AXElement>(*focused);
}

}  // namespace velmorand
