#pragma once

#include "platform/Bundle.h"

namespace velmorand {

/// What the build says of the program.
class LinuxBundle final : public Bundle {
public:
    [[nodiscard]] std::optional<std::string> identifier() const override { return VELMORAND_IDENTIFIER; }

    [[nodiscard]] std::optional<std::string> informationText(std::string_view key) const override {
        if (key == "CFBundleShortVersionString") return VELMORAND_SHORT_VERSION;
        if (key == "CFBundleVersion") return VELMORAND_BUILD;
        return std::nullopt;
    }
};

}  // namespace velmorand
