#include "platform/linux/KdeAnimationSpeed.h"

#include "platform/linux/RegularFile.h"

#include <charconv>
#include <cmath>
#include <ranges>
#include <utility>

namespace velmorand {
namespace {

constexpr std::string_view groupHeader = "[KDE]";
constexpr std::string_view key = "AnimationDurationFactor";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// "Key[$i]" is the key with marks, such as that the user may not change it.
std::string_view withoutMarks(std::string_view name) {
    const auto mark = name.find("[$");
    return mark == std::string_view::npos ? name : trimmed(name.substr(0, mark));
}

std::optional<double> factorIn(std::string_view text) {
    double factor = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), factor);
    const bool isFactor = error == std::errc{} && end == text.data() + text.size();
    return isFactor && std::isfinite(factor) && factor >= 0 ? std::optional(factor) : std::nullopt;
}

bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_size == other.st_size &&
           one.st_mtim.tv_sec == other.st_mtim.tv_sec && one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

}  // namespace

/// A key that stands there twice has its last value, as for KDE itself.
std::optional<double> decodeAnimationDurationFactor(std::string_view text) {
    std::optional<double> factor;
    bool inGroup = false;
    for (const auto part : std::views::split(text, '\n')) {
        const std::string_view line = trimmed(std::string_view(part));
        if (line.starts_with('[')) inGroup = withoutMarks(line) == groupHeader;
        const auto equals = line.find('=');
        if (!inGroup || equals == std::string_view::npos) continue;
        if (withoutMarks(trimmed(line.substr(0, equals))) == key) factor = factorIn(trimmed(line.substr(equals + 1)));
    }
    return factor;
}

KdeAnimationSpeed::KdeAnimationSpeed(std::filesystem::path file) : file_(std::move(file)) {
    static_cast<void>(reducesMotion());
}

std::optional<bool> KdeAnimationSpeed::reducesMotion() {
    struct stat now{};
    if (stat(file_.c_str(), &now) != 0) now = {};
    if (!isSameFile(std::exchange(read_, now), now)) factor_ = decodeAnimationDurationFactor(readRegularFile(file_));
    return factor_ ? std::optional(*factor_ == 0) : std::nullopt;
}

}  // namespace velmorand
