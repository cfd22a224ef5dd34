#pragma once

#include "platform/linux/StartupToken.h"

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>

struct sd_bus;

namespace velmorand {

/// A connection of our own to the session bus. The toolkit's comes too late to ask for the name of the program, and making
/// it waits without end for a bus that hangs; here every wait ends. Used by one thread.
class EarlyBus {
public:
    /// How long one answer may take. A program that has just been started on a machine that is busy with a log-in may well
    /// take seconds to answer, and must not be taken for one that hangs; the user of one that does hang waits this long.
    static constexpr std::chrono::seconds patience{5};

    /// What the program is called on the bus, and where its object is.
    static constexpr const char* name = VELMORAND_IDENTIFIER;
    static constexpr const char* path = "/app/velmorand/Velmorand";
    static constexpr const char* interface = "org.freedesktop.Application";

    /// Why there is no connection.
    enum class Trouble : std::uint8_t {
        /// There is no bus, or none that lets us in.
        absent,
        /// Somebody has the bus's address, but does not answer.
        silent,
    };

    /// The bus itself did not answer. Nor will it let anybody else in, who might wait for that without end.
    struct Silence {};

    /// Why the name of the program cannot be had.
    struct Refusal {
        std::string reason;
        bool isSilence = false;
    };

    /// What became of a call to another program.
    enum class Outcome : std::uint8_t {
        answered,
        /// It answered that it cannot do this.
        refused,
        /// It has left the bus.
        gone,
        /// It is there, and does not answer.
        silent,
        /// The bus itself does not answer any more.
        busIsSilent,
    };

    /// The process that has a connection to the bus, as the bus says.
    struct Peer {
        pid_t pid = -1;
        uid_t user = 0;
    };

    [[nodiscard]] static std::expected<EarlyBus, Trouble> connect();

    /// Takes the name of the program without waiting for its turn. Answers whether it is ours now, and not another
    /// program's.
    [[nodiscard]] std::expected<bool, Refusal> takeName();

    /// The connection that has the name of the program; absent when none has.
    [[nodiscard]] std::expected<std::optional<std::string>, Silence> owner();

    /// Whether this connection is on the bus.
    [[nodiscard]] std::expected<bool, Silence> isThere(const std::string& connection);

    /// Absent when the connection is gone or the bus does not know.
    [[nodiscard]] std::expected<std::optional<Peer>, Silence> processOf(const std::string& connection);

    /// Asks the program at this connection to come to the front; nothing is started for it.
    [[nodiscard]] Outcome activate(const std::string& connection, const StartupTokens& tokens);

    /// Not null, except after a move.
    [[nodiscard]] sd_bus* raw() const { return bus_.get(); }

private:
    struct Close {
        void operator()(sd_bus* bus) const;
    };

    explicit EarlyBus(sd_bus* bus) : bus_(bus) {}

    std::unique_ptr<sd_bus, Close> bus_;
};

}  // namespace velmorand
