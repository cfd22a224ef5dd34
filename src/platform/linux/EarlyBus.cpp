#include "platform/linux/EarlyBus.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace velmorand {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr const char* busService = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

struct DropMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, DropMessage>;

struct DropCredentials {
    void operator()(sd_bus_creds* credentials) const { sd_bus_creds_unref(credentials); }
};
using Credentials = std::unique_ptr<sd_bus_creds, DropCredentials>;

/// Whether the bus itself, which was asked something, has let the time pass.
bool isSilence(int answer) {
    return answer == -ETIMEDOUT;
}

/// Until the bus has let us in.
std::expected<void, EarlyBus::Trouble> waitUntilReady(sd_bus* bus) {
    const auto deadline = Clock::now() + EarlyBus::patience;
    while (true) {
        const int ready = sd_bus_is_ready(bus);
        if (ready > 0) return {};
        const int done = ready < 0 ? ready : sd_bus_process(bus, nullptr);
        if (done < 0) return std::unexpected(EarlyBus::Trouble::absent);
        if (done > 0) continue;
        const auto left = std::chrono::ceil<microseconds>(deadline - Clock::now());
        if (left.count() <= 0) return std::unexpected(EarlyBus::Trouble::silent);
        const int woken = sd_bus_wait(bus, static_cast<std::uint64_t>(left.count()));
        if (woken < 0 && woken != -EINTR) return std::unexpected(EarlyBus::Trouble::absent);
    }
}

bool append(sd_bus_message* call, const char* key, const std::optional<std::string>& value) {
    return !value || sd_bus_message_append(call, "{sv}", key, "s", value->c_str()) >= 0;
}

Message activation(sd_bus* bus, const std::string& connection, const StartupTokens& tokens) {
    sd_bus_message* made = nullptr;
    sd_bus_message_new_method_call(bus, &made, connection.c_str(), EarlyBus::path, EarlyBus::interface, "Activate");
    Message call(made);
    const bool isWritten =
        call && sd_bus_message_set_auto_start(made, 0) >= 0 && sd_bus_message_open_container(made, 'a', "{sv}") >= 0 &&
        append(made, "activation-token", tokens.activationToken) &&
        append(made, "desktop-startup-id", tokens.desktopStartupId) && sd_bus_message_close_container(made) >= 0;
    return isWritten ? std::move(call) : nullptr;
}

}  // namespace

/// What has not been answered by now will not be: the bus tells those who asked.
void EarlyBus::Close::operator()(sd_bus* bus) const {
    sd_bus_close_unref(bus);
}

std::expected<EarlyBus, EarlyBus::Trouble> EarlyBus::connect() {
    sd_bus* made = nullptr;
    const int opened = sd_bus_open_user(&made);
    if (opened == -EAGAIN) return std::unexpected(Trouble::silent);  // so many wait there already
    if (opened < 0) return std::unexpected(Trouble::absent);
    EarlyBus bus(made);
    if (const auto ready = waitUntilReady(made); !ready) return std::unexpected(ready.error());
    sd_bus_set_method_call_timeout(made, static_cast<std::uint64_t>(microseconds(patience).count()));
    return bus;
}

std::expected<bool, EarlyBus::Refusal> EarlyBus::takeName() {
    const int taken = sd_bus_request_name(raw(), name, 0);
    if (taken >= 0) return true;
    if (taken == -EEXIST) return false;
    return std::unexpected(Refusal{std::generic_category().message(-taken), isSilence(taken)});
}

std::expected<std::optional<std::string>, EarlyBus::Silence> EarlyBus::owner() {
    sd_bus_message* got = nullptr;
    const int asked =
        sd_bus_call_method(raw(), busService, busPath, busService, "GetNameOwner", nullptr, &got, "s", name);
    const Message reply(got);
    if (isSilence(asked)) return std::unexpected(Silence{});
    const char* connection = nullptr;
    if (!reply || sd_bus_message_read(got, "s", &connection) < 0) return std::nullopt;
    return connection;
}

std::expected<bool, EarlyBus::Silence> EarlyBus::isThere(const std::string& connection) {
    sd_bus_message* got = nullptr;
    const int asked = sd_bus_call_method(raw(), busService, busPath, busService, "NameHasOwner", nullptr, &got, "s",
                                         connection.c_str());
    const Message reply(got);
    if (isSilence(asked)) return std::unexpected(Silence{});
    int hasOwner = 0;
    return reply && sd_bus_message_read(got, "b", &hasOwner) >= 0 && hasOwner != 0;
}

std::expected<std::optional<EarlyBus::Peer>, EarlyBus::Silence> EarlyBus::processOf(const std::string& connection) {
    sd_bus_creds* got = nullptr;
    const int asked = sd_bus_get_name_creds(raw(), connection.c_str(), SD_BUS_CREDS_PID | SD_BUS_CREDS_EUID, &got);
    const Credentials credentials(got);
    if (isSilence(asked)) return std::unexpected(Silence{});
    Peer peer;
    const bool isKnown =
        credentials && sd_bus_creds_get_pid(got, &peer.pid) >= 0 && sd_bus_creds_get_euid(got, &peer.user) >= 0;
    return isKnown ? std::optional(peer) : std::nullopt;
}

/// A program that leaves and one that keeps silent make the same error: whether it is there tells them apart.
EarlyBus::Outcome EarlyBus::activate(const std::string& connection, const StartupTokens& tokens) {
    Message call = activation(raw(), connection, tokens);
    if (!call) call = activation(raw(), connection, {});  // better without them than not at all
    if (!call) return Outcome::refused;
    sd_bus_message* got = nullptr;
    const int answered = sd_bus_call(raw(), call.get(), 0, nullptr, &got);
    const Message reply(got);
    if (answered >= 0) return Outcome::answered;
    const auto there = isThere(connection);
    if (!there) return Outcome::busIsSilent;
    if (!*there) return Outcome::gone;
    return answered == -ETIMEDOUT ? Outcome::silent : Outcome::refused;
}

}  // namespace velmorand
