#include "platform/simulated/SimulatedDesktop.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmorand {
namespace {

double constrained(double wanted, double minimum, std::optional<double> maximum, double step) {
    const double limited = std::max(minimum, maximum ? std::min(wanted, *maximum) : wanted);
    return minimum + std::floor((limited - minimum) / step) * step;
}

}  // namespace

SimulatedProcess& SimulatedDesktop::addProcess(std::int32_t pid) {
    frontmost = pid;
    SimulatedProcess& process = processes_[pid];
    process.pid = pid;
    return process;
}

SimulatedWindowID SimulatedDesktop::addWindow(std::int32_t pid, SimulatedWindow window) {
    const SimulatedWindowID id{++lastWindow_};
    windows_.emplace(id, OwnedWindow{pid, std::move(window)});
    SimulatedProcess& owner = process(pid);
    owner.windows.insert(owner.windows.begin(), id);
    owner.focusedWindow = id;
    owner.mainWindow = id;
    return id;
}

SimulatedProcess* SimulatedDesktop::findProcess(std::int32_t pid) {
    const auto found = processes_.find(pid);
    return found == processes_.end() ? nullptr : &found->second;
}

SimulatedWindow* SimulatedDesktop::findWindow(SimulatedWindowID id) {
    const auto found = windows_.find(id);
    return found == windows_.end() ? nullptr : &found->second.window;
}

SimulatedProcess* SimulatedDesktop::ownerOf(SimulatedWindowID id) {
    const auto found = windows_.find(id);
    return found == windows_.end() ? nullptr : findProcess(found->second.pid);
}

std::map<SimulatedWindowID, Rect> SimulatedDesktop::windowFrames() const {
    std::map<SimulatedWindowID, Rect> frames;
    for (const auto& [id, owned] : windows_) frames.emplace(id, owned.window.frame);
    return frames;
}

void SimulatedDesktop::closeWindow(SimulatedWindowID id) {
    if (SimulatedProcess* owner = ownerOf(id)) {
        std::erase(owner->windows, id);
        if (owner->focusedWindow == id) owner->focusedWindow.reset();
        if (owner->mainWindow == id) owner->mainWindow.reset();
    }
    windows_.erase(id);
}

void SimulatedDesktop::removeProcess(std::int32_t pid) {
    std::erase_if(windows_, [pid](const auto& entry) { return entry.second.pid == pid; });
    processes_.erase(pid);
    if (frontmost == pid) frontmost.reset();
}

void SimulatedDesktop::applyPosition(SimulatedWindowID id, Point position) {
    SimulatedWindow& target = window(id);
    if (target.ignoresWrites) return;
    target.frame.x = position.x;
    target.frame.y = position.y;
}

void SimulatedDesktop::applySize(SimulatedWindowID id, Size size) {
    SimulatedWindow& target = window(id);
    if (target.ignoresWrites) return;
    const auto maximum = [&](double Size::* side) {
        return target.maximumSize ? std::optional((*target.maximumSize).*side) : std::nullopt;
    };
    target.frame.width =
        constrained(size.width, target.minimumSize.width, maximum(&Size::width), target.sizeStep.width);
    target.frame.height =
        constrained(size.height, target.minimumSize.height, maximum(&Size::height), target.sizeStep.height);
}

}  // namespace velmorand
