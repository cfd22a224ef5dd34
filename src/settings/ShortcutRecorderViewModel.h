#pragma once

#include "base/Subscription.h"
#include "shortcuts/ShortcutRecorderModel.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>
#include <string_view>

namespace velmorand {

class ShortcutRecorderPanel;

/// What the recorder panel shows, and what its buttons do. It takes no keys. What a closed panel has shown stays.
class ShortcutRecorderViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(QString prompt READ prompt NOTIFY changed)
    Q_PROPERTY(QList<QString> glyphs READ glyphs NOTIFY changed)
    Q_PROPERTY(bool isCaptured READ isCaptured NOTIFY changed)
    Q_PROPERTY(QString spoken READ spoken NOTIFY changed)
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    Q_PROPERTY(bool hintIsError READ hintIsError NOTIFY changed)
    Q_PROPERTY(Question question READ question NOTIFY changed)
    Q_PROPERTY(QString questionTitle READ questionTitle NOTIFY changed)
    Q_PROPERTY(QString questionText READ questionText NOTIFY changed)
    Q_PROPERTY(QString cancelTitle READ cancelTitle CONSTANT)
    Q_PROPERTY(QString confirmTitle READ confirmTitle NOTIFY changed)
    Q_PROPERTY(QString removeTitle READ removeTitle NOTIFY changed)

public:
    // Views know enumerators only by names that begin with a capital.
    // NOLINTBEGIN(readability-identifier-naming)
    /// What is asked about the captured combination.
    enum class Question {
        NoQuestion,
        Conflict,   ///< other actions have it
        Fragile,    ///< it has neither Command nor Control
        VoiceOver,  ///< it gets in the way of the screen reader
    };
    // NOLINTEND(readability-identifier-naming)
    Q_ENUM(Question)

    /// `panel` must outlive the view model.
    explicit ShortcutRecorderViewModel(ShortcutRecorderPanel& panel, QObject* parent = nullptr);
    ~ShortcutRecorderViewModel() override;

    [[nodiscard]] QString prompt() const;
    /// What stands on the key caps: the captured combination, or else the modifiers that are held.
    [[nodiscard]] QStringList glyphs() const;
    /// Whether a combination waits for an answer; else the key is still to come.
    [[nodiscard]] bool isCaptured() const;
    /// The captured combination as it is read aloud; empty without one.
    [[nodiscard]] QString spoken() const;
    /// Empty while a question is asked, unless something was wrong with a later key press.
    [[nodiscard]] QString hint() const;
    [[nodiscard]] bool hintIsError() const;
    [[nodiscard]] Question question() const;
    /// Empty without a question.
    [[nodiscard]] QString questionTitle() const;
    [[nodiscard]] QString questionText() const;

    [[nodiscard]] QString cancelTitle() const;
    /// Empty where there is no such button: nothing is asked; the action has no shortcut.
    [[nodiscard]] QString confirmTitle() const;
    [[nodiscard]] QString removeTitle() const;

    /// The buttons. Without a recording, or without the button, none does anything.
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void remove();

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] const ShortcutRecorderModel& model() const;
    [[nodiscard]] QString sentence(std::string_view ShortcutRecorderQuestion::* part) const;

    ShortcutRecorderPanel& panel_;
    Subscription model_;
};

}  // namespace velmorand
