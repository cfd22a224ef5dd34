#include "settings/ApplicationChooserModel.h"

#include "platform/RunLoop.h"
#include "platform/Workspace.h"
#include "settings/QtText.h"

#include <QDir>
#include <system_error>
#include <utility>

namespace velmorand {

ApplicationChooserModel::ApplicationChooserModel(Workspace& workspace, RunLoop& runLoop, QObject* parent)
    : QObject(parent), workspace_(workspace), runLoop_(runLoop) {}

ApplicationChooserModel::~ApplicationChooserModel() = default;

void ApplicationChooserModel::choose(ApplicationChooserOptions options, Completion completion) {
    if (isOpen()) {
        tell(std::move(completion), std::nullopt);
        return;
    }
    options_ = std::move(options);
    completion_ = std::move(completion);
    applications_.setApplications(workspace_.installedApplications(), options_.allowsSeveral);
    setOtherProblem({});
    Q_EMIT isOpenChanged();
}

QString ApplicationChooserModel::message() const {
    return toQString(options_.message);
}

QString ApplicationChooserModel::confirmText() const {
    return toQString(options_.confirmText);
}

QUrl ApplicationChooserModel::startingFolder() const {
    std::error_code error;
    const bool isThere = std::filesystem::is_directory(options_.startingFolder, error);
    return QUrl::fromLocalFile(isThere ? QFile::decodeName(options_.startingFolder.c_str()) : QDir::homePath());
}

void ApplicationChooserModel::confirm() {
    auto chosen = applications_.chosenLocations();
    if (!chosen.empty()) end(std::move(chosen));
}

void ApplicationChooserModel::cancel() {
    end(std::nullopt);
}

void ApplicationChooserModel::addOther(const QUrl& file) {
    const std::filesystem::path location = QFile::encodeName(file.toLocalFile()).toStdString();
    const auto identifier = workspace_.bundleIdentifier(location);
    if (!identifier) {
        setOtherProblem(tr("“%1” is not an application.").arg(file.fileName()));
        return;
    }
    setOtherProblem({});
    applications_.choose({location, *identifier, workspace_.displayName(location), workspace_.icon(location)});
}

void ApplicationChooserModel::setOtherProblem(const QString& problem) {
    if (problem == otherProblem_) return;
    otherProblem_ = problem;
    Q_EMIT otherProblemChanged();
}

/// A view may answer the signal by opening the panel anew; the answer is on its way then.
void ApplicationChooserModel::end(Answer answer) {
    auto completion = std::exchange(completion_, std::nullopt);
    if (!completion) return;
    tell(std::move(*completion), std::move(answer));
    Q_EMIT isOpenChanged();
}

void ApplicationChooserModel::tell(Completion completion, Answer answer) {
    runLoop_.post(
        [weakAlive = std::weak_ptr(alive_), completion = std::move(completion), answer = std::move(answer)]() mutable {
            if (!weakAlive.expired()) completion(std::move(answer));
        });
}

}  // namespace velmorand
