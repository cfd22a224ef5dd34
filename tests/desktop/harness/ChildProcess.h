#pragma once

#include "desktop/harness/HarnessError.h"

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmorand::desktop {

/// The whole environment of a process: nothing is inherited beside it.
using Environment = std::map<std::string, std::string>;

/// How a process ended: by leaving with a code, or by a signal. Exactly one of the two is set.
struct ExitStatus {
    std::optional<int> code;
    std::optional<int> signal;

    friend bool operator==(const ExitStatus&, const ExitStatus&) = default;

    [[nodiscard]] bool isSuccess() const { return code == 0; }
    /// "exit code 0", "signal 15".
    [[nodiscard]] std::string text() const;
};

/// A child process that does not outlive this object, nor this process. It leads its own process group, so that what it
/// starts itself ends with it. Not for use from several threads.
class ChildProcess {
public:
    struct Options {
        /// The program, looked up in this process's PATH when it has no slash, and its arguments.
        std::vector<std::string> arguments = {};
        Environment environment = {};
        /// Receives standard output and standard error, appended.
        std::filesystem::path logFile = {};
        /// Gives the child a pipe as its descriptor 3, on which servers report the address they chose.
        bool reportsOnDescriptor3 = false;
    };

    /// Fails when the log file cannot be opened or the program cannot be executed.
    [[nodiscard]] static std::expected<ChildProcess, HarnessError> start(const Options& options);

    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    /// Ends the process as terminate() does.
    ~ChildProcess();

    [[nodiscard]] pid_t pid() const { return pid_; }
    /// File name of the program.
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] bool isRunning();

    /// The first line written to descriptor 3, without its end; absent when there is none within \p timeout or the
    /// process was not started with that descriptor. To be asked once.
    [[nodiscard]] std::optional<std::string> reportedLine(std::chrono::milliseconds timeout);

    /// How the process ended, or absent when it still runs after \p timeout. May be asked again after the end.
    std::optional<ExitStatus> wait(std::chrono::milliseconds timeout);
    /// Asks the process to end (SIGTERM), ends it after \p timeout (SIGKILL), and ends what is left of its group.
    ExitStatus terminate(std::chrono::milliseconds timeout = std::chrono::seconds(5));
    /// Sends a signal to the process alone; nothing when it has ended.
    void sendSignal(int signal) const;
    /// Stops it from running until thaw(), as a hanging program would.
    void freeze();
    void thaw();

    [[nodiscard]] const std::filesystem::path& logFile() const { return logFile_; }
    /// What the log file holds from byte \p from on.
    [[nodiscard]] std::string log(std::uintmax_t from = 0) const;
    /// The length of the log file in bytes, to read on from there later.
    [[nodiscard]] std::uintmax_t logSize() const;
    /// The last \p lines lines of the log under a heading with the program's name, for failure messages.
    [[nodiscard]] std::string logTail(std::size_t lines = 30) const;

private:
    ChildProcess() = default;
    void reap();
    void closeDescriptors();

    pid_t pid_ = -1;
    int pidDescriptor_ = -1;
    int reportDescriptor_ = -1;
    std::string name_;
    std::filesystem::path logFile_;
    std::optional<ExitStatus> status_;
};

}  // namespace velmorand::desktop
