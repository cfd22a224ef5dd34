#pragma once

#include "base/Rect.h"
#include "platform/Accessibility.h"
#include "platform/Displays.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

/// Names one simulated window for the life of the desktop; never used again for another.
enum class SimulatedWindowID : std::uint64_t {};

/// One window and how it answers. Frames are in the accessibility space.
struct SimulatedWindow {
    Rect frame{100, 100, 800, 600};
    std::optional<std::string> role = "AXWindow";
    std::optional<std::string> subrole = "AXStandardWindow";
    bool minimized = false;
    bool fullScreen = false;
    bool positionSettable = true;
    bool sizeSettable = true;

    /// Sizes are clamped to these and then rounded down to whole steps above the minimum.
    Size minimumSize{1, 1};
    std::optional<Size> maximumSize;
    Size sizeStep{1, 1};
    /// Writes succeed and change nothing.
    bool ignoresWrites = false;

    /// How much longer each answer to a write takes than any other. A write that takes longer than the messaging timeout
    /// fails then, and changes nothing.
    double writeSeconds = 0;
    /// A write of that attribute fails with this error.
    std::optional<AXError> positionWriteError;
    std::optional<AXError> sizeWriteError;
    /// Which of the next writes fail for once, without an answer: from the lowest bit on, one for each write.
    std::uint32_t failingWrites = 0;
    /// A read of that attribute fails with this error, or answers this value instead of the true one.
    std::map<std::string, AXError, std::less<>> readErrors;
    std::map<std::string, AXAttributeValue, std::less<>> readOverrides;
};

/// One application and how it answers.
struct SimulatedProcess {
    std::int32_t pid = 0;
    std::optional<std::string> bundleIdentifier = "org.example.Application";
    std::optional<std::string> localizedName = "Application";
    /// Does not answer: every call takes its whole messaging timeout and fails.
    bool frozen = false;
    /// How long every answer takes; a call for which that is longer than the messaging timeout fails then.
    double answerSeconds = 0;
    /// Front to back.
    std::vector<SimulatedWindowID> windows;
    std::optional<SimulatedWindowID> focusedWindow;
    std::optional<SimulatedWindowID> mainWindow;
    /// Reading the window list fails with this error.
    std::optional<AXError> windowListError;
};

/// The state of an in-memory desktop: its displays, applications and windows. Tests set it, the simulated services
/// read and change it.
class SimulatedDesktop {
public:
    /// Adds an application without windows and makes it the frontmost one.
    SimulatedProcess& addProcess(std::int32_t pid);
    /// Adds a window in front of the application's others and makes it the focused and main one.
    SimulatedWindowID addWindow(std::int32_t pid, SimulatedWindow window = {});

    /// The application must exist.
    [[nodiscard]] SimulatedProcess& process(std::int32_t pid) { return processes_.at(pid); }
    /// The window must exist.
    [[nodiscard]] SimulatedWindow& window(SimulatedWindowID id) { return windows_.at(id).window; }

    [[nodiscard]] SimulatedProcess* findProcess(std::int32_t pid);
    [[nodiscard]] SimulatedWindow* findWindow(SimulatedWindowID id);
    [[nodiscard]] SimulatedProcess* ownerOf(SimulatedWindowID id);

    /// Where every window is.
    [[nodiscard]] std::map<SimulatedWindowID, Rect> windowFrames() const;

    /// The window closes; its identifier is never used again.
    void closeWindow(SimulatedWindowID id);
    /// The application ends with all its windows.
    void removeProcess(std::int32_t pid);

    /// Absent when no application is frontmost.
    std::optional<std::int32_t> frontmost;
    /// Bottom-left origin, primary first.
    std::vector<DisplayDescription> displays;
    /// Whether this program may use the accessibility interface, and what the user answers to the prompt.
    bool trusted = true;
    bool trustedAfterPrompt = false;
    int promptCount = 0;

    /// Applies a write as the window takes it: ignored, clamped, rounded.
    void applyPosition(SimulatedWindowID id, Point position);
    void applySize(SimulatedWindowID id, Size size);

private:
    struct OwnedWindow {
        std::int32_t pid;
        SimulatedWindow window;
    };

    std::map<std::int32_t, SimulatedProcess> processes_;
    std::map<SimulatedWindowID, OwnedWindow> windows_;
    std::uint64_t lastWindow_ = 0;
};

}  // namespace velmorand
