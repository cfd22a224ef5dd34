#pragma once

#include "platform/Log.h"

#include <fmt/format.h>

#include <string_view>
#include <utility>

namespace velmorand {

/// Writes formatted lines of one category. A small value; the log must outlive it.
class Logger {
public:
    /// `category` must live as long as the logger; it is a literal everywhere.
    Logger(Log& log, std::string_view category) : log_(&log), category_(category) {}

    template <typename... Arguments>
    void debug(fmt::format_string<Arguments...> format, Arguments&&... arguments) const {
        log_->write(LogLevel::debug, category_, fmt::format(format, std::forward<Arguments>(arguments)...));
    }

    template <typename... Arguments>
    void info(fmt::format_string<Arguments...> format, Arguments&&... arguments) const {
        log_->write(LogLevel::info, category_, fmt::format(format, std::forward<Arguments>(arguments)...));
    }

    template <typename... Arguments>
    void error(fmt::format_string<Arguments...> format, Arguments&&... arguments) const {
        log_->write(LogLevel::error, category_, fmt::format(format, std::forward<Arguments>(arguments)...));
    }

private:
    Log* log_;
    std::string_view category_;
};

}  // namespace velmorand
