#include "platform/linux/support/RedirectedStandardError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace velmorand {

RedirectedStandardError::RedirectedStandardError() : before_(dup(STDERR_FILENO)) {
    std::fflush(stderr);
    const int file = ::open((folder_.path() / "stderr").c_str(), O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, 0600);
    dup2(file, STDERR_FILENO);
    ::close(file);
}

RedirectedStandardError::~RedirectedStandardError() {
    std::fflush(stderr);
    dup2(before_, STDERR_FILENO);
    ::close(before_);
}

std::string RedirectedStandardError::text() const {
    std::fflush(stderr);
    std::ostringstream text;
    text << std::ifstream(folder_.path() / "stderr", std::ios::binary).rdbuf();
    return text.str();
}

std::string RedirectedStandardError::streamName() const {
    struct stat status{};
    fstat(STDERR_FILENO, &status);
    return std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

}  // namespace velmorand
