#include "settings/QuickRecorderWindow.h"

#include "settings/ShortcutRecorderViewModel.h"
#include "settings/TranslatedText.h"
#include "settings/WindowFrame.h"
#include "shortcuts/ShortcutRecorderModel.h"

#include <QEvent>
#include <QQmlError>
#include <QQuickItem>
#include <QQuickView>
#include <utility>

namespace velmorand {
namespace {

/// What window managers draw around a dialog, as a guess until they have.
constexpr QMargins usualDecorations{1, 40, 1, 1};

}  // namespace

class QuickRecorderWindow::View final : public QQuickView {
public:
    View(ShortcutRecorderViewModel& model, QQuickView& settingsWindow) : QQuickView(settingsWindow.engine(), nullptr) {
        setTitle(translated("ShortcutRecorder", recorderTitle));
        setFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
        setTransientParent(&settingsWindow);
        setColor(settingsWindow.color());
        setResizeMode(QQuickView::SizeRootObjectToView);
        setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&model)}});
        setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velmorand/Settings/qml/ShortcutRecorderView.qml")));
        if (rootObject() == nullptr) return;
        connect(rootObject(), &QQuickItem::implicitWidthChanged, this, &View::fit);
        connect(rootObject(), &QQuickItem::implicitHeightChanged, this, &View::fit);
        fit();
        QRect frame(QPoint(), size());
        frame.moveCenter(settingsWindow.geometry().center());
        moveWithinDisplays(frame);
    }

    void setOnClosed(std::function<void()> closed) { closed_ = std::move(closed); }

protected:
    bool event(QEvent* event) override {
        if (event->type() != QEvent::Close) return QQuickView::event(event);
        event->ignore();
        if (const auto closed = std::exchange(closed_, nullptr)) closed();
        return true;
    }

private:
    void fit() {
        const QSize wanted = QSizeF(rootObject()->implicitWidth(), rootObject()->implicitHeight()).toSize();
        setMinimumSize(wanted);
        setMaximumSize(wanted);
        resize(wanted);
        if (isVisible()) moveWithinDisplays({position(), wanted});
    }

    void moveWithinDisplays(const QRect& frame) {
        const QMargins known = frameMargins();
        setGeometry(
            windowFrameWithin(freeAreasOfDisplays(), frame, frame.size(), known.isNull() ? usualDecorations : known));
    }

    std::function<void()> closed_;
};

void QuickRecorderWindow::DeleteLater::operator()(View* view) const {
    view->hide();
    view->deleteLater();
}

std::unique_ptr<RecorderPanelWindow> QuickRecorderWindow::create(ShortcutRecorderViewModel& model,
                                                                 QQuickView& settingsWindow, const Logger& logger) {
    std::unique_ptr<QuickRecorderWindow> window(new QuickRecorderWindow(model, settingsWindow));
    if (window->view_->status() == QQuickView::Ready) return window;
    for (const QQmlError& error : window->view_->errors())
        logger.error("The recorder cannot be drawn: {}", error.toString().toStdString());
    return nullptr;
}

QuickRecorderWindow::QuickRecorderWindow(ShortcutRecorderViewModel& model, QQuickView& settingsWindow)
    : view_(new View(model, settingsWindow)) {}

QuickRecorderWindow::~QuickRecorderWindow() = default;

std::uintptr_t QuickRecorderWindow::handle() const {
    return view_->winId();
}

void QuickRecorderWindow::show(std::function<void()> closed) {
    view_->setOnClosed(std::move(closed));
    view_->show();
}

}  // namespace velmorand
