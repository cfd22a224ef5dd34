#include "platform/linux/support/ChildProcess.h"

#include <linux/sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <system_error>

namespace velmorand {

ChildProcess::ChildProcess() : ChildProcess(fork()) {
    if (pid_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
}

ChildProcess::ChildProcess(pid_t made) : pid_(made) {
    if (pid_ != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // never outlives the tests
    for (;;) pause();
}

ChildProcess::~ChildProcess() {
    endAndCollect();
}

void ChildProcess::end() {
    if (pid_ > 0) kill(pid_, SIGKILL);
}

std::unique_ptr<ChildProcess> ChildProcess::withPid(pid_t pid) {
    clone_args request{};
    request.exit_signal = SIGCHLD;
    request.set_tid = reinterpret_cast<std::uintptr_t>(&pid);
    request.set_tid_size = 1;
    const auto made = static_cast<pid_t>(syscall(SYS_clone3, &request, sizeof request));
    return made < 0 ? nullptr : std::unique_ptr<ChildProcess>(new ChildProcess(made));
}

void ChildProcess::endWithoutCollecting() {
    end();
    siginfo_t told{};
    waitid(P_PID, static_cast<id_t>(pid_), &told, WEXITED | WNOWAIT);
}

void ChildProcess::endAndCollect() {
    end();
    if (pid_ > 0) waitpid(pid_, nullptr, 0);
    pid_ = -1;
}

}  // namespace velmorand
