#pragma once

#include "desktop/harness/SessionBus.h"
#include "desktop/harness/TemporaryFolder.h"
#include "platform/linux/support/QtFixture.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QString>
#include <optional>

namespace velmorand::desktop {

/// A session bus of its own, and connections to it.
class BusTest : public QtFixture {
protected:
    BusTest();
    ~BusTest() override;

    /// A connection to the bus, closed with the test.
    [[nodiscard]] QDBusConnection connectToBus();

    [[nodiscard]] SessionBus& bus() { return *bus_; }

private:
    std::optional<TemporaryFolder> folder_;
    std::optional<SessionBus> bus_;
    QStringList names_;
};

}  // namespace velmorand::desktop
