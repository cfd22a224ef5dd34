#pragma once

#include "settings/SliderRule.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QObject>
#include <QString>
#include <functional>

namespace velmorand {

/// A number of the preferences as a slider shows it.
class PreferenceSlider final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by a settings model")
    Q_PROPERTY(double from READ from CONSTANT)
    Q_PROPERTY(double to READ to CONSTANT)
    Q_PROPERTY(double stepSize READ stepSize CONSTANT)
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(QString text READ text NOTIFY valueChanged)

public:
    /// `read` answers the stored number, `write` stores another.
    PreferenceSlider(const SliderRule& rule, std::function<double()> read, std::function<void(double)> write,
                     QObject* parent = nullptr);

    [[nodiscard]] double from() const { return rule_.limit.lowest; }
    [[nodiscard]] double to() const { return rule_.limit.highest; }
    [[nodiscard]] double stepSize() const { return rule_.step(); }
    [[nodiscard]] double value() const { return read_(); }
    [[nodiscard]] QString text() const;

    /// Stores the nearest step; what is no number changes nothing. `valueChanged` follows in any case, as the slider may
    /// stand where the value is not.
    void setValue(double value);

Q_SIGNALS:
    void valueChanged();

private:
    SliderRule rule_;
    std::function<double()> read_;
    std::function<void(double)> write_;
};

}  // namespace velmorand
