#include "platform/linux/TrustPrompt.h"

#include "platform/UserNotificationCenter.h"

#include <fmt/format.h>

#include <utility>

namespace velmorand {
namespace {

constexpr std::string_view title = "Velmorand";

}  // namespace

TrustPrompt::TrustPrompt(UserNotificationCenter& center, Log& log, std::string_view bundleIdentifier)
    : center_(center), logger_(log, "ax"), identifier_(fmt::format("{}.trust", bundleIdentifier)) {}

void TrustPrompt::show(std::string_view sentence) {
    logger_.error("{}", sentence);
    // At log-in the answer may take its time. What is said meanwhile is said once, as it is then.
    const bool isAsking = std::exchange(next_, std::string(sentence)).has_value();
    if (isAsking) return;
    center_.notificationSettings([this, alive = std::weak_ptr(alive_)](NotificationAuthorization authorization) {
        if (alive.expired()) return;
        const auto waiting = std::exchange(next_, std::nullopt);
        if (waiting && authorization != NotificationAuthorization::denied) notify(*waiting);
    });
}

void TrustPrompt::notify(const std::string& sentence) {
    center_.add({identifier_, {std::string(title), sentence, false}},
                [this, alive = std::weak_ptr(alive_)](const std::expected<void, UserNotificationError>& result) {
                    if (!alive.expired() && !result) logger_.error("{}", result.error().description);
                });
}

}  // namespace velmorand
