#pragma once

#include "platform/linux/support/ForkedProcess.h"
#include "platform/linux/support/ScratchFolder.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

namespace velmorand {

/// An empty file system of a few pages, in memory. Only a process of its own has it mounted, in a namespace that goes
/// with that process, so that nothing can stay behind; this process reaches it through the other's root folder.
class SmallFileSystem {
public:
    explicit SmallFileSystem(std::size_t bytes);

    /// Whether this user may mount, and the system lets it.
    [[nodiscard]] bool isMounted() const { return whyNot_.empty(); }
    /// Which step failed, and why.
    [[nodiscard]] const std::string& whyNot() const { return whyNot_; }
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// Writes a file of zeros that leaves no room.
    void fill() const;

private:
    ScratchFolder mountPoint_;
    std::unique_ptr<ForkedProcess> holder_;
    std::string whyNot_;
    std::filesystem::path path_;
};

}  // namespace velmorand
