#pragma once

#include <QtQmlIntegration/qqmlintegration.h>

#include <QObject>
#include <QString>
#include <string>

namespace velmorand {

class Bundle;

/// The short version, then the build in parentheses; "0.1.0 (1)" when the bundle says neither.
[[nodiscard]] std::string versionText(const Bundle& bundle);

/// Who the program is, for the sidebar and the About pane.
class ApplicationInformation final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(QString versionText MEMBER versionText_ CONSTANT)
    Q_PROPERTY(QString bundleIdentifier MEMBER bundleIdentifier_ CONSTANT)
    Q_PROPERTY(QString contactAddress MEMBER contactAddress_ CONSTANT)

public:
    explicit ApplicationInformation(const Bundle& bundle, QObject* parent = nullptr);

private:
    QString versionText_;
    QString bundleIdentifier_;
    QString contactAddress_;
};

}  // namespace velmorand
