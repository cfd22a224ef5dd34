#pragma once

#include "platform/HotKeyService.h"
#include "platform/Logger.h"
#include "shortcuts/GlobalHotKeyRegistrar.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace velmorand {

class RunLoop;

/// The registrar over the platform's hot-key service. Destroying it unregisters nothing by itself.
/// Presses reach a handler only while the registrar is alive, so it must be owned by a `std::shared_ptr`.
class CarbonHotKeyRegistrar final : public GlobalHotKeyRegistrar,
                                    public std::enable_shared_from_this<CarbonHotKeyRegistrar> {
public:
    /// The characters V, L, M, R, most significant first: whose hot keys these are.
    static constexpr std::uint32_t signature = 0x564C4D52;

    CarbonHotKeyRegistrar(HotKeyService& service, RunLoop& runLoop, Log& log);

    [[nodiscard]] std::expected<void, GlobalHotKeyError> installHandler(Handler handler) override;
    [[nodiscard]] std::expected<void, GlobalHotKeyError> registerHotKey(const HotKey& hotKey,
                                                                        std::uint32_t id) override;
    void unregisterAll() override;
    void uninstallHandler() override;

private:
    OSStatus hotKeyPressed(const HotKeyEvent* event);

    HotKeyService& service_;
    RunLoop& runLoop_;
    Logger logger_;
    std::map<std::uint32_t, HotKeyReference> hotKeyRefs_;
    std::optional<HotKeyHandlerReference> eventHandlerRef_;
    Handler handler_;
};

}  // namespace velmorand
