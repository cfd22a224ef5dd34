#include "platform/linux/x11/X11Applications.h"

#include "platform/linux/ApplicationIdentity.h"
#include "platform/linux/ProcessWatcher.h"
#include "platform/linux/x11/X11PropertyReader.h"

#include <sys/stat.h>
#include <unistd.h>
#include <xcb/res.h>

#include <array>
#include <cstring>

namespace velmorand {
namespace {

constexpr std::size_t longestIdentifier = 256;

std::string hostName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

bool processExists(std::int32_t pid) {
    struct stat status{};
    return stat(("/proc/" + std::to_string(pid)).c_str(), &status) == 0;
}

}  // namespace

X11Applications::X11Applications(X11Connection& connection, const X11Atoms& atoms, X11WindowRegistry& registry,
                                 ProcessWatcher& processWatcher, std::optional<std::string> ownIdentifier)
    : connection_(connection),
      atoms_(atoms),
      registry_(registry),
      processWatcher_(processWatcher),
      ownIdentifier_(std::move(ownIdentifier)),
      entries_(DesktopEntries::ofSession()) {
    const Deadline deadline = std::chrono::steady_clock::now() + X11Connection::startTimeout;
    serverKnowsProcesses_ = connection.extension(xcb_res_id, deadline) != nullptr;
}

std::expected<RunningApplication, X11Failure> X11Applications::applicationOf(WindowID window, Deadline deadline) {
    if (const auto* known = registry_.application(window)) return *known;
    const auto process = processOf(window.number, deadline);
    if (!process) return std::unexpected(process.error());
    const std::optional<std::int32_t> pid = *process;
    // From here on the number stands for one process. Was the window there after that, it is this process's.
    if (pid) processWatcher_.watch(*pid);
    RunningApplication application = identify(window.number, pid, deadline);
    if (!registry_.isCurrent(window)) return std::unexpected(X11Failure::error);
    // What could not be read in time is asked for again.
    const bool isCertain = std::chrono::steady_clock::now() < deadline && !connection_.isLost();
    if (isCertain) registry_.setApplication(window, application);
    return application;
}

/// The server's own knowledge first, which no client can forge; else what the window says, where that can be true.
/// A window that was opened from another machine has no process here, whoever relays it.
std::expected<std::optional<std::int32_t>, X11Failure> X11Applications::processOf(xcb_window_t window,
                                                                                  Deadline deadline) {
    const auto machineRequest =
        requestProperty(connection_, window, XCB_ATOM_WM_CLIENT_MACHINE, x11_property_limit::text);
    const auto pidRequest =
        requestProperty(connection_, window, atoms_[X11AtomName::netWMPid], x11_property_limit::numbers);
    const auto machine = readProperty(connection_, machineRequest, deadline);
    const auto pidProperty = readProperty(connection_, pidRequest, deadline);
    if (!machine) return std::unexpected(machine.error());
    if (!pidProperty) return std::unexpected(pidProperty.error());

    const std::array textTypes{std::uint32_t{XCB_ATOM_STRING}, std::uint32_t{atoms_[X11AtomName::utf8String]}};
    const auto machineName = decodeIdentifier(*machine, textTypes, longestIdentifier);
    if (machineName && *machineName != hostName()) return std::nullopt;
    const auto process = processByServer(window, deadline);
    if (!process || *process) return process;

    const auto claims = decodeItems(*pidProperty, XCB_ATOM_CARDINAL);
    if (!machineName || !claims || claims->size() != 1) return std::nullopt;
    const auto claimed = static_cast<std::int32_t>(claims->front());
    return claimed > 1 && processExists(claimed) ? std::optional(claimed) : std::nullopt;
}

std::expected<std::optional<std::int32_t>, X11Failure> X11Applications::processByServer(xcb_window_t window,
                                                                                        Deadline deadline) {
    if (!serverKnowsProcesses_) return std::nullopt;  // asking all the same would end the connection
    const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto reply = connection_.reply<xcb_res_query_client_ids_reply_t>(
        xcb_res_query_client_ids(connection_.raw(), 1, &wanted), deadline);
    if (!reply && reply.error() != X11Failure::error) return std::unexpected(reply.error());
    if (!reply) return std::nullopt;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply->get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        const bool isPid = (ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (!isPid || xcb_res_client_id_value_value_length(ids.data) < 1) continue;
        const auto pid = static_cast<std::int32_t>(*xcb_res_client_id_value_value(ids.data));
        if (pid > 0) return pid;
    }
    return std::nullopt;
}

/// Every connection of a client whose process is not known counts as an application of its own.
std::int32_t X11Applications::pidOfClient(xcb_window_t window) {
    const std::uint32_t client = window & ~connection_.setup().resource_id_mask;
    const auto [entry, isNew] = clientPids_.try_emplace(client, 0);
    if (isNew) entry->second = --lastClientPid_;
    return entry->second;
}

void X11Applications::forget(std::int32_t pid) {
    std::erase_if(clientPids_, [pid](const auto& entry) { return entry.second == pid; });
}

RunningApplication X11Applications::identify(xcb_window_t window, std::optional<std::int32_t> pid, Deadline deadline) {
    const auto text = [&](xcb_atom_t property) {
        return readPropertyNow(connection_, window, property, x11_property_limit::text, deadline);
    };
    const std::array textTypes{std::uint32_t{XCB_ATOM_STRING}, std::uint32_t{atoms_[X11AtomName::utf8String]}};
    const auto identifier = [&](X11AtomName property) {
        return decodeIdentifier(text(atoms_[property]), textTypes, longestIdentifier);
    };
    const X11WindowClass windowClass = decodeWindowClass(text(XCB_ATOM_WM_CLASS), XCB_ATOM_STRING);
    const ApplicationIdentity identity =
        identifyApplication({.pid = pid,
                             .declaredDesktopFile = identifier(X11AtomName::kdeDesktopFile),
                             .declaredApplicationID = identifier(X11AtomName::gtkApplicationID),
                             .windowClass = windowClass.className,
                             .windowInstance = windowClass.instance},
                            entries_);
    const auto usable = [](const std::optional<std::string>& found) {
        return found && isApplicationIdentifier(*found) ? found : std::nullopt;
    };
    const bool isOurs = pid == getpid();
    return {pid ? *pid : pidOfClient(window), isOurs ? ownIdentifier_ : usable(identity.identifier),
            usable(identity.name)};
}

}  // namespace velmorand
