#include "platform/linux/LinuxLog.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <utility>

#define SD_JOURNAL_SUPPRESS_LOCATION
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

}  // namespace

std::string asOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte == '\n')
            line += "\\n";
        else if (byte < 0x20 || byte == 0x7f)
            line += fmt::format("\\x{:02x}", byte);
        else
            line += character;
    }
    return line;
}

LinuxLog::LinuxLog(std::string subsystem)
    : subsystem_(std::move(subsystem)), writesToJournal_(standardErrorIsJournal()) {}

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
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}

}  // namespace velmorand
