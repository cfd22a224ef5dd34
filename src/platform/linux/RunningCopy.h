#pragma once

#include "platform/linux/EarlyBus.h"
#include "platform/linux/StartupToken.h"

#include <expected>
#include <optional>

namespace velmorand {

class Log;

/// Another copy of the program runs in the session and has answered that it comes to the front.
struct OtherCopyAnswered {};

/// How this process stands in its session, when it is the one that stays.
struct SessionPlace {
    /// Has the name of the program; absent where that cannot be had.
    std::optional<EarlyBus> bus = {};
    /// Whether somebody has the address of the session bus who does not answer: the toolkit would wait for him for ever.
    bool busIsSilent = false;
};

/// Finds out whether this process is the only copy of the program in its session. A copy that runs is asked to come to the
/// front, with `tokens`. One that does not answer, which still keeps the hot keys, is ended if it is our user's and of the
/// same program, and its place is taken. Whatever else stands in the way, this process stays, without the name. Every wait
/// ends; what happened is logged.
[[nodiscard]] std::expected<SessionPlace, OtherCopyAnswered> takePlaceInSession(const StartupTokens& tokens, Log& log);

}  // namespace velmorand
