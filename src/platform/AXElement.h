#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

namespace velmorand {

/// What a platform keeps behind an accessibility element. Implementations are immutable.
class AXElementBody {
public:
    virtual ~AXElementBody() = default;
    AXElementBody(const AXElementBody&) = delete;
    AXElementBody& operator=(const AXElementBody&) = delete;

    /// Whether both stand for the same object of the user interface (`CFEqual`). `other` may come from any
    /// element of the same platform.
    [[nodiscard]] virtual bool equals(const AXElementBody& other) const = 0;

    /// Equal elements have equal hashes (`CFHash`).
    [[nodiscard]] virtual std::size_t hash() const = 0;

protected:
    AXElementBody() = default;
};

/// A reference to an application or a window of another process. It is a cheap value; copies stand for the same
/// object, and two references to one object that were obtained separately are equal. It stays valid as a value
/// when the object is gone: using it then fails with `AXError::invalidElement`.
class AXElement {
public:
    /// `body` is never null.
    explicit AXElement(std::shared_ptr<const AXElementBody> body) : body_(std::move(body)) {}

    bool operator==(const AXElement& other) const { return body_ == other.body_ || body_->equals(*other.body_); }

    [[nodiscard]] std::size_t hash() const { return body_->hash(); }

    /// For the platform that made the element.
    [[nodiscard]] const AXElementBody& body() const { return *body_; }

private:
    std::shared_ptr<const AXElementBody> body_;
};

}  // namespace velmorand

template <>
struct std::hash<velmorand::AXElement> {
    std::size_t operator()(const velmorand::AXElement& element) const noexcept { return element.hash(); }
};
