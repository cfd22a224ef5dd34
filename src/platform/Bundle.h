#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

/// What this program says of itself (`NSBundle.mainBundle`).
class Bundle {
public:
    virtual ~Bundle() = default;
    Bundle(const Bundle&) = delete;
    Bundle& operator=(const Bundle&) = delete;

    /// The application's identifier; absent for a copy that has none.
    [[nodiscard]] virtual std::optional<std::string> identifier() const = 0;

    /// A text of the information dictionary, such as "CFBundleShortVersionString"; absent when there is none.
    [[nodiscard]] virtual std::optional<std::string> informationText(std::string_view key) const = 0;

protected:
    Bundle() = default;
};

}  // namespace velmorand
