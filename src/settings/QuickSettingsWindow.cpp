#include "settings/QuickSettingsWindow.h"

#include "platform/Bundle.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "settings/ApplicationIconProvider.h"
#include "settings/ApplicationIconSource.h"
#include "settings/KeyRepeats.h"
#include "settings/QuickRecorderWindow.h"
#include "settings/SettingsModule.h"
#include "settings/WindowFrame.h"
#include "shortcuts/ShortcutRecorderPanel.h"

#include <QCoreApplication>
#include <QQmlEngine>
#include <QQmlError>
#include <QSGRendererInterface>
#include <QScreen>
#include <chrono>
#include <utility>

namespace velmorand {
namespace {

constexpr QSize contentSize{780, 560};
constexpr QSize smallestContentSize{720, 520};
constexpr QColor paper{251, 246, 239};
constexpr auto saveDelay = std::chrono::milliseconds{500};

QRect centered(const QRect& area, const QSize& size) {
    return {QPoint(area.x() + (area.width() - size.width()) / 2, area.y() + (area.height() - size.height()) / 2), size};
}

}  // namespace

std::expected<std::unique_ptr<SettingsWindow>, std::string> QuickSettingsWindow::create(
    const SettingsServices& services, const SettingsPlatform& platform, SettingsFailureHandler onFailure) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    std::unique_ptr<QuickSettingsWindow> window(new QuickSettingsWindow(services, platform, std::move(onFailure)));
    if (window->status() == QQuickView::Ready) return window;
    QString reasons;
    for (const QQmlError& error : window->errors()) reasons += error.toString() + u' ';
    return std::unexpected(reasons.trimmed().toStdString());
}

QuickSettingsWindow::QuickSettingsWindow(const SettingsServices& services, const SettingsPlatform& platform,
                                         SettingsFailureHandler onFailure)
    : platform_(platform),
      logger_(platform.log, "settings"),
      model_(services, platform, std::move(onFailure)),
      recorder_(platform.shortcutRecorderPanel),
      look_(new DesktopLook(engine())),
      activation_(platform.defaultNotificationCenter,
                  platform.defaultNotificationCenter.addObserver(NotificationName::applicationBecameActive,
                                                                 [this](const Notification&) { becameActive(); })) {
    new KeyRepeats(this);
    setTitle(tr("Velmorand Settings"));
    setColor(paper);
    setMinimumSize(smallestContentSize);
    setResizeMode(QQuickView::SizeRootObjectToView);
    engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine()->addImageProvider(QLatin1StringView(applicationIconProviderName), new ApplicationIconProvider);
    look_->offerTo(*engine());
    refreshLook();
    setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&model_)}});
    setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velmorand/Settings/qml/SettingsView.qml")));
    place();
    platform_.shortcutRecorderPanel.setWindowMaker(
        [this] { return QuickRecorderWindow::create(recorder_, *this, logger_); });
    connect(this, &QWindow::xChanged, this, &QuickSettingsWindow::noteFrame);
    connect(this, &QWindow::yChanged, this, &QuickSettingsWindow::noteFrame);
    connect(this, &QWindow::widthChanged, this, &QuickSettingsWindow::noteFrame);
    connect(this, &QWindow::heightChanged, this, &QuickSettingsWindow::noteFrame);
}

/// The recorder's window goes before the engine that both have.
QuickSettingsWindow::~QuickSettingsWindow() {
    platform_.shortcutRecorderPanel.cancel();
    platform_.shortcutRecorderPanel.setWindowMaker({});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    savePending();
    setSource({});
}

std::optional<QRect> QuickSettingsWindow::storedFrame() const {
    const auto stored = platform_.userDefaults.data(frameKey);
    if (!stored) {
        logger_.error("Cannot read where the settings window was: {}", stored.error().description);
        return std::nullopt;
    }
    const std::optional<std::string>& text = *stored;
    return text ? windowFrameFromText(*text) : std::nullopt;
}

/// Centred, unless an earlier run left it elsewhere.
void QuickSettingsWindow::place() {
    frame_ = storedFrame().value_or(centered(screen()->availableGeometry(), contentSize));
    moveWithinDisplays();
}

void QuickSettingsWindow::moveWithinDisplays() {
    setGeometry(windowFrameWithin(freeAreasOfDisplays(), frame_, smallestContentSize, decorations_));
}

/// Not by `show`, which takes back that the user has maximised it.
void QuickSettingsWindow::bringToFront() {
    if (!isVisible()) {
        becameActive();
        model_.general()->becameActive();
        if (windowStates() == Qt::WindowNoState) moveWithinDisplays();
        setVisible(true);
    } else {
        setWindowStates(windowStates() & ~Qt::WindowMinimized);
    }
    raise();
    requestActivate();
}

void QuickSettingsWindow::becameActive() {
    refreshLook();
    model_.becameActive();
}

void QuickSettingsWindow::refreshLook() {
    look_->setReducesMotion(platform_.workspace.accessibilityDisplayShouldReduceMotion());
}

void QuickSettingsWindow::noteFrame() {
    if (isVisible()) pendingSave_ = platform_.runLoop.after(saveDelay, [this] { savePending(); });
}

/// The frame of a window that is maximised or hidden is not where the user put it; that it is maximised may be told after
/// its new size.
void QuickSettingsWindow::savePending() {
    if (!std::exchange(pendingSave_, std::nullopt)) return;
    if (!isVisible() || windowStates() != Qt::WindowNoState) return;
    decorations_ = frameMargins();
    if (geometry() == frame_) return;
    frame_ = geometry();
    const auto stored = platform_.userDefaults.setData(frameKey, windowFrameText(frame_));
    if (!stored) logger_.error("Cannot store where the settings window is: {}", stored.error().description);
}

/// The platform's window stays when it is closed, and so does all that is in it.
bool QuickSettingsWindow::event(QEvent* event) {
    if (event->type() != QEvent::Close) return QQuickView::event(event);
    event->ignore();
    savePending();
    model_.applicationChooser()->cancel();
    platform_.shortcutRecorderPanel.cancel();
    hide();
    return true;
}

}  // namespace velmorand

extern "C" {
/// What the executable looks for in the module.
extern Q_DECL_EXPORT const velmorand::SettingsModuleEntry velmorandSettingsModule;
const velmorand::SettingsModuleEntry velmorandSettingsModule{.build = VELMORAND_BUILD_STAMP,
                                                             .make = &velmorand::QuickSettingsWindow::create};
}
