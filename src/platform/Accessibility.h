#pragma once

#include "base/Point.h"
#include "base/Size.h"
#include "platform/AXElement.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmorand {

/// A status of the accessibility interface other than success, with the platform's number (`AXError`).
struct AXError {
    std::int32_t code = 0;

    bool operator==(const AXError&) const = default;

    static const AXError illegalArgument;
    static const AXError invalidElement;
    static const AXError cannotComplete;
    static const AXError attributeUnsupported;
    static const AXError apiDisabled;
    static const AXError noValue;
};

/// A value of the wrong type or a number that is not finite.
inline constexpr AXError AXError::illegalArgument{-25201};
/// The window or the process is gone, or its identifier belongs to another one now.
inline constexpr AXError AXError::invalidElement{-25202};
/// No answer within the messaging timeout, or nobody to ask (no window manager, no connection).
inline constexpr AXError AXError::cannotComplete{-25204};
/// An attribute that the element does not have, or a write to one that is not settable.
inline constexpr AXError AXError::attributeUnsupported{-25205};
/// This process is not trusted.
inline constexpr AXError AXError::apiDisabled{-25211};
/// The attribute exists but has no value now, such as the focused window of an application without one.
inline constexpr AXError AXError::noValue{-25212};

/// The attributes in use, by their platform names.
namespace ax_attribute {
inline constexpr std::string_view focusedWindow = "AXFocusedWindow";
inline constexpr std::string_view mainWindow = "AXMainWindow";
inline constexpr std::string_view windows = "AXWindows";
inline constexpr std::string_view role = "AXRole";
inline constexpr std::string_view subrole = "AXSubrole";
inline constexpr std::string_view minimized = "AXMinimized";
inline constexpr std::string_view fullScreen = "AXFullScreen";
inline constexpr std::string_view position = "AXPosition";
inline constexpr std::string_view size = "AXSize";
}  // namespace ax_attribute

/// The type of a boxed value (`AXValueType`).
enum class AXValueType : std::uint32_t { other = 0, point = 1, size = 2 };

/// A point or a size in the form in which attributes carry them (`AXValue`).
struct AXBoxedValue {
    AXValueType type = AXValueType::other;
    std::variant<std::monostate, Point, Size> value;

    bool operator==(const AXBoxedValue&) const = default;
};

/// A value of none of the types the program knows, or no value at all.
struct AXOtherValue {
    bool operator==(const AXOtherValue&) const = default;
};

using AXAttributeValue = std::variant<AXOtherValue, AXElement, std::vector<AXElement>, std::string, bool, AXBoxedValue>;

/// Other applications' windows. Frames are in the accessibility space (origin at the top-left corner of the
/// primary display, y growing downward, points) and mean what the user sees of a window: with its decorations,
/// without its shadow.
///
/// Main thread only. Every call is synchronous and takes at most the messaging timeout of its element, which is
/// 0.75 seconds unless it was set.
///
/// Writes are joined. A position write is held after the checks that can be made at once (window alive and still
/// the same, not full screen, position settable, the window system answering) and fails there with the
/// position's code. The size write that follows sends position and size as one frame and returns when the window
/// system has acted, so what only acting shows is the size write's result; when it fails, the held position is
/// dropped and nothing was sent. A held position is sent alone by a write to another window, by a read of this
/// window, by a state query or at the end of the turn. A write that is merely clamped, rounded or ignored is a
/// success: whether it landed is for the caller to read back.
class Accessibility {
public:
    virtual ~Accessibility() = default;
    Accessibility(const Accessibility&) = delete;
    Accessibility& operator=(const Accessibility&) = delete;

    /// Whether this process may use the interface now (`AXIsProcessTrusted`).
    [[nodiscard]] virtual bool isProcessTrusted() = 0;

    /// The same answer; when it is no, the user is also told what is missing. Never waits for the user.
    [[nodiscard]] virtual bool isProcessTrustedWithPrompt() = 0;

    /// The element of the application with this process identifier. It always succeeds; a process that does not
    /// exist shows when the element is used.
    [[nodiscard]] virtual AXElement createApplication(std::int32_t pid) = 0;

    [[nodiscard]] virtual std::expected<AXAttributeValue, AXError> copyAttributeValue(const AXElement& element,
                                                                                      std::string_view attribute) = 0;

    /// Writes `attribute`; only "AXPosition" (a point) and "AXSize" (a size) of windows can be written.
    [[nodiscard]] virtual std::expected<void, AXError> setAttributeValue(const AXElement& element,
                                                                         std::string_view attribute,
                                                                         const AXBoxedValue& value) = 0;

    /// Whether the attribute can be written. Settable says what the window allows, not whether a write will land.
    [[nodiscard]] virtual std::expected<bool, AXError> isAttributeSettable(const AXElement& element,
                                                                           std::string_view attribute) = 0;

    /// Bounds every later call on this element; a value that is no positive number sets the usual bound again.
    virtual void setMessagingTimeout(const AXElement& element, double seconds) = 0;

    /// Boxes a point or a size (`AXValueCreate`); absent when the platform cannot.
    [[nodiscard]] virtual std::optional<AXBoxedValue> createValue(std::variant<Point, Size> value) = 0;

protected:
    Accessibility() = default;
};

}  // namespace velmorand
