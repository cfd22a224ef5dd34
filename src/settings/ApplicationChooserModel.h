#pragma once

#include "platform/ApplicationChooser.h"
#include "settings/InstalledApplicationsModel.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QObject>
#include <QString>
#include <QUrl>
#include <memory>
#include <optional>

namespace velmorand {

class RunLoop;
class Workspace;

/// The chooser where the system has none: what a panel of the settings window shows, and what its user does.
class ApplicationChooserModel final : public QObject, public ApplicationChooser {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings window")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(QString message READ message NOTIFY isOpenChanged)
    Q_PROPERTY(QString confirmText READ confirmText NOTIFY isOpenChanged)
    Q_PROPERTY(bool allowsSeveral READ allowsSeveral NOTIFY isOpenChanged)
    Q_PROPERTY(QUrl startingFolder READ startingFolder NOTIFY isOpenChanged)
    Q_PROPERTY(QString otherProblem READ otherProblem NOTIFY otherProblemChanged)
    Q_PROPERTY(velmorand::InstalledApplicationsModel* applications READ applications CONSTANT)

public:
    /// Both must outlive the model.
    ApplicationChooserModel(Workspace& workspace, RunLoop& runLoop, QObject* parent = nullptr);
    ~ApplicationChooserModel() override;

    /// The list is made anew at every opening.
    void choose(ApplicationChooserOptions options, Completion completion) override;

    [[nodiscard]] bool isOpen() const { return completion_.has_value(); }
    /// What was asked last.
    [[nodiscard]] const ApplicationChooserOptions& options() const { return options_; }
    [[nodiscard]] QString message() const;
    [[nodiscard]] QString confirmText() const;
    [[nodiscard]] bool allowsSeveral() const { return options_.allowsSeveral; }
    /// Where to look for an application that is not in the list: the user's home where there is no such folder.
    [[nodiscard]] QUrl startingFolder() const;
    /// Why the file that was taken last cannot be chosen; empty when it could.
    [[nodiscard]] QString otherProblem() const { return otherProblem_; }
    [[nodiscard]] InstalledApplicationsModel* applications() { return &applications_; }

    /// Confirms what is chosen; nothing happens while nothing is.
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void cancel();
    /// Takes an application that is not in the list from its file, and chooses it.
    Q_INVOKABLE void addOther(const QUrl& file);

Q_SIGNALS:
    void isOpenChanged();
    void otherProblemChanged();

private:
    using Answer = std::optional<std::vector<std::filesystem::path>>;

    void end(Answer answer);
    void tell(Completion completion, Answer answer);
    void setOtherProblem(const QString& problem);

    Workspace& workspace_;
    RunLoop& runLoop_;
    ApplicationChooserOptions options_;
    std::optional<Completion> completion_;
    QString otherProblem_;
    InstalledApplicationsModel applications_{this};
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace velmorand
