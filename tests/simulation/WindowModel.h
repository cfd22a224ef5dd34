#pragma once

#include "simulation/TapeReader.h"

#include <optional>
#include <string>

/// What has to be asked of other applications' windows and written to them, and what follows from their answers. Each
/// function reads from the tape the calls that have to be there.
namespace velmorand::simulation {

/// The window of the application that an action works on.
[[nodiscard]] std::optional<SimulatedWindowID> readFocusedWindow(TapeReader& tape, std::int32_t pid);

/// Absent when it cannot be read or has no area.
[[nodiscard]] std::optional<Rect> readFrame(TapeReader& tape, SimulatedWindowID window);

[[nodiscard]] bool readCanSetFrame(TapeReader& tape, SimulatedWindowID window);

/// Position, then size, exactly these. Answers the sentence for the user when a write failed.
[[nodiscard]] std::optional<std::string> readWrite(TapeReader& tape, SimulatedWindowID window, const Rect& frame);

/// A frame that is written, verified and, where it did not land, written once more.
struct ModelWrite {
    std::optional<std::string> failure = {};
    /// What was read at the end.
    std::optional<Rect> final = {};
    bool landed = false;
};
[[nodiscard]] ModelWrite readVerifiedWrite(TapeReader& tape, SimulatedWindowID window, const Rect& frame);

}  // namespace velmorand::simulation
