#pragma once

#include <cstdint>
#include <string_view>

namespace velmorand {

enum class LogLevel : std::uint8_t { debug, info, error };

/// Where log lines go. The subsystem is the application's identifier, the category names the part of the program.
/// Never fails and never blocks on the reader.
class Log {
public:
    virtual ~Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// `text` is one line; line ends inside it are shown escaped.
    virtual void write(LogLevel level, std::string_view category, std::string_view text) = 0;

protected:
    Log() = default;
};

}  // namespace velmorand
