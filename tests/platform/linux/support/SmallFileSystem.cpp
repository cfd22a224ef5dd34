#include "platform/linux/support/SmallFileSystem.h"

#include <fmt/format.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <system_error>

namespace velmorand {
namespace {

constexpr char mounted = '+';
constexpr char refused = '-';

/// What the system call that failed just now wanted, and why it failed; empty when it did not fail.
std::string reason(int result, std::string_view call) {
    if (result == 0) return "";
    return fmt::format("{}: {}", call, std::generic_category().message(errno));
}

std::string writeNumberMap(const std::string& name, unsigned int number) {
    std::ofstream map("/proc/self/" + name);
    map << fmt::format("0 {} 1", number) << std::flush;
    return map ? "" : "cannot write /proc/self/" + name;
}

/// A namespace in which a mount is seen by this process alone. An ordinary user has to become the root of another
/// namespace first.
std::string enterNamespace() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (user == 0) return reason(unshare(CLONE_NEWNS), "unshare(CLONE_NEWNS)");
    std::string why = reason(unshare(CLONE_NEWUSER | CLONE_NEWNS), "unshare(CLONE_NEWUSER | CLONE_NEWNS)");
    if (why.empty()) why = writeNumberMap("uid_map", user);
    if (why.empty()) std::ofstream("/proc/self/setgroups") << "deny";
    if (why.empty()) why = writeNumberMap("gid_map", group);
    return why;
}

std::string mountHere(const std::filesystem::path& mountPoint, std::size_t bytes) {
    std::string why = enterNamespace();
    if (why.empty()) why = reason(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), "mount(MS_PRIVATE)");
    const std::string size = fmt::format("size={},mode=700", bytes);
    if (why.empty()) why = reason(mount("none", mountPoint.c_str(), "tmpfs", 0, size.c_str()), "mount(\"tmpfs\")");
    return why;
}

}  // namespace

SmallFileSystem::SmallFileSystem(std::size_t bytes) {
    holder_ = std::make_unique<ForkedProcess>([&](int output) {
        const std::string why = mountHere(mountPoint_.path(), bytes);
        tell(output, why.empty() ? std::string(1, mounted) : refused + why + '\n');
        while (why.empty()) pause();
    });
    const auto isAnswer = [](const std::string& told) { return told.starts_with(mounted) || told.ends_with('\n'); };
    const bool isAnswered = holder_->listenUntil(isAnswer, ForkedProcess::Clock::now() + std::chrono::seconds(10));
    path_ = fmt::format("/proc/{}/root{}", holder_->pid(), mountPoint_.path().native());
    if (!isAnswered)
        whyNot_ = "the process that was to mount it does not answer";
    else if (!holder_->told().starts_with(mounted))
        whyNot_ = holder_->told().substr(1, holder_->told().size() - 2);
    else if (access(path_.c_str(), W_OK) != 0)
        whyNot_ = reason(-1, "access to the other process's root folder");
}

void SmallFileSystem::fill() const {
    std::ofstream file(path_ / "filler", std::ios::binary);
    const std::string zeros(4096, '\0');
    while (file.write(zeros.data(), static_cast<std::streamsize>(zeros.size())).flush()) {}
}

}  // namespace velmorand
