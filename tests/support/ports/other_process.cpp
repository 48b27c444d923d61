#include "support/ports/other_process.h"

#include <array>
#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kv408 {
namespace {

// The library that plays the ports locks what it keeps in each call of open, ioctl and write. One
// of its threads may hold that lock when this process is made, without the thread that would let go
// of it: the kernel is called directly, which also opens the port itself and not a play of it.

bool done(const char* name, const OtherProcess::Deed& deed) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (prctl(PR_SET_NAME, name) != 0) {
        return false;
    }
    if (deed.opens.empty()) {
        return true;
    }
    const auto handle = static_cast<int>(
        syscall(SYS_openat, AT_FDCWD, deed.opens.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    return handle >= 0 && (!deed.locks || flock(handle, LOCK_EX | LOCK_NB) == 0) &&
           (!deed.marks || syscall(SYS_ioctl, handle, TIOCEXCL) == 0);
}

} // namespace

OtherProcess::OtherProcess(const char* name, const Deed& deed) : name_(name) {
    std::array<int, 2> ends = {};
    if (pipe(ends.data()) != 0) {
        throw std::runtime_error("no pipe");
    }
    id_ = fork();
    if (id_ == 0) {
        const char answer = done(name, deed) ? 1 : 0;
        if (syscall(SYS_write, ends[1], &answer, 1) != 1) {
            _exit(1);
        }
        for (;;) {
            pause();
        }
    }
    close(ends[1]);
    char answer = 0;
    const ssize_t count = read(ends[0], &answer, 1);
    close(ends[0]);
    if (id_ < 0 || count != 1 || answer != 1) {
        throw std::runtime_error("the other process cannot do its deed");
    }
}

OtherProcess::~OtherProcess() {
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
}

std::string OtherProcess::title() const {
    return name_ + " (process " + std::to_string(id_) + ")";
}

} // namespace kv408
