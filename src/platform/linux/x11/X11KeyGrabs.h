#pragma once

#include "platform/HotKeyService.h"
#include "platform/linux/x11/X11Connection.h"

#include <compare>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace velmorand {

/// A key with its X modifiers, without the locks.
struct X11KeyCombination {
    std::uint8_t keycode = 0;
    std::uint32_t mask = 0;

    auto operator<=>(const X11KeyCombination&) const = default;
};

/// The combinations that this program has grabbed on the root window, each with every combination of the locks. They
/// are passive grabs of the X server's input extension (XI2), which tell auto-repeat from presses and see the grabs of
/// other clients of their kind, but not core grabs; so a core grab is tried too before a combination counts as free.
/// All are given back when the object dies.
class X11KeyGrabs {
public:
    explicit X11KeyGrabs(X11Connection& connection) : connection_(connection) {}
    ~X11KeyGrabs();

    X11KeyGrabs(const X11KeyGrabs&) = delete;
    X11KeyGrabs& operator=(const X11KeyGrabs&) = delete;

    /// The masks of the locks with which later grabs are made. When they are others than before, all grabs so far miss
    /// a lock and are given back.
    void setLockCombinations(std::vector<std::uint32_t> lockCombinations);

    /// Grabs the combination; one that is held already costs nothing. Fails, holding nothing of it, with
    /// `hotKeyAlreadyTaken` when another client holds it or a part of it with either kind of grab, and with
    /// `hotKeyInternalError` when the server refuses or does not answer before the deadline.
    [[nodiscard]] OSStatus acquire(const X11KeyCombination& combination, Deadline deadline);

    /// Gives back all others. The server hears of it with the next flush.
    void keepOnly(const std::set<X11KeyCombination>& wanted);

private:
    using Masks = std::vector<std::uint32_t>;

    [[nodiscard]] Masks masksOf(const X11KeyCombination& combination) const;
    [[nodiscard]] OSStatus probeCoreGrab(std::uint8_t keycode, const Masks& masks, Deadline deadline);
    [[nodiscard]] OSStatus establish(std::uint8_t keycode, const Masks& masks, Deadline deadline);
    void release(std::uint8_t keycode, const Masks& masks);

    X11Connection& connection_;
    Masks lockCombinations_;
    std::map<X11KeyCombination, Masks> held_;
};

}  // namespace velmorand
