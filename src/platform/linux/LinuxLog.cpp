#include "platform/linux/LinuxLog.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <utility>

#define SD_JOURNAL_SUPPRESS_LOCATION
#include <poll.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <syslog.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

namespace velmorand {
namespace {

/// systemd names the device and inode of the stream it connected; it counts only while standard error is that one.
bool standardErrorIsJournal() {
    const char* stream = std::getenv("JOURNAL_STREAM");
    struct stat status{};
    if (stream == nullptr || fstat(STDERR_FILENO, &status) != 0) return false;
    return fmt::format("{}:{}", status.st_dev, status.st_ino) == stream;
}

std::string_view name(LogLevel level) {
    switch (level) {
        case LogLevel::debug: return "debug";
        case LogLevel::info: return "info";
        case LogLevel::error: return "error";
    }
    std::unreachable();
}

int syslogPriority(LogLevel level) {
    switch (level) {
        case LogLevel::debug: return LOG_DEBUG;
        case LogLevel::info: return LOG_INFO;
        case LogLevel::error: return LOG_ERR;
    }
    std::unreachable();
}

/// A reader that is asleep must not hold the program up: what does not fit any more is dropped. A pipe that can be
/// written to takes PIPE_BUF bytes at least.
void writeWithoutWaiting(std::string_view line) {
    while (!line.empty()) {
        pollfd ready{.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
        if (poll(&ready, 1, 0) != 1 || (ready.revents & POLLOUT) == 0) return;
        const ssize_t count = ::write(STDERR_FILENO, line.data(), std::min<std::size_t>(line.size(), PIPE_BUF));
        if (count <= 0) return;
        line.remove_prefix(static_cast<std::size_t>(count));
    }
}

}  // namespace

std::string asOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        const auto byte = static_cast<unsigned char>(character);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
        if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {  // the control characters beyond ASCII
            line += fmt::format("\\u{:04x}", next);
            ++i;
        } else if (byte == '\n')
            line += "\\n";
        else if (byte < 0x20 || byte == 0x7f)
            line += fmt::format("\\x{:02x}", byte);
        else
            line += character;
    }
    return line;
}

LinuxLog::LinuxLog(std::string subsystem)
    : subsystem_(std::move(subsystem)), writesToJournal_(standardErrorIsJournal()) {
    std::signal(SIGPIPE, SIG_IGN);  // a reader that goes away is no reason to end
}

void LinuxLog::write(LogLevel level, std::string_view category, std::string_view text) {
    const std::string line = asOneLine(text);
    if (writesToJournal_) {
        std::array fields{"MESSAGE=" + line, fmt::format("PRIORITY={}", syslogPriority(level)),
                          "SUBSYSTEM=" + subsystem_, fmt::format("CATEGORY={}", category),
                          std::string("SYSLOG_IDENTIFIER=velmorand")};
        std::array<iovec, fields.size()> vectors{};
        std::ranges::transform(fields, vectors.begin(),
                               [](std::string& field) { return iovec{field.data(), field.size()}; });
        sd_journal_sendv(vectors.data(), static_cast<int>(vectors.size()));
        return;
    }
    const std::string whole = fmt::format("velmorand [{}] {}: {}\n", category, name(level), line);
    writeWithoutWaiting(whole);
}

}  // namespace velmorand
