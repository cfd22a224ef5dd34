#pragma once

#include "platform/Log.h"

#include <string>

namespace velmorand {

/// Writes to the journal when systemd started the program with its standard error connected to it, with the fields
/// SUBSYSTEM and CATEGORY; else one line each to standard error: `velmorand [category] level: text`.
class LinuxLog final : public Log {
public:
    explicit LinuxLog(std::string subsystem);

    void write(LogLevel level, std::string_view category, std::string_view text) override;

private:
    std::string subsystem_;
    bool writesToJournal_;
};

/// `text` with line ends and other control characters shown escaped, so that it stays one line.
[[nodiscard]] std::string asOneLine(std::string_view text);

}  // namespace velmorand
