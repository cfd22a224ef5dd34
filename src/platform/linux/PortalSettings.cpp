#include "platform/linux/PortalSettings.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QLatin1StringView>

namespace velmorand {
namespace {

constexpr QLatin1StringView service("org.freedesktop.portal.Desktop");
constexpr QLatin1StringView path("/org/freedesktop/portal/desktop");
constexpr QLatin1StringView interface("org.freedesktop.portal.Settings");

constexpr QLatin1StringView appearanceGroup("org.freedesktop.appearance");
constexpr QLatin1StringView reducedMotionKey("reduced-motion");
constexpr QLatin1StringView gnomeGroup("org.gnome.desktop.interface");
constexpr QLatin1StringView animationsKey("enable-animations");

constexpr QLatin1StringView busItself("org.freedesktop.DBus");
/// What an answer is that has not come in time.
constexpr QLatin1StringView noReplyError("org.freedesktop.DBus.Error.NoReply");

/// Any other number means that the user has no preference.
constexpr quint32 wantsReducedMotion = 1;

/// `Read` answers with a value in a box in a box. More boxes than that are no answer.
constexpr int mostBoxes = 4;

QVariant unboxed(QVariant value) {
    for (int box = 0; box < mostBoxes && value.metaType() == QMetaType::fromType<QDBusVariant>(); ++box)
        value = value.value<QDBusVariant>().variant();
    return value;
}

}  // namespace

PortalSettings::PortalSettings(const QDBusConnection& bus)
    : bus_(bus), watcher_(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!bus_.isConnected()) return;
    // One portal may take the place of another without the name being free in between.
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*name*/, const QString& /*before*/, const QString& now) {
                forgetAll();
                answering_ = now;
                if (!now.isEmpty()) askForAll();
            });
    // From whomever: naming the service here would make the call wait for the bus.
    bus_.connect({}, path, interface, QStringLiteral("SettingChanged"), this, SLOT(settingChanged(QDBusMessage)));
    askForAll();
}

std::optional<bool> PortalSettings::reducesMotion() {
    if (!bus_.isConnected()) return std::nullopt;
    if (wantsReducedMotion_ == true || enablesAnimations_ == false) return true;
    return enablesAnimations_ ? std::optional(false) : std::nullopt;
}

void PortalSettings::askForAll() {
    ask(appearanceGroup, reducedMotionKey);
    ask(gnomeGroup, animationsKey);
}

void PortalSettings::ask(const QString& group, const QString& key) {
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    question.setArguments({group, key});
    question.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, group, key, answer, portal = portals_] {
        answer->deleteLater();
        const QDBusMessage reply = answer->reply();
        if (portal != portals_) return;
        // It has taken too long, as a portal that has only just started may.
        if (reply.errorName() == noReplyError) ask(group, key);
        if (!reply.service().isEmpty() && reply.service() != busItself) answering_ = reply.service();
        if (answer->isError() || reply.arguments().size() != 1) return;
        take(group, key, reply.arguments().first());
    });
}

void PortalSettings::settingChanged(const QDBusMessage& signal) {
    const QList<QVariant> arguments = signal.arguments();
    const bool counts = signal.service() == answering_ && arguments.size() == 3;
    if (counts) take(arguments[0].toString(), arguments[1].toString(), arguments[2]);
}

/// A value of another type says nothing.
void PortalSettings::take(const QString& group, const QString& key, const QVariant& value) {
    const QVariant content = unboxed(value);
    if (group == appearanceGroup && key == reducedMotionKey) {
        const bool isNumber = content.metaType() == QMetaType::fromType<quint32>();
        wantsReducedMotion_ = isNumber ? std::optional(content.toUInt() == wantsReducedMotion) : std::nullopt;
    }
    if (group == gnomeGroup && key == animationsKey) {
        const bool isBoolean = content.metaType() == QMetaType::fromType<bool>();
        enablesAnimations_ = isBoolean ? std::optional(content.toBool()) : std::nullopt;
    }
}

void PortalSettings::forgetAll() {
    ++portals_;
    answering_.clear();
    wantsReducedMotion_.reset();
    enablesAnimations_.reset();
}

}  // namespace velmorand
