#include "platform/linux/ToolkitBus.h"

#include <QtGlobal>

namespace velmorand {
namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";

}  // namespace

/// The library below the toolkit reads the address once and keeps it.
ToolkitBus::ToolkitBus(bool isWanted) : isWanted_(isWanted), address_(qgetenv(variable)) {
    if (!isWanted_) qputenv(variable, "disabled:");
}

ToolkitBus::~ToolkitBus() {
    if (isWanted_) return;
    if (address_.isNull())
        qunsetenv(variable);
    else
        qputenv(variable, address_);
}

}  // namespace velmorand
