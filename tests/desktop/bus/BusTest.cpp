#include "desktop/bus/BusTest.h"

#include <cstdlib>
#include <stdexcept>

namespace velmorand::desktop {

BusTest::BusTest() {
    auto folder = TemporaryFolder::create("velmorand-bus-");
    if (!folder) throw std::runtime_error(folder.error().message);
    folder_ = std::move(*folder);
    const char* path = std::getenv("PATH");
    auto bus = SessionBus::start({{"PATH", path == nullptr ? "" : path}}, folder_->path());
    if (!bus) throw std::runtime_error(bus.error().message);
    bus_ = std::move(*bus);
}

BusTest::~BusTest() {
    bus_->process().thaw();
    for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
}

QDBusConnection BusTest::connectToBus() {
    static int connections = 0;  // the toolkit keeps them by name, for the whole process
    names_.append(QStringLiteral("test%1").arg(++connections));
    const auto connection = QDBusConnection::connectToBus(QString::fromStdString(bus_->address()), names_.last());
    if (!connection.isConnected()) throw std::runtime_error("the bus does not let us in");
    return connection;
}

}  // namespace velmorand::desktop
