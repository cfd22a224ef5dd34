#pragma once

#include <filesystem>
#include <string_view>

namespace velmorand {

/// An empty folder for one test, removed with everything in it when the object dies. A step that fails throws, which
/// fails the test.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();

    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// Writes a file below the folder, and the folders on the way to it.
    void write(const std::filesystem::path& relative, std::string_view content) const;
    /// Makes a link below the folder that says `target`, which need not exist.
    void link(const std::filesystem::path& relative, std::string_view target) const;
    /// Makes a pipe below the folder, which nobody writes into.
    void makePipe(const std::filesystem::path& relative) const;

private:
    [[nodiscard]] std::filesystem::path prepared(const std::filesystem::path& relative) const;

    std::filesystem::path path_;
};

}  // namespace velmorand
