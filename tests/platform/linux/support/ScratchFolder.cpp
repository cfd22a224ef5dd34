#include "platform/linux/support/ScratchFolder.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>
#include <system_error>

namespace velmorand {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path) {
    throw std::system_error(errno, std::generic_category(), path.string());
}

}  // namespace

ScratchFolder::ScratchFolder() {
    std::string name = (fs::temp_directory_path() / "velmorand-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) fail(name);
    path_ = name;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path ScratchFolder::prepared(const fs::path& relative) const {
    const fs::path path = path_ / relative;
    fs::create_directories(path.parent_path());
    return path;
}

void ScratchFolder::write(const fs::path& relative, std::string_view content) const {
    std::ofstream file(prepared(relative), std::ios::binary);
    file << content;
    file.close();
    if (!file) fail(path_ / relative);
}

void ScratchFolder::link(const fs::path& relative, std::string_view target) const {
    fs::create_symlink(target, prepared(relative));
}

void ScratchFolder::makePipe(const fs::path& relative) const {
    const fs::path path = prepared(relative);
    if (mkfifo(path.c_str(), S_IRUSR | S_IWUSR) != 0) fail(path);
}

}  // namespace velmorand
