#include "app/AppDelegate.h"
#include "platform/Platform.h"
#include "settings/SettingsModule.h"

#include <cstdio>
#include <memory>

/// Nothing happens here but the making of the platform and of the delegate that builds everything on it.
int main(int argumentCount, char** arguments) {
    auto platform = velmorand::makePlatform(argumentCount, arguments);
    if (!platform) {
        std::fprintf(stderr, "velmorand: %s\n", platform.error().message.c_str());
        return platform.error().exitStatus;
    }
    const auto delegate = std::make_shared<velmorand::AppDelegate>(**platform, velmorand::makeSettingsWindowOfModule);
    velmorand::Application& application = (*platform)->application();
    application.setDelegate(delegate);
    return application.run();
}
