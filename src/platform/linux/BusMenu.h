#pragma once

#include "platform/StatusBar.h"
#include "platform/linux/BusObject.h"
#include "platform/linux/StatusMenuLayout.h"

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace velmorand {

/// A menu that programs on the bus draw (com.canonical.dbusmenu). Its lines are made anew each time it opens. Programs ask
/// in two ways before they open it, and each must be answered in its own: after a single question a signal of change keeps
/// one of them from showing the menu at all, after a question for a group another shows the lines of last time without it.
class BusMenu final : public BusObject {
    Q_OBJECT

public:
    static constexpr QLatin1StringView path{"/MenuBar"};

    BusMenu(const QDBusConnection& bus, RunLoop& runLoop);

    void attach(StatusMenuEvents events);
    void setItems(std::vector<MenuItem> items);

protected:
    [[nodiscard]] QVariantMap properties() const override;
    bool call(const QDBusMessage& message) override;

private:
    // What is asked over the bus. The menu may be gone on return.
    void getLayout(const QDBusMessage& message);
    void getGroupProperties(const QDBusMessage& message);
    void getProperty(const QDBusMessage& message);
    void takeEvent(const QDBusMessage& message);
    void takeEventGroup(const QDBusMessage& message);
    void aboutToShow(const QDBusMessage& message);
    void aboutToShowGroup(const QDBusMessage& message);

    /// Has the lines made if this begins an opening; all the questions of one opening come at once. False when the menu has
    /// gone with it.
    [[nodiscard]] bool open();
    /// As `open`, with the lines as they are if somebody asked for them just before.
    [[nodiscard]] bool openUnlessAnnounced();
    /// False when the menu has gone with it.
    [[nodiscard]] bool handleEvent(int id, const QString& event);
    /// Tells that the menu was closed, if it was open. False when the menu has gone with it.
    [[nodiscard]] bool close();
    void tellLayout();

    std::shared_ptr<StatusMenuEvents> events_;
    StatusMenuLayout layout_;
    uint revision_ = 1;
    // Until it is closed: when its lines were made, and when somebody asked before it opens.
    std::optional<std::chrono::steady_clock::time_point> opened_;
    std::optional<std::chrono::steady_clock::time_point> announced_;
    bool isBeingMade_ = false;
};

}  // namespace velmorand
