#pragma once

#include "platform/linux/ReducedMotion.h"

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string_view>

namespace velmorand {

/// How many times as long as usual KDE's animations take, by the text of its global settings file
/// ("AnimationDurationFactor" of the group "KDE"); absent when the text does not say, or no number that can be one.
[[nodiscard]] std::optional<double> decodeAnimationDurationFactor(std::string_view text);

/// The speed of animations that the user chose in KDE's own settings. The file is read when it is not the one any more
/// that was read last.
class KdeAnimationSpeed final : public MotionSource {
public:
    /// `file` is KDE's global settings file, which need not exist.
    explicit KdeAnimationSpeed(std::filesystem::path file);

    /// True when animations take no time at all.
    [[nodiscard]] std::optional<bool> reducesMotion() override;

private:
    std::filesystem::path file_;
    struct stat read_{};  // all zero while there is no file
    std::optional<double> factor_;
};

}  // namespace velmorand
