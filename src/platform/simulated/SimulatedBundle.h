#pragma once

#include "platform/Bundle.h"

#include <map>
#include <string>

namespace velmorand {

/// A bundle whose contents can be set.
class SimulatedBundle final : public Bundle {
public:
    [[nodiscard]] std::optional<std::string> identifier() const override { return identifier_; }
    [[nodiscard]] std::optional<std::string> informationText(std::string_view key) const override {
        const auto found = information_.find(std::string(key));
        return found == information_.end() ? std::nullopt : std::optional(found->second);
    }

    void setIdentifier(std::optional<std::string> identifier) { identifier_ = std::move(identifier); }
    void setInformationText(std::string key, std::string text) { information_[std::move(key)] = std::move(text); }

private:
    std::optional<std::string> identifier_ = "app.velmorand.Velmorand";
    std::map<std::string, std::string> information_;
};

}  // namespace velmorand
