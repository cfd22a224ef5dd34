#pragma once

#include "platform/Application.h"

#include <optional>
#include <string>
#include <vector>

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
    void activate() override { ++activations_; }

    /// The user starts the program again: its delegate is told in a turn of the loop, at the earliest after the launch.
    void reopen(std::optional<std::string> activationToken = std::nullopt);

    /// How often it was activated.
    [[nodiscard]] int activations() const { return activations_; }
    /// Whether the end was asked for.
    [[nodiscard]] bool isTerminating() const { return terminating_; }

private:
    void tellOfReopening(const std::optional<std::string>& activationToken);

    SimulatedRunLoop& runLoop_;
    std::weak_ptr<ApplicationDelegate> delegate_;
    /// Those that came before the launch.
    std::vector<std::optional<std::string>> reopenings_;
    int activations_ = 0;
    bool hasLaunched_ = false;
    bool terminating_ = false;
};

}  // namespace velmorand
