#include "endurance/processes/program_process.h"

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kv408 {
namespace {

/// Turns this process, a copy of the test's, into the program, with `words` as its stderr.
[[noreturn]] void become(const ProgramStart& start, int words) {
    for (const auto& [name, value] : start.environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    for (const std::string& name : start.unset) {
        unsetenv(name.c_str());
    }
    for (const int number : start.ignored) {
        std::signal(number, SIG_IGN);
    }
    if (start.disk_room) {
        const rlimit room = {.rlim_cur = *start.disk_room, .rlim_max = *start.disk_room};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &room);
    }
    const rlimit no_core = {};
    setrlimit(RLIMIT_CORE, &no_core);
    dup2(words, STDERR_FILENO);
    std::vector<std::string> texts = {start.program.string()};
    texts.insert(texts.end(), start.arguments.begin(), start.arguments.end());
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        arguments.push_back(text.data());
    }
    arguments.push_back(nullptr);
    execv(arguments.front(), arguments.data());
    _exit(127);
}

} // namespace

ProgramProcess::ProgramProcess(const ProgramStart& start) {
    std::array<int, 2> ends = {-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    stderr_ = ends[0];
    fcntl(stderr_, F_SETFL, O_NONBLOCK);
    id_ = fork();
    if (id_ == 0) {
        become(start, ends[1]);
    }
    close(ends[1]);
    if (start.unread_stderr) {
        close(std::exchange(stderr_, -1));
    }
}

ProgramProcess::~ProgramProcess() {
    if (runs()) {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    if (stderr_ >= 0) {
        close(stderr_);
    }
}

const std::string& ProgramProcess::words() {
    std::array<char, 4096> part = {};
    for (;;) {
        const ssize_t count = stderr_ >= 0 ? read(stderr_, part.data(), part.size()) : 0;
        if (count <= 0) {
            return words_;
        }
        words_.append(part.data(), static_cast<std::size_t>(count));
    }
}

void ProgramProcess::signal(int number) const {
    kill(id_, number);
}

bool ProgramProcess::runs() {
    int status = 0;
    if (!ended_ && id_ > 0 && waitpid(id_, &status, WNOHANG) == id_) {
        constexpr int signalled = 1000;
        ended_ = WIFEXITED(status) ? WEXITSTATUS(status) : signalled + WTERMSIG(status);
    }
    return !ended_;
}

std::optional<int> ProgramProcess::end_within(std::chrono::milliseconds longest) {
    comes_true([this] { return !runs(); }, longest);
    return ended_;
}

void pause_for(std::chrono::milliseconds duration) {
    std::this_thread::sleep_for(duration);
}

std::string content_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace kv408
