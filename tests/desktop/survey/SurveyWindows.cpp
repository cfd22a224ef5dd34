#include "desktop/survey/SurveyWindows.h"

#include "desktop/harness/TestWindows.h"

#include <array>
#include <utility>

namespace velmorand::desktop {

namespace {

using enum SurveyWindow;

constexpr std::array windows{plain, staticGravity, gtk3ServerSide, gtk3ClientSide, gtk4,
                             qt,    terminal,      dialog,         minimumSize,    fixedSize};

/// Larger than most targets, smaller than the displays.
constexpr int largeMinimumWidth = 860;
constexpr int largeMinimumHeight = 640;

}  // namespace

std::span<const SurveyWindow> surveyWindows() {
    return windows;
}

std::string_view headingOf(SurveyWindow window) {
    switch (window) {
        case plain: return "no toolkit";
        case staticGravity: return "static gravity";
        case gtk3ServerSide: return "GTK 3";
        case gtk3ClientSide: return "GTK 3, own title bar";
        case gtk4: return "GTK 4";
        case qt: return "Qt";
        case terminal: return "terminal";
        case dialog: return "dialog";
        case minimumSize: return "large minimum";
        case fixedSize: return "fixed size";
    }
    std::unreachable();
}

std::vector<std::string> commandOf(SurveyWindow window, const std::string& title) {
    TestWindow description{.title = title};
    switch (window) {
        case plain: return plainWindow(description);
        case staticGravity: description.hasStaticGravity = true; return plainWindow(description);
        case gtk3ServerSide: return serverSideWindow(description);
        case gtk3ClientSide: return clientSideWindow(description);
        case gtk4: return gtk4Window(description);
        case qt: return qtWindow(description);
        case terminal: return terminalWindow(description);
        case dialog: description.isDialog = true; return plainWindow(description);
        case minimumSize:
            description.width = description.minimumWidth = largeMinimumWidth;
            description.height = description.minimumHeight = largeMinimumHeight;
            return plainWindow(description);
        case fixedSize: description.isResizable = false; return plainWindow(description);
    }
    std::unreachable();
}

}  // namespace velmorand::desktop
