#include "platform/linux/support/ChildProcess.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace velmorand {

ChildProcess::ChildProcess() : pid_(fork()) {
    if (pid_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (pid_ > 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // never outlives the tests
    for (;;) pause();
}

ChildProcess::~ChildProcess() {
    endAndCollect();
}

void ChildProcess::end() {
    if (pid_ > 0) kill(pid_, SIGKILL);
}

void ChildProcess::endAndCollect() {
    end();
    if (pid_ > 0) waitpid(pid_, nullptr, 0);
    pid_ = -1;
}

}  // namespace velmorand
