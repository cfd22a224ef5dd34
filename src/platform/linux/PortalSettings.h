#pragma once

#include "platform/linux/ReducedMotion.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariant>
#include <optional>

class QDBusMessage;

namespace velmorand {

/// What the settings portal of the session says about motion (org.freedesktop.portal.Settings). It is asked in the
/// background when it is there or comes, and then follows its signals; it is never started for this. Without a bus, and
/// once it has gone, it says nothing.
class PortalSettings final : public QObject, public MotionSource {
    Q_OBJECT

public:
    /// `bus` is the session bus, which need not be connected.
    explicit PortalSettings(const QDBusConnection& bus);

    /// True when either of the desktop's settings asks for it: "reduced-motion" of every desktop that has it, or the
    /// animations of GNOME and its relatives switched off. False only when animations are switched on.
    [[nodiscard]] std::optional<bool> reducesMotion() override;

private:
    Q_SLOT void settingChanged(const QDBusMessage& signal);
    void askForAll();
    void ask(const QString& group, const QString& key);
    void take(const QString& group, const QString& key, const QVariant& value);
    void forgetAll();

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    int portals_ = 0;    // seen so far: an answer of one that has gone counts no more
    QString answering_;  // the unique name of the one that answers, as far as it is known
    std::optional<bool> wantsReducedMotion_;
    std::optional<bool> enablesAnimations_;
};

}  // namespace velmorand
