#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

namespace velmorand {

/// A set of modifier keys. Its bits are the platform's hot-key modifier masks (`cmdKey`, `shiftKey`, `optionKey`,
/// `controlKey`), so the raw value is handed to the hot-key service unchanged. Bits other than the four members
/// are kept as they are.
class ShortcutModifiers {
public:
    static const ShortcutModifiers command;
    static const ShortcutModifiers shift;
    static const ShortcutModifiers option;
    static const ShortcutModifiers control;

    constexpr ShortcutModifiers() = default;
    constexpr explicit ShortcutModifiers(std::uint32_t rawValue) : rawValue_(rawValue) {}
    constexpr ShortcutModifiers(std::initializer_list<ShortcutModifiers> members) {
        for (const ShortcutModifiers member : members) rawValue_ |= member.rawValue_;
    }

    constexpr bool operator==(const ShortcutModifiers&) const = default;

    [[nodiscard]] constexpr std::uint32_t rawValue() const { return rawValue_; }
    [[nodiscard]] constexpr bool isEmpty() const { return rawValue_ == 0; }

    /// Whether every bit of `members` is in this set.
    [[nodiscard]] constexpr bool contains(ShortcutModifiers members) const { return members.isSubsetOf(*this); }

    [[nodiscard]] constexpr ShortcutModifiers unionWith(ShortcutModifiers other) const {
        return ShortcutModifiers(rawValue_ | other.rawValue_);
    }
    [[nodiscard]] constexpr ShortcutModifiers intersectionWith(ShortcutModifiers other) const {
        return ShortcutModifiers(rawValue_ & other.rawValue_);
    }
    [[nodiscard]] constexpr ShortcutModifiers symmetricDifferenceWith(ShortcutModifiers other) const {
        return ShortcutModifiers(rawValue_ ^ other.rawValue_);
    }
    [[nodiscard]] constexpr ShortcutModifiers subtracting(ShortcutModifiers other) const {
        return ShortcutModifiers(rawValue_ & ~other.rawValue_);
    }

    [[nodiscard]] constexpr bool isSubsetOf(ShortcutModifiers other) const { return subtracting(other).isEmpty(); }
    [[nodiscard]] constexpr bool isSupersetOf(ShortcutModifiers other) const { return other.isSubsetOf(*this); }
    [[nodiscard]] constexpr bool isStrictSubsetOf(ShortcutModifiers other) const {
        return isSubsetOf(other) && *this != other;
    }
    [[nodiscard]] constexpr bool isStrictSupersetOf(ShortcutModifiers other) const {
        return other.isStrictSubsetOf(*this);
    }
    [[nodiscard]] constexpr bool isDisjointWith(ShortcutModifiers other) const {
        return intersectionWith(other).isEmpty();
    }

    /// Adds the bits of `member`; answers whether any of them was missing.
    constexpr bool insert(ShortcutModifiers member) {
        const bool inserted = !contains(member);
        rawValue_ |= member.rawValue_;
        return inserted;
    }

    /// Takes the bits of `member` away; answers those that were there, or nothing when there were none.
    constexpr std::optional<ShortcutModifiers> remove(ShortcutModifiers member) {
        const ShortcutModifiers present = intersectionWith(member);
        rawValue_ &= ~member.rawValue_;
        return present.isEmpty() ? std::nullopt : std::optional(present);
    }

    /// Adds the bits of `member`; answers those that were there before, or nothing when there were none.
    constexpr std::optional<ShortcutModifiers> update(ShortcutModifiers member) {
        const ShortcutModifiers present = intersectionWith(member);
        rawValue_ |= member.rawValue_;
        return present.isEmpty() ? std::nullopt : std::optional(present);
    }

private:
    std::uint32_t rawValue_ = 0;
};

inline constexpr ShortcutModifiers ShortcutModifiers::command{0x0100U};
inline constexpr ShortcutModifiers ShortcutModifiers::shift{0x0200U};
inline constexpr ShortcutModifiers ShortcutModifiers::option{0x0800U};
inline constexpr ShortcutModifiers ShortcutModifiers::control{0x1000U};

/// One symbol for each member present, always in the order ⌃ ⌥ ⇧ ⌘.
[[nodiscard]] std::vector<std::string_view> displaySymbols(ShortcutModifiers modifiers);

/// One name for each member present, always in the order Control, Option, Shift, Command.
[[nodiscard]] std::vector<std::string_view> displayNames(ShortcutModifiers modifiers);

/// The modifiers held during a key event. `flags` is the raw value of the event's device-independent modifier
/// flags (`NSEvent.ModifierFlags`); every flag but shift, control, option and command is ignored.
[[nodiscard]] ShortcutModifiers modifiersFromEventFlags(std::uint64_t flags);

}  // namespace velmorand

template <>
struct std::hash<velmorand::ShortcutModifiers> {
    std::size_t operator()(velmorand::ShortcutModifiers modifiers) const noexcept {
        return std::hash<std::uint32_t>{}(modifiers.rawValue());
    }
};
