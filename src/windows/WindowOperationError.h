#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace velmorand {

/// What the user is told when a move was written but the window did not end at its target.
inline constexpr std::string_view windowDidNotMoveMessage = "The window did not move to the requested position.";

/// Why a window operation was refused. Its description is the sentence the user sees.
class WindowOperationError {
public:
    enum class Case : std::uint8_t {
        ignoredApplication,
        axFailure,
        accessibilityPermissionMissing,
        noFrontmostApplication,
        velmorandIsFrontmost,
        noFocusedWindow,
        unsupportedWindow,
        missingWindowFrame,
        missingScreen,
        displayMoveUnavailable,
        missingRestoreFrame,
    };
    using enum Case;

    /// For the cases without a payload.
    WindowOperationError(Case which) : case_(which) {}  // NOLINT(google-explicit-constructor): a case is an error

    /// `name` is the application's name.
    [[nodiscard]] static WindowOperationError ignored(std::string name) {
        return {Case::ignoredApplication, std::move(name)};
    }

    /// `message` is the whole sentence.
    [[nodiscard]] static WindowOperationError accessibility(std::string message) {
        return {Case::axFailure, std::move(message)};
    }

    bool operator==(const WindowOperationError&) const = default;

    [[nodiscard]] Case which() const { return case_; }
    [[nodiscard]] std::string description() const;

private:
    WindowOperationError(Case which, std::string payload) : case_(which), payload_(std::move(payload)) {}

    Case case_;
    std::string payload_;
};

}  // namespace velmorand
