#include "settings/QuickRecorderWindow.h"

#include "settings/QtText.h"
#include "settings/ShortcutRecorderViewModel.h"
#include "shortcuts/ShortcutRecorderModel.h"

#include <QEvent>
#include <QQuickItem>
#include <QQuickView>
#include <QScreen>
#include <algorithm>
#include <utility>

namespace velmorand {
namespace {

/// In the middle of the window, and on its display.
QPoint placeOver(const QWindow& window, const QSize& size) {
    const QRect free = window.screen()->availableGeometry();
    const QPoint middle = window.geometry().center() - QPoint(size.width() / 2, size.height() / 2);
    return {std::clamp(middle.x(), free.left(), std::max(free.left(), free.right() - size.width())),
            std::clamp(middle.y(), free.top(), std::max(free.top(), free.bottom() - size.height()))};
}

}  // namespace

class QuickRecorderWindow::View final : public QQuickView {
public:
    View(ShortcutRecorderViewModel& model, QQuickView& settingsWindow) : QQuickView(settingsWindow.engine(), nullptr) {
        setTitle(toQString(recorderTitle));
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
        setPosition(placeOver(settingsWindow, size()));
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
    }

    std::function<void()> closed_;
};

void QuickRecorderWindow::DeleteLater::operator()(View* view) const {
    view->hide();
    view->deleteLater();
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
