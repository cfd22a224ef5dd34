#include "platform/linux/DetachedProcess.h"

#include "platform/linux/HiddenSessionBus.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QStandardPaths>
#include <QString>
#include <array>
#include <cerrno>
#include <csignal>

namespace velmorand {
namespace {

/// What this program ignores is ignored by the programs it starts, too, unless they are told otherwise.
void resetSignals() {
    std::signal(SIGPIPE, SIG_DFL);
    sigset_t none{};
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// In the child: only what is safe after a fork of a program with several threads.
[[noreturn]] void becomeProgram(const char* path, char* const* arguments, char* const* environment, int report) {
    setsid();
    const pid_t child = fork();
    if (child == 0) {
        resetSignals();
        const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (nothing >= 0) dup2(nothing, STDIN_FILENO);
        execve(path, arguments, environment);
    }
    if (child <= 0) {
        const int code = errno;
        [[maybe_unused]] const ssize_t written = write(report, &code, sizeof code);
    }
    _exit(0);
}

/// As the system wants them; good as long as the texts are.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

}  // namespace

std::optional<std::filesystem::path> findProgram(const std::string& name) {
    const QString found = QStandardPaths::findExecutable(QString::fromStdString(name));
    return found.isEmpty() ? std::nullopt : std::optional(std::filesystem::path(found.toStdString()));
}

std::expected<void, std::error_code> startDetached(const std::filesystem::path& program,
                                                   const std::vector<std::string>& arguments) {
    std::vector<std::string> words{program.native()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const std::vector<char*> argumentPointers = pointersTo(words);
    std::vector<std::string> environment = environmentForPrograms();
    const std::vector<char*> environmentPointers = pointersTo(environment);

    std::array<int, 2> report{};  // closed unread when the program starts, as the child's end is closed then
    if (pipe2(report.data(), O_CLOEXEC) != 0) return std::unexpected(lastError());
    const pid_t child = fork();
    if (child == 0) becomeProgram(program.c_str(), argumentPointers.data(), environmentPointers.data(), report[1]);
    const std::error_code forked = child < 0 ? lastError() : std::error_code{};
    close(report[1]);
    int code = 0;
    ssize_t count = 0;
    do count = read(report[0], &code, sizeof code);
    while (count < 0 && errno == EINTR);
    close(report[0]);
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {}
    if (forked) return std::unexpected(forked);
    if (count == sizeof code) return std::unexpected(std::error_code(code, std::generic_category()));
    return {};
}

}  // namespace velmorand
