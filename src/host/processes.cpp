#include "host/processes.h"

#ifdef _WIN32
#include <process.h>
#include <windows.h>
#else
#include <cerrno>
#include <csignal>

#include <unistd.h>
#endif

namespace kv408 {

#ifdef _WIN32

int process_id() {
    return _getpid();
}

bool process_runs(int process) {
    void* const handle =
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(process));
    if (handle == nullptr) {
        return GetLastError() != ERROR_INVALID_PARAMETER;
    }
    DWORD status = STILL_ACTIVE;
    GetExitCodeProcess(handle, &status);
    CloseHandle(handle);
    return status == STILL_ACTIVE;
}

#else

int process_id() {
    return ::getpid();
}

bool process_runs(int process) {
    // The signal 0 asks without being sent; 0 and less would name groups of processes.
    return process <= 0 || kill(process, 0) == 0 || errno != ESRCH;
}

#endif

} // namespace kv408
