#pragma once

#include "platform/Application.h"

namespace velmorand {

class SimulatedRunLoop;

/// The application object on simulated time. `run` ends when the application is terminated or when nothing is
/// left that could ever happen.
class SimulatedApplication final : public Application {
public:
    explicit SimulatedApplication(SimulatedRunLoop& runLoop) : runLoop_(runLoop) {}

    void setDelegate(std::weak_ptr<ApplicationDelegate> delegate) override { delegate_ = std::move(delegate); }
    [[nodiscard]] int run() override;
    void terminate() override;

    /// Whether the end was asked for.
    [[nodiscard]] bool isTerminating() const { return terminating_; }

private:
    SimulatedRunLoop& runLoop_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    bool terminating_ = false;
};

}  // namespace velmorand
