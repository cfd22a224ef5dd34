#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmorand {

/// What the user is asked (`NSOpenPanel`).
struct ApplicationChooserOptions {
    /// What the choice is for, as one sentence.
    std::string message = {};
    /// The title of the button that confirms the choice.
    std::string confirmText = {};
    /// Where to begin, if there is such a folder.
    std::filesystem::path startingFolder = {};
    bool allowsSeveral = false;

    bool operator==(const ApplicationChooserOptions&) const = default;
};

/// Lets the user choose applications (`NSOpenPanel` for application bundles): in front of the window that has the
/// keyboard if there is one. Main thread only.
class ApplicationChooser {
public:
    /// Told the locations of the chosen applications in the order in which the panel shows them, as `Workspace` knows
    /// them; absent when the user has cancelled. What was chosen may be no application by now.
    using Completion = std::move_only_function<void(std::optional<std::vector<std::filesystem::path>>)>;

    virtual ~ApplicationChooser() = default;
    ApplicationChooser(const ApplicationChooser&) = delete;
    ApplicationChooser& operator=(const ApplicationChooser&) = delete;

    /// Shows the panel. The completion is told once, in a turn of the main loop, after the panel is gone; it need not
    /// be told when the chooser dies before. There is one panel: while it is open another request is told as cancelled, and the open
    /// panel stays as it is.
    virtual void choose(ApplicationChooserOptions options, Completion completion) = 0;

protected:
    ApplicationChooser() = default;
};

}  // namespace velmorand
