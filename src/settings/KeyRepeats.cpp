#include "settings/KeyRepeats.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace velmorand {

KeyRepeats::KeyRepeats(QObject* window) : QObject(window) {
    window->installEventFilter(this);
}

bool KeyRepeats::eventFilter(QObject* window, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (event->type() == QEvent::KeyRelease) {
        releasedKey_ = key.key();
        releasedAt_ = key.timestamp();
        return false;
    }
    const bool isRepetition = key.timestamp() != 0 && key.timestamp() == releasedAt_ && key.key() == releasedKey_;
    if (!isRepetition || key.isAutoRepeat()) return false;
    QKeyEvent repetition(QEvent::KeyPress, key.key(), key.modifiers(), key.nativeScanCode(), key.nativeVirtualKey(),
                         key.nativeModifiers(), key.text(), true, static_cast<quint16>(key.count()));
    repetition.setTimestamp(key.timestamp());
    QCoreApplication::sendEvent(window, &repetition);
    return true;
}

}  // namespace velmorand
