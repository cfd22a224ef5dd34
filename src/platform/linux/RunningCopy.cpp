#include "platform/linux/RunningCopy.h"

#include "platform/Logger.h"
#include "platform/linux/HeldProcess.h"

#include <unistd.h>

#include <csignal>
#include <string>
#include <utility>

namespace velmorand {
namespace {

using namespace std::chrono_literals;

/// For a process that was asked to end, and for the kernel to end one. One that does not answer will hardly do the former.
constexpr auto endPatience = 2s;

/// Copies that come and go at the same moment can make us ask again; they cannot keep us from starting.
constexpr int attempts = 10;

SessionPlace withSilentBus(const Logger& logger) {
    logger.error("The session bus does not answer. There will be no status item and no notification.");
    return {.bus = {}, .busIsSilent = true};
}

/// Why this process has to do without the name of the program.
struct NoName {
    std::string sentence = {};
    bool busIsSilent = false;
};

const NoName noAnswer{.busIsSilent = true};

class PlaceFinder {
public:
    PlaceFinder(EarlyBus bus, const StartupTokens& tokens, const Logger& logger)
        : bus_(std::move(bus)), tokens_(tokens), logger_(logger) {}

    std::expected<SessionPlace, OtherCopyAnswered> find() {
        for (int attempt = 0; attempt < attempts; ++attempt) {
            const auto taken = bus_.takeName();
            if (!taken) {
                return withoutName(
                    {.sentence = "The session bus does not give out the name of the program: " + taken.error().reason,
                     .busIsSilent = taken.error().isSilence});
            }
            if (*taken) return SessionPlace{.bus = std::move(bus_)};
            const auto asked = bus_.owner();
            if (!asked) return withSilentBus(logger_);
            const std::optional<std::string>& owner = *asked;
            if (!owner) continue;
            switch (bus_.activate(*owner, tokens_)) {
                case EarlyBus::Outcome::answered: return std::unexpected(OtherCopyAnswered{});
                case EarlyBus::Outcome::gone: break;
                case EarlyBus::Outcome::refused:
                    return withoutName({"Another program has the name of this one and cannot come to the front."});
                case EarlyBus::Outcome::silent:
                    if (const auto ended = endCopy(*owner); !ended) return withoutName(ended.error());
                    break;
                case EarlyBus::Outcome::busIsSilent: return withSilentBus(logger_);
            }
        }
        return withoutName({"The name of the program changes hands all the time."});
    }

private:
    /// The program stays all the same, without the name or even without a bus.
    [[nodiscard]] SessionPlace withoutName(const NoName& why) const {
        if (why.busIsSilent) return withSilentBus(logger_);
        logger_.error("{} Starting the program again will not find this copy.", why.sentence);
        return {};
    }

    std::expected<void, NoName> endCopy(const std::string& owner) {
        const auto known = bus_.processOf(owner);
        if (!known) return std::unexpected(noAnswer);
        const auto& peer = *known;
        const auto process = peer ? HeldProcess::hold(peer->pid) : std::nullopt;
        const auto isThere = bus_.isThere(owner);
        if (!isThere) return std::unexpected(noAnswer);
        if (!*isThere) return {};
        const auto name = process ? process->programName() : std::nullopt;
        // The connection is still there, so the process that is held is the one that made it.
        if (!name || name != ownProgramName() || peer->user != geteuid())
            return std::unexpected(NoName{"Another program has the name of this one and does not answer."});
        logger_.info("The copy that runs already, process {}, does not answer and is ended.", peer->pid);
        process->sendSignal(SIGTERM);
        process->sendSignal(SIGCONT);  // one that was stopped can then end by itself, and store what waits to be stored
        if (process->endsWithin(endPatience)) return {};
        process->sendSignal(SIGKILL);
        if (process->endsWithin(endPatience)) return {};
        return std::unexpected(NoName{"The copy that runs already does not answer and cannot be ended."});
    }

    EarlyBus bus_;
    const StartupTokens& tokens_;
    const Logger& logger_;
};

}  // namespace

std::expected<SessionPlace, OtherCopyAnswered> takePlaceInSession(const StartupTokens& tokens, Log& log) {
    const Logger logger(log, "app");
    auto bus = EarlyBus::connect();
    if (bus) return PlaceFinder(std::move(*bus), tokens, logger).find();
    if (bus.error() == EarlyBus::Trouble::silent) return withSilentBus(logger);
    logger.info("There is no session bus. Starting the program again will not find this copy.");
    return SessionPlace{};
}

}  // namespace velmorand
