#pragma once

#include <string_view>

namespace velmorand {

class X11Connection;

/// Tells the desktop that a start has come to its end, so that the launcher no longer shows that it waits for it.
/// `startupId` is what the launcher gave along (`DESKTOP_STARTUP_ID`). The server has been told when this returns, unless
/// it does not answer in time.
void completeStartup(X11Connection& connection, std::string_view startupId);

}  // namespace velmorand
