#include "platform/linux/x11/ToolkitBarrier.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>

namespace velmorand {

void synchroniseToolkitConnection() {
    const auto* toolkit = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (toolkit == nullptr) return;
    xcb_connection_t* connection = toolkit->connection();
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace velmorand
