#pragma once

#include "platform/Log.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace velmorand {

/// One line that was logged.
struct LogLine {
    LogLevel level{};
    std::string category;
    std::string text;

    bool operator==(const LogLine&) const = default;
};

/// Keeps every line for tests to read.
class SimulatedLog final : public Log {
public:
    void write(LogLevel level, std::string_view category, std::string_view text) override {
        std::string line;
        for (const char character : text) {
            if (character == '\n')
                line += "\\n";
            else
                line += character;
        }
        lines_.push_back({level, std::string(category), std::move(line)});
    }

    [[nodiscard]] const std::vector<LogLine>& lines() const { return lines_; }
    void clear() { lines_.clear(); }

    /// Whether exactly this line was logged.
    [[nodiscard]] bool contains(LogLevel level, std::string_view category, std::string_view text) const {
        return std::ranges::any_of(lines_, [&](const LogLine& line) {
            return line.level == level && line.category == category && line.text == text;
        });
    }

private:
    std::vector<LogLine> lines_;
};

}  // namespace velmorand
