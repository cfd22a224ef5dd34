#include "desktop/bus/BusTest.h"

#include <QDBusMessage>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace velmorand::desktop {

BusTest::BusTest() {
    auto folder = TemporaryFolder::create("velmorand-bus-");
    if (!folder) throw std::runtime_error(folder.error().message);
    folder_ = std::move(*folder);
    const char* path = std::getenv("PATH");
    const auto services = folder_->path() / "services";
    std::filesystem::create_directory(services);
    auto bus = SessionBus::start({{"PATH", path == nullptr ? "" : path}}, folder_->path(), services);
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

void BusTest::disconnect(QDBusConnection&& connection) {
    const QString name = connection.name();
    connection = QDBusConnection(QStringLiteral("none"));
    QDBusConnection::disconnectFromBus(name);
    names_.removeOne(name);
}

void BusTest::offerService(const QString& service, std::string_view command) {
    std::ofstream(folder_->path() / "services" / (service.toStdString() + ".service"))
        << "[D-BUS Service]\nName=" << service.toStdString() << "\nExec=" << command << '\n';
    QDBusConnection connection = connectToBus();
    const QDBusMessage done = connection.call(
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig")));
    if (done.type() != QDBusMessage::ReplyMessage) throw std::runtime_error("the bus does not read its services anew");
    disconnect(std::move(connection));
}

}  // namespace velmorand::desktop
