#include "shortcuts/CarbonHotKeyRegistrar.h"

#include "platform/RunLoop.h"

#include <cassert>
#include <utility>

namespace velmorand {

CarbonHotKeyRegistrar::CarbonHotKeyRegistrar(HotKeyService& service, RunLoop& runLoop, Log& log)
    : service_(service), runLoop_(runLoop), logger_(log, "hotkeys") {}

std::expected<void, GlobalHotKeyError> CarbonHotKeyRegistrar::installHandler(Handler handler) {
    assert(runLoop_.isMainThread());
    handler_ = std::move(handler);
    if (eventHandlerRef_) return {};

    const auto installed = service_.installHandler([weakSelf = weak_from_this()](const HotKeyEvent* event) {
        const auto self = weakSelf.lock();
        return self ? self->hotKeyPressed(event) : noError;
    });
    if (!installed) {
        handler_ = nullptr;
        logger_.error("InstallEventHandler failed: {}", installed.error());
        return std::unexpected(GlobalHotKeyError{GlobalHotKeyError::Case::handlerInstallFailed, installed.error()});
    }
    eventHandlerRef_ = *installed;
    return {};
}

std::expected<void, GlobalHotKeyError> CarbonHotKeyRegistrar::registerHotKey(const HotKey& hotKey, std::uint32_t id) {
    assert(runLoop_.isMainThread());
    const auto [status, reference] =
        service_.registerHotKey(hotKey.keyCode, hotKey.modifiers.rawValue(), {signature, id});
    if (status != noError || !reference) {  // success without a reference could never be unregistered
        logger_.error("RegisterEventHotKey failed id {} result {}", id, status);
        return std::unexpected(GlobalHotKeyError{GlobalHotKeyError::Case::registrationFailed, status});
    }
    hotKeyRefs_.insert_or_assign(id, *reference);
    return {};
}

void CarbonHotKeyRegistrar::unregisterAll() {
    assert(runLoop_.isMainThread());
    for (const auto& [id, reference] : hotKeyRefs_) service_.unregisterHotKey(reference);
    hotKeyRefs_.clear();
}

void CarbonHotKeyRegistrar::uninstallHandler() {
    assert(runLoop_.isMainThread());
    if (const auto reference = std::exchange(eventHandlerRef_, std::nullopt)) service_.removeHandler(*reference);
    handler_ = nullptr;
}

OSStatus CarbonHotKeyRegistrar::hotKeyPressed(const HotKeyEvent* event) {
    if (event == nullptr) return noError;
    const auto pressed = event->hotKeyID();
    if (!pressed) return noError;
    // The signature is not compared: any hot key delivered to this handler counts. The callback runs in a later
    // turn, so that an action never runs inside the event handler.
    runLoop_.post([weakSelf = weak_from_this(), id = pressed->id] {
        const auto self = weakSelf.lock();
        const Handler handler = self ? self->handler_ : nullptr;  // it may uninstall itself while it runs
        if (handler) handler(id);
    });
    return noError;
}

}  // namespace velmorand
