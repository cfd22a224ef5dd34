#pragma once

#include "windows/WindowAction.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace velmorand {

/// One action in the Shortcuts pane.
class ShortcutRow final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shortcut settings")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString toolTip READ toolTip CONSTANT)
    Q_PROPERTY(Miniature miniature READ miniature CONSTANT)
    Q_PROPERTY(QRectF targetArea READ targetArea CONSTANT)
    Q_PROPERTY(bool hasShortcut READ hasShortcut NOTIFY shortcutChanged)
    // Under this name the checker of the views knows the type.
    Q_PROPERTY(QList<QString> glyphs READ glyphs NOTIFY shortcutChanged)
    Q_PROPERTY(QString spoken READ spoken NOTIFY shortcutChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(bool isBeingRecorded READ isBeingRecorded NOTIFY isBeingRecordedChanged)

public:
    // Views know enumerators only by names that begin with a capital.
    // NOLINTBEGIN(readability-identifier-naming)
    /// The kind of little picture that shows what the action does.
    enum class Miniature { Fraction, Maximize, Center, Restore, NextDisplay, PreviousDisplay };
    // NOLINTEND(readability-identifier-naming)
    Q_ENUM(Miniature)

    /// `record` is called when the user wants to record a shortcut for the action.
    ShortcutRow(WindowAction action, std::function<void()> record, QObject* parent = nullptr);

    [[nodiscard]] WindowAction action() const { return action_; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString toolTip() const;
    [[nodiscard]] Miniature miniature() const;
    /// Where a window goes, in fractions of the screen from its top left corner; the whole screen for every action that
    /// is not a fraction.
    [[nodiscard]] QRectF targetArea() const;

    [[nodiscard]] bool hasShortcut() const { return shortcut_.has_value(); }
    /// What stands on the key caps; empty without a shortcut.
    [[nodiscard]] QStringList glyphs() const;
    /// The shortcut as it is read aloud; without one the text in its place, "None".
    [[nodiscard]] QString spoken() const;
    /// What is wrong with the shortcut; empty when nothing is.
    [[nodiscard]] QString problem() const { return problem_; }
    [[nodiscard]] bool isBeingRecorded() const { return isBeingRecorded_; }

    /// What equals the present value is not told.
    void setShortcut(const std::optional<KeyboardShortcut>& shortcut);
    void setProblem(const QString& problem);
    void setBeingRecorded(bool isBeingRecorded);

    /// Opens the recorder for the action.
    Q_INVOKABLE void record() { record_(); }

Q_SIGNALS:
    void shortcutChanged();
    void problemChanged();
    void isBeingRecordedChanged();

private:
    WindowAction action_;
    std::function<void()> record_;
    std::optional<KeyboardShortcut> shortcut_;
    QString problem_;
    bool isBeingRecorded_ = false;
};

}  // namespace velmorand
