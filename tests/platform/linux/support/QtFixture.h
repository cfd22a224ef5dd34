#pragma once

#include "platform/linux/QtRunLoop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <array>
#include <chrono>
#include <functional>

namespace velmorand {

/// A Qt application object without windows, and the loop on it.
class QtFixture : public testing::Test {
protected:
    /// Reaching it means that what was waited for will not happen.
    static constexpr std::chrono::seconds patience{15};

    /// What the loop dropped last is deleted in a later turn; this is that turn.
    ~QtFixture() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    /// Handles events, asleep in between, until the condition holds. Answers whether it does.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) {
        const MonotonicTime end = runLoop.now() + patience;
        const RunLoop::Timer wakeUp = runLoop.after(patience, [] {});
        while (!condition() && runLoop.now() < end) application_.processEvents(QEventLoop::WaitForMoreEvents);
        return condition();
    }

    /// Runs a turn that was asked for after everything posted so far.
    void runPosted() {
        bool done = false;
        runLoop.post([&done] { done = true; });
        ASSERT_TRUE(runUntil([&done] { return done; }));
    }

private:
    int argumentCount_ = 1;
    std::array<char, 5> name_{"test"};
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    QCoreApplication application_{argumentCount_, arguments_.data()};

protected:
    QtRunLoop runLoop;
};

}  // namespace velmorand
