#include "platform/linux/x11/X11RecorderPanelHost.h"

#include <chrono>

namespace velmorand {

std::expected<std::unique_ptr<X11RecorderPanelHost>, std::string> X11RecorderPanelHost::create(
    X11Connection& connection, X11Keyboard& keyboard, RunLoop& runLoop, SessionLock& sessionLock, Log& log,
    std::function<void()> synchroniseViews) {
    const auto atoms = X11Atoms::intern(connection, std::chrono::steady_clock::now() + X11Connection::startTimeout);
    if (!atoms) return std::unexpected("The X server does not answer.");
    return std::unique_ptr<X11RecorderPanelHost>(
        new X11RecorderPanelHost(connection, keyboard, runLoop, sessionLock, log, std::move(synchroniseViews), *atoms));
}

X11RecorderPanelHost::X11RecorderPanelHost(X11Connection& connection, X11Keyboard& keyboard, RunLoop& runLoop,
                                           SessionLock& sessionLock, Log& log, std::function<void()> synchroniseViews,
                                           const X11Atoms& atoms)
    : atoms_(atoms),
      windowManager_(connection, atoms_),
      services_{.connection = connection,
                .runLoop = runLoop,
                .atoms = atoms_,
                .keyboard = keyboard,
                .windowManager = windowManager_,
                .sessionLock = sessionLock,
                .logger = Logger(log, "shortcuts"),
                .synchroniseViews = std::move(synchroniseViews)} {}

X11RecorderPanelHost::~X11RecorderPanelHost() = default;

void X11RecorderPanelHost::show(RecorderPanelEvents events) {
    close();
    auto window = maker_ ? maker_() : nullptr;
    if (window) {
        panel_ = std::make_unique<X11RecorderPanel>(services_, std::move(window), std::move(events));
        return;
    }
    services_.logger.error("The recorder has no window to be shown in.");
    if (events.closed) without_ = services_.runLoop.after({}, std::move(events.closed));
}

void X11RecorderPanelHost::close() {
    panel_.reset();
    without_.cancel();
}

}  // namespace velmorand
