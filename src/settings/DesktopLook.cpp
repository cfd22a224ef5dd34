#include "settings/DesktopLook.h"

#include "settings/ApplicationIconProvider.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QScreen>
#include <QVariant>

namespace velmorand {
namespace {

constexpr const char* engineProperty = "velmorandDesktopLook";

/// At this resolution a point of text is as large as it is meant to be.
constexpr double usualDotsPerInch = 96;

QString installedFontFamily() {
    const QString wanted = QStringLiteral("Inter");
    return QFontDatabase::hasFamily(wanted) ? wanted : QStringLiteral("DejaVu Sans");
}

double desktopTextScale() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? 1 : screen->logicalDotsPerInchY() / usualDotsPerInch;
}

}  // namespace

DesktopLook::DesktopLook(QObject* parent)
    : QObject(parent), fontFamily_(installedFontFamily()), textScale_(desktopTextScale()) {}

void DesktopLook::offerTo(QQmlEngine& engine) {
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
    engine.setProperty(engineProperty, QVariant::fromValue(this));
}

DesktopLook* DesktopLook::create(const QQmlEngine* engine, const QJSEngine* /*scriptEngine*/) {
    return engine->property(engineProperty).value<DesktopLook*>();
}

bool DesktopLook::hasPicture(const QString& iconSource) {
    return hasPictureOfIcon(iconSource);
}

void DesktopLook::setReducesMotion(bool reducesMotion) {
    if (reducesMotion == reducesMotion_) return;
    reducesMotion_ = reducesMotion;
    Q_EMIT reducesMotionChanged();
}

}  // namespace velmorand
