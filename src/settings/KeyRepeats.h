#pragma once

#include <QObject>

namespace velmorand {

/// Tells repetitions of a key that is held from presses, for one window. On X11 a repetition is a release and a press, and
/// the toolkit takes it for what it is only when it has both at once: on a busy machine a key that is held would press again
/// and again. The two have one time, though, and nobody presses a key as fast.
class KeyRepeats final : public QObject {
public:
    /// Belongs to the window, whose events it sees first.
    explicit KeyRepeats(QObject* window);

protected:
    bool eventFilter(QObject* window, QEvent* event) override;

private:
    int releasedKey_ = 0;
    quint64 releasedAt_ = 0;
};

}  // namespace velmorand
