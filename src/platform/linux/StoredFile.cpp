#include "platform/linux/StoredFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

namespace velmorand {
namespace {

namespace fs = std::filesystem;
using Outcome = std::expected<void, StoredFileError>;

/// How many symbolic links in a row are followed, as the kernel does.
constexpr int mostLinks = 40;

/// What the system call that failed just now did, to what, and why.
std::unexpected<StoredFileError> failure(std::string_view action, const fs::path& path) {
    const std::error_code code(errno, std::generic_category());
    return std::unexpected(
        StoredFileError{fmt::format("Cannot {} {}: {}", action, path.native(), code.message()), code, path});
}

std::unexpected<StoredFileError> noFileToBe(std::string_view action, const fs::path& path) {
    return std::unexpected(
        StoredFileError{fmt::format("Cannot {} {}: it is no file", action, path.native()), {}, path});
}

/// An open file, closed with the object.
class OpenFile {
public:
    explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
    ~OpenFile() {
        if (isOpen()) ::close(descriptor_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int get() const { return descriptor_; }
    /// Some file systems tell only here that bytes could not be stored.
    [[nodiscard]] bool close() { return ::close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_;
};

/// A file that is removed with the object unless it was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(fs::path path) : path_(std::move(path)) {}
    ~TemporaryFile() {
        if (!isRenamed_) unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] bool renameTo(const fs::path& target) {
        isRenamed_ = rename(path_.c_str(), target.c_str()) == 0;
        return isRenamed_;
    }

private:
    fs::path path_;
    bool isRenamed_ = false;
};

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

Outcome synchronizeFolder(const fs::path& folder) {
    const OpenFile opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems cannot synchronise a folder, which then is no reason to call the file unsafe.
    if (!opened.isOpen() || (fsync(opened.get()) != 0 && errno != EINVAL)) return failure("store", folder);
    return {};
}

/// Makes the folder and those above it that are missing.
Outcome makeFolder(const fs::path& folder) {
    int result = mkdir(folder.c_str(), S_IRWXU);
    if (result != 0 && errno == ENOENT && folder.has_relative_path()) {
        if (auto above = makeFolder(folder.parent_path()); !above) return above;
        result = mkdir(folder.c_str(), S_IRWXU);
    }
    if (result == 0) return synchronizeFolder(folder.parent_path());
    if (errno == EEXIST) return {};
    return failure("make the folder", folder);
}

/// The file that a symbolic link at this path leads to, be it there or not; the path itself when it is none.
std::expected<fs::path, StoredFileError> behindLinks(fs::path path) {
    for (int links = 0; links < mostLinks; ++links) {
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error) return path;
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    errno = ELOOP;
    return failure("follow the link", path);
}

std::string temporaryPrefix(const fs::path& file) {
    return fmt::format(".{}.new-", file.filename().native());
}

/// What a process left behind that was killed while it stored a file. Young ones may be another process's.
void removeLeftovers(const fs::path& file) {
    std::error_code error;
    const auto youngest = fs::file_time_type::clock::now() - std::chrono::minutes(1);
    // Not a loop over a range: that one throws where the folder cannot be read on.
    for (fs::directory_iterator entry(file.parent_path(), error); entry != fs::directory_iterator();
         entry.increment(error)) {
        if (!entry->path().filename().native().starts_with(temporaryPrefix(file))) continue;
        const auto written = entry->last_write_time(error);
        if (!error && written < youngest) fs::remove(entry->path(), error);
    }
}

/// Only a file may be replaced: a device, which a link may lead to, would be gone for everybody.
Outcome requireFile(const fs::path& path, LinkInPlace link) {
    struct stat status{};
    if (lstat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode)) return {};
    if (link == LinkInPlace::replace && S_ISLNK(status.st_mode)) return {};
    return noFileToBe("replace", path);
}

Outcome replace(const fs::path& file, std::string_view bytes) {
    std::string path = (file.parent_path() / (temporaryPrefix(file) + "XXXXXX")).native();
    OpenFile opened(mkostemp(path.data(), O_CLOEXEC));  // for the user alone
    if (!opened.isOpen()) return failure("make a file in", file.parent_path());
    TemporaryFile temporary(path);
    if (!writeAll(opened.get(), bytes) || fsync(opened.get()) != 0 || !opened.close()) return failure("write", path);
    if (!temporary.renameTo(file)) return failure("replace", file);
    return synchronizeFolder(file.parent_path());
}

std::expected<std::string, StoredFileError> readAll(int file, const fs::path& path, std::size_t largest) {
    std::string bytes;
    std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t count = read(file, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return failure("read", path);
        if (count == 0) return bytes;
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
        if (bytes.size() <= largest) continue;
        errno = EFBIG;
        return failure("read", path);
    }
}

}  // namespace

std::expected<std::optional<std::string>, StoredFileError> readStoredFile(const fs::path& path, std::size_t largest) {
    // Something else in the file's place, such as a pipe, must not keep the program waiting.
    const OpenFile file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen() && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
    struct stat status{};
    if (!file.isOpen() || fstat(file.get(), &status) != 0) return failure("read", path);
    if (!S_ISREG(status.st_mode)) return noFileToBe("read", path);
    return readAll(file.get(), path, largest);
}

Outcome storeFile(const fs::path& path, std::string_view bytes, LinkInPlace link) {
    if (auto made = makeFolder(path.parent_path()); !made) return made;
    const auto file = link == LinkInPlace::follow ? behindLinks(path) : path;
    if (!file) return std::unexpected(file.error());
    if (auto replaceable = requireFile(*file, link); !replaceable) return replaceable;
    removeLeftovers(*file);
    return replace(*file, bytes);
}

Outcome removeStoredFile(const fs::path& path) {
    if (unlink(path.c_str()) == 0) return synchronizeFolder(path.parent_path());
    if (errno == ENOENT || errno == ENOTDIR) return {};
    return failure("remove", path);
}

}  // namespace velmorand
