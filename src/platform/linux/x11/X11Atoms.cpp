#include "platform/linux/x11/X11Atoms.h"

namespace velmorand {
namespace {

/// In the order of the enumeration.
constexpr std::array<std::string_view, static_cast<std::size_t>(X11AtomName::count)> names{
    "_GTK_APPLICATION_ID",
    "_GTK_FRAME_EXTENTS",
    "_KDE_NET_WM_DESKTOP_FILE",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_CURRENT_DESKTOP",
    "_NET_FRAME_EXTENTS",
    "_NET_MOVERESIZE_WINDOW",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_WM_ACTION_MOVE",
    "_NET_WM_ACTION_RESIZE",
    "_NET_WM_ALLOWED_ACTIONS",
    "_NET_WM_DESKTOP",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_PING",
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_FULLSCREEN",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_MAXIMIZED_HORZ",
    "_NET_WM_STATE_MAXIMIZED_VERT",
    "_NET_WM_STATE_SHADED",
    "_NET_WM_STATE_SKIP_PAGER",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WORKAREA",
    "UTF8_STRING",
    "WM_DELETE_WINDOW",
    "WM_PROTOCOLS",
    "WM_STATE",
};
static_assert(!names.back().empty(), "every atom has its name");

}  // namespace

std::expected<X11Atoms, X11Failure> X11Atoms::intern(X11Connection& connection, Deadline deadline) {
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
    for (std::size_t i = 0; i < names.size(); ++i)
        cookies[i] = xcb_intern_atom(connection.raw(), 0, static_cast<std::uint16_t>(names[i].size()), names[i].data());
    Values atoms{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto reply = connection.reply<xcb_intern_atom_reply_t>(cookies[i], deadline);
        if (!reply) return std::unexpected(reply.error());
        atoms[i] = (*reply)->atom;
    }
    return X11Atoms(atoms);
}

}  // namespace velmorand
