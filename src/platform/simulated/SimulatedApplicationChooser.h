#pragma once

#include "platform/ApplicationChooser.h"
#include "platform/simulated/SimulatedRunLoop.h"

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace velmorand {

/// The chooser of a simulated desktop. A test is its user.
class SimulatedApplicationChooser final : public ApplicationChooser {
public:
    /// `runLoop` must outlive the chooser.
    explicit SimulatedApplicationChooser(SimulatedRunLoop& runLoop) : runLoop_(runLoop) {}

    void choose(ApplicationChooserOptions options, Completion completion) override {
        if (open_) {
            tell(std::move(completion), std::nullopt);
            return;
        }
        requests_.push_back(options);
        open_.emplace(std::move(options), std::move(completion));
    }

    /// Confirms these applications, in the panel's order, or cancels. Nothing happens without an open panel.
    void confirm(std::vector<std::filesystem::path> locations) { end(std::move(locations)); }
    void cancel() { end(std::nullopt); }

    [[nodiscard]] bool isOpen() const { return open_.has_value(); }
    /// What the user was asked, at every opening of the panel.
    [[nodiscard]] const std::vector<ApplicationChooserOptions>& requests() const { return requests_; }

private:
    using Answer = std::optional<std::vector<std::filesystem::path>>;

    void end(Answer answer) {
        if (!open_) return;
        Completion completion = std::move(open_->second);
        open_.reset();
        tell(std::move(completion), std::move(answer));
    }

    void tell(Completion completion, Answer answer) {
        runLoop_.post([completion = std::move(completion), answer = std::move(answer)]() mutable {
            completion(std::move(answer));
        });
    }

    SimulatedRunLoop& runLoop_;
    std::optional<std::pair<ApplicationChooserOptions, Completion>> open_;
    std::vector<ApplicationChooserOptions> requests_;
};

}  // namespace velmorand
