#include "platform/linux/x11/ToolkitConnection.h"

#include <X11/Xlib.h>

namespace velmorand {

void silenceToolkitConnectionErrors() {
    XSetIOErrorHandler([](Display*) { return 0; });
}

}  // namespace velmorand
