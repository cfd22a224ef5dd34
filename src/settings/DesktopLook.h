#pragma once

#include <QtQmlIntegration/qqmlintegration.h>

#include <QObject>
#include <QString>

class QJSEngine;
class QQmlEngine;

namespace velmorand {

/// What the desktop says about how things look, as far as the fixed look of the window follows it.
class DesktopLook final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString fontFamily MEMBER fontFamily_ CONSTANT)
    Q_PROPERTY(double textScale MEMBER textScale_ CONSTANT)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY reducesMotionChanged)

public:
    explicit DesktopLook(QObject* parent);

    /// Has the views of the engine follow this look. It must outlive the engine.
    void offerTo(QQmlEngine& engine);
    /// How the engine finds it; called by the engine alone.
    static DesktopLook* create(const QQmlEngine* engine, const QJSEngine* scriptEngine);

    /// Whether nothing is to move.
    [[nodiscard]] bool reducesMotion() const { return reducesMotion_; }
    void setReducesMotion(bool reducesMotion);

    /// Whether there is a picture behind the address of an application's icon: in the desktop's theme, or in a file.
    Q_INVOKABLE static bool hasPicture(const QString& iconSource);

Q_SIGNALS:
    void reducesMotionChanged();

private:
    /// The first one that is installed of those the look was made with.
    QString fontFamily_;
    /// How much larger than usual the user wants text, beside the scale of everything.
    double textScale_;
    bool reducesMotion_ = false;
};

}  // namespace velmorand
