#include "settings/ApplicationChooserModel.h"

#include "base/UnicodeText.h"
#include "platform/RunLoop.h"
#include "platform/Workspace.h"
#include "settings/QtText.h"
#include "settings/ShownText.h"

#include <QDir>
#include <QFile>
#include <QUrl>
#include <system_error>
#include <utility>

namespace velmorand {
namespace {

std::filesystem::path pathOf(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

}  // namespace

ApplicationChooserModel::ApplicationChooserModel(Workspace& workspace, RunLoop& runLoop, QObject* parent)
    : QObject(parent), workspace_(workspace), runLoop_(runLoop), folder_(workspace, this) {}

ApplicationChooserModel::~ApplicationChooserModel() = default;

void ApplicationChooserModel::choose(ApplicationChooserOptions options, Completion completion) {
    if (isOpen()) {
        tell(std::move(completion), std::nullopt);
        return;
    }
    options_ = std::move(options);
    completion_ = std::move(completion);
    applications_.setApplications(workspace_.installedApplications(), options_.allowsSeveral);
    hasLookedElsewhere_ = false;
    Q_EMIT isOpenChanged();
}

QString ApplicationChooserModel::message() const {
    return toQString(options_.message);
}

QString ApplicationChooserModel::confirmText() const {
    return toQString(options_.confirmText);
}

void ApplicationChooserModel::confirm() {
    auto chosen = applications_.chosenLocations();
    if (!chosen.empty()) end(std::move(chosen));
}

void ApplicationChooserModel::cancel() {
    end(std::nullopt);
}

void ApplicationChooserModel::accept(int row) {
    if (applications_.chosenCount() == 0)
        applications_.setChosen(row, true);
    else
        confirm();
}

std::filesystem::path ApplicationChooserModel::startingFolder() const {
    std::error_code error;
    const bool isThere = std::filesystem::is_directory(options_.startingFolder, error);
    return isThere ? options_.startingFolder : pathOf(QDir::homePath());
}

void ApplicationChooserModel::lookElsewhere() {
    if (!isOpen()) return;
    const std::filesystem::path wanted = std::exchange(hasLookedElsewhere_, true) ? folder_.folder() : startingFolder();
    if (!folder_.enter(wanted)) folder_.enter("/");
    setElsewhere(true);
}

void ApplicationChooserModel::back() {
    if (isElsewhere_)
        setElsewhere(false);
    else
        cancel();
}

void ApplicationChooserModel::open(int row) {
    if (const auto location = folder_.location(row)) openLocation(*location);
}

int ApplicationChooserModel::leaveFolder() {
    const std::filesystem::path left = folder_.folder();
    openLocation(left.parent_path());
    return folder_.rowOf(left.filename());
}

void ApplicationChooserModel::openPath(const QString& path) {
    QString text = path.trimmed();
    if (text.isEmpty()) return;
    if (const QUrl url(text); url.isLocalFile()) text = url.toLocalFile();
    if (text == u"~" || text.startsWith(u"~/")) text.replace(0, 1, QDir::homePath());
    openLocation(folder_.folder() / pathOf(text));
}

void ApplicationChooserModel::openLocation(const std::filesystem::path& location) {
    std::error_code error;
    const std::filesystem::path whole = location.lexically_normal();
    const QString name = shownText(toQString(validUtf8(whole.string())));
    if (!std::filesystem::exists(whole, error))
        setOtherProblem(tr("There is no “%1”.").arg(name));
    else if (!std::filesystem::is_directory(whole, error))
        addOther(whole);
    else if (folder_.enter(whole))
        setOtherProblem({});
    else
        setOtherProblem(tr("“%1” cannot be opened.").arg(name));
}

void ApplicationChooserModel::addOther(const std::filesystem::path& file) {
    const auto identifier = workspace_.bundleIdentifier(file);
    if (!identifier) {
        setOtherProblem(tr("“%1” is not an application with windows of its own.")
                            .arg(shownText(toQString(validUtf8(file.filename().string())))));
        return;
    }
    const int row = applications_.choose({file, *identifier, workspace_.displayName(file), workspace_.icon(file)});
    setElsewhere(false);
    Q_EMIT otherAdded(row);
}

/// What was wrong over there is not wrong over here.
void ApplicationChooserModel::setElsewhere(bool isElsewhere) {
    setOtherProblem({});
    if (isElsewhere == isElsewhere_) return;
    isElsewhere_ = isElsewhere;
    Q_EMIT isElsewhereChanged();
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
    setElsewhere(false);
    Q_EMIT isOpenChanged();
}

void ApplicationChooserModel::tell(Completion completion, Answer answer) {
    runLoop_.post(
        [weakAlive = std::weak_ptr(alive_), completion = std::move(completion), answer = std::move(answer)]() mutable {
            if (!weakAlive.expired()) completion(std::move(answer));
        });
}

}  // namespace velmorand
