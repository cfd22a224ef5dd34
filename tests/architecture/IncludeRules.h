#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace velmorand {

/// The text of source files by their path inside `src/`, with "/" between folders.
using SourceTree = std::map<std::string, std::string>;

/// One place where the sources break the order of the layers.
struct IncludeViolation {
    /// Path inside `src/`.
    std::string file;
    /// Counted from 1.
    int line = 0;
    /// The include as it is written, with its quotes or brackets; empty when the file itself is the problem.
    std::string include;
    /// What is wrong with it, as a sentence.
    std::string rule;

    bool operator==(const IncludeViolation&) const = default;
};

/// "src/windows/A.h:3: #include "b.h": the rule".
[[nodiscard]] std::string describe(const IncludeViolation& violation);

/// Checks every include of the tree, also those in a branch that is not compiled here:
/// - a file belongs to a layer, and includes only its own layer and those its layer may use;
/// - the libraries of a layer are limited: the core and the seam know neither a toolkit nor an operating system;
/// - files form no circle. A header and the source file of the same name count as one.
[[nodiscard]] std::vector<IncludeViolation> findIncludeViolations(const SourceTree& sources);

/// The C++ files below `folder`. Throws `std::filesystem::filesystem_error` if there is no such folder.
[[nodiscard]] SourceTree readSourceTree(const std::filesystem::path& folder);

}  // namespace velmorand
