#pragma once

#include "desktop/bus/BusTest.h"
#include "desktop/bus/FakePanel.h"
#include "platform/linux/LinuxStatusBar.h"
#include "platform/linux/StatusIcons.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmorand::desktop {

/// A status item on a bus, and a panel that the test plays, or none.
class StatusItemFixture : public BusTest {
protected:
    ~StatusItemFixture() override {
        item_.reset();
        panel_.reset();
    }

    void startPanel() {
        panel_ = std::make_unique<FakePanel>(connectToBus(), [this](const auto& condition) {
            // Nothing may arrive in this process's loop for what the condition waits for.
            const RunLoop::Timer wakeUp = runLoop.every(std::chrono::milliseconds(2), [] {});
            return runUntil(condition);
        });
    }
    /// As when its program ends.
    void stopPanel() {
        QDBusConnection connection = panel_->bus();
        panel_.reset();
        disconnect(std::move(connection));
    }
    [[nodiscard]] FakePanel& panel() { return *panel_; }

    /// An item with a menu that notes what is told of it and has these lines at each opening.
    void makeItem() {
        item_ = bar_.makeStatusItem();
        item_->attachMenu({.needsUpdate =
                               [this] {
                                   told_.emplace_back("needs update");
                                   if (item_) item_->setMenuItems(lines_);
                               },
                           .didClose = [this] { told_.emplace_back("closed"); },
                           .chosen =
                               [this](const MenuItem& item) {
                                   told_.push_back("chosen " + item.action + " " +
                                                   item.representedObject.value_or("-"));
                               }});
    }
    void endItem() { item_.reset(); }
    /// Makes an item and a panel that knows it.
    void show(std::vector<MenuItem> lines) {
        lines_ = std::move(lines);
        startPanel();
        makeItem();
        ASSERT_NE(panel().waitForItem(), QString());
    }
    void setLinesOfNextOpening(std::vector<MenuItem> lines) { lines_ = std::move(lines); }
    [[nodiscard]] StatusItem& item() { return *item_; }
    [[nodiscard]] LinuxStatusBar& bar() { return bar_; }

    /// What was told so far, after everything that is on its way.
    [[nodiscard]] const std::vector<std::string>& told() {
        runPosted();
        runPosted();
        return told_;
    }
    void forgetTold() { told_.clear(); }

    QDBusConnection ownBus_ = connectToBus();

private:
    LinuxStatusBar bar_{ownBus_, runLoop, statusIconFolder()};
    std::unique_ptr<FakePanel> panel_;
    std::unique_ptr<StatusItem> item_;
    std::vector<MenuItem> lines_;
    std::vector<std::string> told_;
};

}  // namespace velmorand::desktop
