#pragma once

#include "settings/ShortcutRow.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QList>
#include <QObject>
#include <QQmlListProperty>
#include <QString>
#include <functional>

namespace velmorand {

/// One group of actions in the Shortcuts pane.
class ShortcutSection final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the shortcut settings")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QQmlListProperty<velmorand::ShortcutRow> rows READ rowList CONSTANT)

public:
    /// `record` is called with the action for which the user wants to record a shortcut.
    ShortcutSection(WindowActionGroup group, const std::function<void(WindowAction)>& record,
                    QObject* parent = nullptr);

    [[nodiscard]] QString title() const;
    /// One for each action, in catalogue order. They live as long as the section.
    [[nodiscard]] const QList<ShortcutRow*>& rows() const { return rows_; }
    [[nodiscard]] QQmlListProperty<ShortcutRow> rowList() { return {this, &rows_}; }

private:
    WindowActionGroup group_;
    QList<ShortcutRow*> rows_;
};

}  // namespace velmorand
