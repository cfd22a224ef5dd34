#pragma once

#include "platform/AXElement.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

namespace velmorand {

/// The body of an element that is nothing but an identity, for platforms whose elements are plain values. Bodies
/// of different identity types are never equal.
/// @tparam Identity comparable and hashable.
template <typename Identity>
class IdentityElementBody final : public AXElementBody {
public:
    explicit IdentityElementBody(Identity identity) : identity_(std::move(identity)) {}

    [[nodiscard]] static AXElement makeElement(Identity identity) {
        return AXElement(std::make_shared<IdentityElementBody>(std::move(identity)));
    }

    /// The identity behind `element`; null when it is of another type.
    [[nodiscard]] static const Identity* identityOf(const AXElement& element) {
        const auto* body = dynamic_cast<const IdentityElementBody*>(&element.body());
        return body == nullptr ? nullptr : &body->identity_;
    }

    [[nodiscard]] bool equals(const AXElementBody& other) const override {
        const auto* body = dynamic_cast<const IdentityElementBody*>(&other);
        return body != nullptr && body->identity_ == identity_;
    }
    [[nodiscard]] std::size_t hash() const override { return std::hash<Identity>{}(identity_); }

private:
    Identity identity_;
};

}  // namespace velmorand
