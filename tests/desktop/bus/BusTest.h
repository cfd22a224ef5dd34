#pragma once

#include "desktop/harness/SessionBus.h"
#include "desktop/harness/TemporaryFolder.h"
#include "platform/linux/support/QtFixture.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <string_view>

namespace velmorand::desktop {

/// A session bus of its own, and connections to it. What is installed on this machine cannot be started there.
class BusTest : public QtFixture {
protected:
    BusTest();
    ~BusTest() override;

    /// A connection to the bus, closed with the test.
    [[nodiscard]] QDBusConnection connectToBus();

    /// Ends a connection, when no copy of it is left, as the end of its program would.
    void disconnect(QDBusConnection&& connection);

    /// From now on the bus starts this command when somebody asks for the service.
    void offerService(const QString& service, std::string_view command);

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_->path(); }
    [[nodiscard]] SessionBus& bus() { return *bus_; }

private:
    std::optional<TemporaryFolder> folder_;
    std::optional<SessionBus> bus_;
    QStringList names_;
};

}  // namespace velmorand::desktop
