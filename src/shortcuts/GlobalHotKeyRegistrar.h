#pragma once

#include "platform/HotKeyService.h"
#include "shortcuts/KeyboardShortcut.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <string>

namespace velmorand {

/// Why a hot-key operation failed, with the platform's status. Its description is what callers show and log.
struct GlobalHotKeyError {
    enum class Case : std::uint8_t { handlerInstallFailed, registrationFailed };

    Case which;
    OSStatus status;

    bool operator==(const GlobalHotKeyError&) const = default;

    [[nodiscard]] std::string description() const;
};

/// Registers hot keys under small ids and reports presses as those ids. It knows nothing of window actions.
/// Main thread only.
class GlobalHotKeyRegistrar {
public:
    using Handler = std::function<void(std::uint32_t id)>;

    virtual ~GlobalHotKeyRegistrar() = default;
    GlobalHotKeyRegistrar(const GlobalHotKeyRegistrar&) = delete;
    GlobalHotKeyRegistrar& operator=(const GlobalHotKeyRegistrar&) = delete;

    /// Calls `handler` for every later press, in a turn of its own. A second call replaces the handler.
    [[nodiscard]] virtual std::expected<void, GlobalHotKeyError> installHandler(Handler handler) = 0;

    /// Registers one hot key under `id`, which its presses will carry.
    [[nodiscard]] virtual std::expected<void, GlobalHotKeyError> registerHotKey(const HotKey& hotKey,
                                                                                std::uint32_t id) = 0;

    /// Gives back every registered hot key.
    virtual void unregisterAll() = 0;

    /// Removes and drops the handler.
    virtual void uninstallHandler() = 0;

protected:
    GlobalHotKeyRegistrar() = default;
};

}  // namespace velmorand
