#pragma once

#include "desktop/harness/PixelRect.h"
#include "desktop/harness/TestDesktop.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand::desktop {

/// States of accessible objects, by their numbers on the bus (AtspiStateType).
enum class AccessibleState : std::uint8_t {
    active = 1,
    checked = 4,
    enabled = 8,
    focusable = 11,
    focused = 12,
    selectable = 22,
    selected = 23,
    sensitive = 24,
    showing = 25,
    visible = 30,
    checkable = 41,
};

/// One thing in a program's window as assistive technology is told of it, at the moment of the question.
struct AccessibleObject {
    std::string service;
    std::string path;
    std::string role;
    std::string name;
    std::string description;
    /// One bit for each state.
    std::uint64_t states = 0;
    /// In root coordinates; absent for what is hidden, not for what is only scrolled out of sight.
    std::optional<PixelRect> frame;
    std::vector<std::string> actions;
    /// Of a slider and the like.
    std::optional<double> value;

    [[nodiscard]] bool is(AccessibleState state) const { return (states >> static_cast<unsigned>(state) & 1U) != 0; }
};

/// Everything in a program's windows, each thing before what is in it.
class AccessibleTree {
public:
    explicit AccessibleTree(std::vector<AccessibleObject> objects) : objects_(std::move(objects)) {}

    [[nodiscard]] const std::vector<AccessibleObject>& objects() const { return objects_; }
    /// The first with this role and name that is not hidden, be it scrolled out of sight; an empty role fits all.
    [[nodiscard]] const AccessibleObject* find(std::string_view role, std::string_view name) const;
    [[nodiscard]] bool shows(std::string_view name) const { return find({}, name) != nullptr; }
    /// One line for each, for failure messages.
    [[nodiscard]] std::string text() const;

private:
    std::vector<AccessibleObject> objects_;
};

/// The bus of assistive technology on a test desktop (AT-SPI), and somebody who uses programs through it alone. It goes
/// with the object.
class AccessibilityBus {
public:
    /// Returns when programs can come to it. \p desktop must outlive it.
    [[nodiscard]] static std::expected<std::unique_ptr<AccessibilityBus>, HarnessError> start(TestDesktop& desktop);
    ~AccessibilityBus();
    AccessibilityBus(const AccessibilityBus&) = delete;
    AccessibilityBus& operator=(const AccessibilityBus&) = delete;

    /// To be added to the environment of a program on Qt, which otherwise waits for a screen reader.
    [[nodiscard]] static Environment invitation() { return {{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}}; }

    /// What is in the windows of the process now; empty when it is not on the bus.
    [[nodiscard]] AccessibleTree treeOf(const ChildProcess& program);

    /// Presses it, or does the first thing that can be done with it; false when it refuses.
    bool press(const AccessibleObject& object);
    /// Writes the text in place of what is in a field; false when it refuses.
    bool write(const AccessibleObject& object, std::string_view text);
    bool setValue(const AccessibleObject& object, double value);
    /// Gives it the keyboard.
    bool focus(const AccessibleObject& object);

private:
    class Connection;
    AccessibilityBus(ChildProcess launcher, std::unique_ptr<Connection> connection);

    ChildProcess launcher_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace velmorand::desktop
