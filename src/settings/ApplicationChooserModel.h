#pragma once

#include "platform/ApplicationChooser.h"
#include "settings/ApplicationFolderModel.h"
#include "settings/InstalledApplicationsModel.h"

#include <QtQmlIntegration/qqmlintegration.h>

#include <QObject>
#include <QString>
#include <filesystem>
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
    Q_PROPERTY(bool isElsewhere READ isElsewhere NOTIFY isElsewhereChanged)
    Q_PROPERTY(QString otherProblem READ otherProblem NOTIFY otherProblemChanged)
    Q_PROPERTY(velmorand::InstalledApplicationsModel* applications READ applications CONSTANT)
    Q_PROPERTY(velmorand::ApplicationFolderModel* folder READ folder CONSTANT)

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
    /// Whether the user looks through the folders of the machine, and no longer through the list.
    [[nodiscard]] bool isElsewhere() const { return isElsewhere_; }
    /// Why what was taken last from elsewhere cannot be chosen, or not be opened; empty when it could.
    [[nodiscard]] QString otherProblem() const { return otherProblem_; }
    [[nodiscard]] InstalledApplicationsModel* applications() { return &applications_; }
    [[nodiscard]] ApplicationFolderModel* folder() { return &folder_; }

    /// Confirms what is chosen; nothing happens while nothing is.
    Q_INVOKABLE void confirm();
    /// What the return key does at this row of the list: confirms what is chosen, and while nothing is, chooses the row.
    Q_INVOKABLE void accept(int row);
    Q_INVOKABLE void cancel();

    /// Leaves the list for the folders; the first time it is the wanted folder, or the user's home where there is no such
    /// folder, and then the one that was left.
    Q_INVOKABLE void lookElsewhere();
    /// Comes back from the folders to the list, or else cancels.
    Q_INVOKABLE void back();
    /// Opens the folder in this row of the folder that is shown, or takes the application in it.
    Q_INVOKABLE void open(int row);
    /// Shows the folder around the one that is shown; its row there.
    Q_INVOKABLE int leaveFolder();
    /// Opens the folder, or takes the application, at a path as users write it: absolute, from the home folder on ("~"),
    /// from the folder that is shown on, or as an address of a file.
    Q_INVOKABLE void openPath(const QString& path);

    /// Takes an application that is not in the list from its file, and chooses it; the list is shown again. What is no
    /// application leaves everything as it is, and the problem says so.
    void addOther(const std::filesystem::path& file);

Q_SIGNALS:
    void isOpenChanged();
    void isElsewhereChanged();
    void otherProblemChanged();
    /// An application from elsewhere is chosen, in this row of the list.
    void otherAdded(int row);

private:
    using Answer = std::optional<std::vector<std::filesystem::path>>;

    void end(Answer answer);
    void tell(Completion completion, Answer answer);
    void setElsewhere(bool isElsewhere);
    void setOtherProblem(const QString& problem);
    [[nodiscard]] std::filesystem::path startingFolder() const;
    void openLocation(const std::filesystem::path& location);

    Workspace& workspace_;
    RunLoop& runLoop_;
    ApplicationChooserOptions options_;
    std::optional<Completion> completion_;
    bool isElsewhere_ = false;
    bool hasLookedElsewhere_ = false;  // since it was opened
    QString otherProblem_;
    InstalledApplicationsModel applications_{this};
    ApplicationFolderModel folder_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace velmorand
