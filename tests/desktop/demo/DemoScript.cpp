#include "desktop/demo/DemoScript.h"

#include <array>
#include <utility>

namespace velmorand::desktop {

namespace {

using enum DemoWindow;

constexpr auto steps = std::to_array<DemoStep>({
    {clientSide, "left", PixelRect{120, 90, 700, 480}},
    {serverSide, "right", PixelRect{300, 180, 680, 460}, "halves"},
    {terminal, "top", PixelRect{220, 300, 700, 420}},
    {terminal, "bottom"},
    {terminal, "restore"},

    {terminal, "topLeft", PixelRect{500, 330, 720, 440}},
    {clientSide, "topRight", PixelRect{100, 420, 640, 460}},
    {serverSide, "bottomLeft", PixelRect{760, 120, 660, 500}},
    {serverSide, "bottomRight", std::nullopt, "quarters"},

    {terminal, "leftThird", PixelRect{700, 200, 640, 420}},
    {clientSide, "centerThird", PixelRect{60, 100, 720, 520}},
    {serverSide, "rightThird", PixelRect{200, 380, 700, 460}, "thirds"},

    {clientSide, "leftTwoThirds", PixelRect{800, 340, 640, 480}, "two-thirds"},
    {terminal, "rightTwoThirds", PixelRect{140, 160, 700, 440}},
    {serverSide, "centerTwoThirds", PixelRect{420, 90, 760, 520}},

    {terminal, "nextDisplay", PixelRect{800, 0, 800, 960}},
    {clientSide, "previousDisplay", PixelRect{200, 150, 700, 600}},
    {serverSide, "nextDisplay", PixelRect{-1000, 100, 600, 500}, "displays"},
    {terminal, "previousDisplay"},

    {terminal, "maximize", PixelRect{400, 120, 720, 460}},
    {serverSide, "maximize", PixelRect{-1150, 200, 640, 420}},
    {clientSide, "maximize", PixelRect{300, 200, 700, 500}, "maximize"},

    {clientSide, "center", PixelRect{820, 300, 720, 480}},
    {terminal, "center", PixelRect{-1240, 60, 740, 450}},
    {serverSide, "center", PixelRect{40, 20, 560, 420}, "center"},

    {terminal, "restore"},
    {clientSide, "restore"},
    {serverSide, "restore", std::nullopt, "restore"},
});

}  // namespace

std::string_view nameOf(DemoWindow window) {
    switch (window) {
        case terminal: return "terminal";
        case clientSide: return "client-side";
        case serverSide: return "server-side";
    }
    std::unreachable();
}

std::span<const DemoStep> demoScript() {
    return steps;
}

}  // namespace velmorand::desktop
