#include "platform/linux/UrlOpener.h"

#include "platform/linux/DetachedProcess.h"

#include <QProcess>
#include <QTimer>
#include <chrono>
#include <csignal>
#include <utility>

namespace velmorand {
namespace {

constexpr const char* questioner = "xdg-mime";
constexpr const char* opener = "xdg-open";
/// A question that takes longer has no answer.
constexpr std::chrono::seconds patience{10};

QString handlerType(std::string_view url) {
    const std::string scheme(url.substr(0, url.find(':')));
    return QStringLiteral("x-scheme-handler/%1").arg(QString::fromStdString(scheme));
}

/// The signals that end this program are held back in it, and would be in its children.
void unblockSignals() {
    sigset_t none{};
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace

void UrlOpener::open(std::string_view url, Completion completion) {
    auto* question = new QProcess(&questions_);
    question->setChildProcessModifier(unblockSignals);
    question->setProgram(QString::fromLatin1(questioner));
    question->setArguments({QStringLiteral("query"), QStringLiteral("default"), handlerType(url)});
    question->setStandardInputFile(QProcess::nullDevice());
    question->setStandardErrorFile(QProcess::nullDevice());
    const auto answered = [this, question, url = std::string(url), completion = std::move(completion)] {
        question->deleteLater();
        completion(openWith(question->readAllStandardOutput().trimmed().toStdString(), url));
    };
    QObject::connect(question, &QProcess::finished, question, answered, Qt::QueuedConnection);
    QObject::connect(
        question, &QProcess::errorOccurred, question,
        [this, answered](QProcess::ProcessError error) {
            if (error != QProcess::FailedToStart) return;
            logger_.error("Cannot start {}", questioner);
            answered();  // it will not finish
        },
        Qt::QueuedConnection);
    question->start();
    QTimer::singleShot(patience, question, &QProcess::kill);
}

bool UrlOpener::openWith(std::string_view handler, const std::string& url) {
    if (handler.empty()) {
        logger_.error("Nothing to open {} with: {} names no program for it", url, questioner);
        return false;
    }
    const auto program = findProgram(opener);
    if (!program) {
        logger_.error("Cannot open {}: not found in PATH: {}", url, opener);
        return false;
    }
    const auto started = startDetached(*program, {url});
    if (!started) logger_.error("Cannot start {}: {}", program->native(), started.error().message());
    return started.has_value();
}

}  // namespace velmorand
