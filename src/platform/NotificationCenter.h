#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace velmorand {

/// What a notification centre tells.
enum class NotificationName : std::uint8_t {
    applicationTerminated,    ///< `NSWorkspaceDidTerminateApplicationNotification`, on the workspace's centre
    screenParametersChanged,  ///< `NSApplicationDidChangeScreenParametersNotification`, on the default centre
    applicationBecameActive,  ///< `NSApplicationDidBecomeActiveNotification`, on the default centre
};

struct Notification {
    NotificationName name{};
    /// The application it is about (`NSWorkspaceApplicationKey`); absent when it is about none or unknown.
    std::optional<std::int32_t> pid;

    bool operator==(const Notification&) const = default;
};

enum class ObserverID : std::uint64_t {};

/// Tells observers of events of the desktop. Main thread only; callbacks run in turns of the main loop, never
/// inside a call into the platform.
class NotificationCenter {
public:
    using Callback = std::function<void(const Notification&)>;

    virtual ~NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    /// Calls `callback` for each later notification of this name until the observer is removed.
    [[nodiscard]] virtual ObserverID addObserver(NotificationName name, Callback callback) = 0;

    /// The observer is not called again, also not for a notification that is being delivered. An unknown id is
    /// ignored.
    virtual void removeObserver(ObserverID id) = 0;

protected:
    NotificationCenter() = default;
};

}  // namespace velmorand
