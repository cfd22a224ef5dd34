#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <array>
#include <expected>
#include <string_view>

namespace velmorand {

/// The atoms in use, each by its X name.
enum class X11AtomName : std::uint8_t {
    gtkApplicationID,
    gtkFrameExtents,
    kdeDesktopFile,
    netActiveWindow,
    netClientList,
    netClientListStacking,
    netCurrentDesktop,
    netFrameExtents,
    netMoveResizeWindow,
    netSupported,
    netSupportingWMCheck,
    netWMActionMove,
    netWMActionResize,
    netWMAllowedActions,
    netWMDesktop,
    netWMName,
    netWMPid,
    netWMPing,
    netWMState,
    netWMStateAbove,
    netWMStateFullscreen,
    netWMStateHidden,
    netWMStateMaximizedHorizontally,
    netWMStateMaximizedVertically,
    netWMStateShaded,
    netWMStateSkipPager,
    netWMStateSkipTaskbar,
    netWMStrut,
    netWMStrutPartial,
    netWMWindowType,
    netWMWindowTypeDesktop,
    netWMWindowTypeDialog,
    netWMWindowTypeDock,
    netWMWindowTypeDropdownMenu,
    netWMWindowTypeMenu,
    netWMWindowTypeNormal,
    netWMWindowTypeNotification,
    netWMWindowTypePopupMenu,
    netWMWindowTypeSplash,
    netWMWindowTypeToolbar,
    netWMWindowTypeTooltip,
    netWMWindowTypeUtility,
    netWorkArea,
    utf8String,
    wmDeleteWindow,
    wmProtocols,
    wmState,
    count,
};

/// Atoms of one connection, asked for once.
class X11Atoms {
public:
    /// In the order of the enumeration.
    using Values = std::array<xcb_atom_t, static_cast<std::size_t>(X11AtomName::count)>;

    explicit X11Atoms(const Values& values) : atoms_(values) {}

    [[nodiscard]] static std::expected<X11Atoms, X11Failure> intern(X11Connection& connection, Deadline deadline);

    [[nodiscard]] xcb_atom_t operator[](X11AtomName name) const { return atoms_[static_cast<std::size_t>(name)]; }

private:
    Values atoms_;
};

}  // namespace velmorand
