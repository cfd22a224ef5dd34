#include "support/SimulatedPrinting.h"

#include "support/Printing.h"

#include <fmt/format.h>

#include <string_view>
#include <utility>

namespace velmorand {
namespace {

std::string_view nameOf(LogLevel level) {
    switch (level) {
        case LogLevel::debug: return "debug";
        case LogLevel::info: return "info";
        case LogLevel::error: return "error";
    }
    return "?";
}

template <typename Value>
void printOptional(std::string_view name, const std::optional<Value>& value, std::ostream* out) {
    *out << ' ' << name << ' ';
    if (value)
        PrintTo(*value, out);
    else
        *out << "none";
}

}  // namespace

void PrintTo(const SimulatedWrite& write, std::ostream* out) {
    *out << "window " << std::to_underlying(write.window);
    printOptional("position", write.position, out);
    printOptional("size", write.size, out);
}

void PrintTo(const LogLine& line, std::ostream* out) {
    *out << fmt::format("{} [{}] \"{}\"", nameOf(line.level), line.category, line.text);
}

}  // namespace velmorand
