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

class PlaceFinder {
public:
    PlaceFinder(EarlyBus bus, const StartupTokens& tokens, const Logger& logger)
        : bus_(std::move(bus)), tokens_(tokens), logger_(logger) {}

    std::expected<SessionPlace, OtherCopyAnswered> find() {
        for (int attempt = 0; attempt < attempts; ++attempt) {
            const auto taken = bus_.takeName();
            if (!taken)
                return withoutName("The session bus does not give out the name of the program: " + taken.error());
            if (*taken) return SessionPlace{.bus = std::move(bus_)};
            const auto owner = bus_.owner();
            if (!owner) continue;
            switch (bus_.activate(*owner, tokens_)) {
                case EarlyBus::Outcome::answered: return std::unexpected(OtherCopyAnswered{});
                case EarlyBus::Outcome::gone: break;
                case EarlyBus::Outcome::refused:
                    return withoutName("Another program has the name of this one and cannot come to the front.");
                case EarlyBus::Outcome::silent:
                    if (const auto ended = endCopy(*owner); !ended) return withoutName(ended.error());
                    break;
            }
        }
        return withoutName("The name of the program changes hands all the time.");
    }

private:
    [[nodiscard]] SessionPlace withoutName(const std::string& reason) const {
        logger_.error("{} Starting the program again will not find this copy.", reason);
        return {};
    }

    std::expected<void, std::string> endCopy(const std::string& owner) {
        const auto peer = bus_.processOf(owner);
        const auto process = peer ? HeldProcess::hold(peer->pid) : std::nullopt;
        if (!bus_.isThere(owner)) return {};
        const auto name = process ? process->programName() : std::nullopt;
        // The connection is still there, so the process that is held is the one that made it.
        if (!name || name != ownProgramName() || peer->user != geteuid())
            return std::unexpected("Another program has the name of this one and does not answer.");
        logger_.info("The copy that runs already, process {}, does not answer and is ended.", peer->pid);
        process->sendSignal(SIGTERM);
        process->sendSignal(SIGCONT);  // one that was stopped can then end by itself, and store what waits to be stored
        if (process->endsWithin(endPatience)) return {};
        process->sendSignal(SIGKILL);
        if (process->endsWithin(endPatience)) return {};
        return std::unexpected("The copy that runs already does not answer and cannot be ended.");
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
    const bool isSilent = bus.error() == EarlyBus::Trouble::silent;
    if (isSilent)
        logger.error("The session bus does not answer. There will be no status item and no notification.");
    else
        logger.info("There is no session bus. Starting the program again will not find this copy.");
    return SessionPlace{.bus = {}, .busIsSilent = isSilent};
}

}  // namespace velmorand
