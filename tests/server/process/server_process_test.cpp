// kv408-server as a process, with the clients that people have.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/places.h"
#include "support/series_stride.h"
#include "support/shell.h"
#include "support/socket_line.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

/// Runs `command` to its end; what it says of errors is in its output.
Outcome run(const std::string& command) {
    return run_in_shell(command + " 2>&1");
}

std::string program() {
    return place::programs + std::string("/kv408-server");
}

/// A running server on the simulated instrument, at a free port.
class ServerProcess : public testing::Test {
public:
    ~ServerProcess() override {
        if (id > 0) {
            kill(id, SIGKILL);
            waitpid(id, nullptr, 0);
        }
        fclose(out);
    }

protected:
    ServerProcess() : ServerProcess("127.0.0.1", "") {}

    /// Started with `options`, it listens at `address`.
    ServerProcess(const std::string& address, const std::string& options) {
        const std::string command = "APPDATA='" + folder.path().string() + "' exec " + program() +
                                    " --simulated --port 0 " + options;
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        id = fork();
        if (id == 0) {
            dup2(ends[1], 1);
            close(ends[0]);
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        close(ends[1]);
        out = fdopen(ends[0], "r");
        const std::string first = next_line();
        port = static_cast<std::uint16_t>(
            std::atoi(first.substr(first.find_last_of(' ') + 1).c_str()));
        EXPECT_THAT(first, HasSubstr("Listening at " + address + " port "));
        EXPECT_EQ(next_line(), "Instrument lm4rxa-SIM00001 found\n");
    }
    std::string next_line() {
        std::array<char, 1000> line{};
        return fgets(line.data(), line.size(), out) == nullptr ? "" : line.data();
    }

    /// Ends it by `signal`; its exit code.
    int end(int signal) {
        kill(id, signal);
        int status = -1;
        waitpid(id, &status, 0);
        id = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// What comes on `line` up to the end of a block and its line.
    static std::string whole_block(const SocketLine& line) {
        std::string reply = line.hear();
        const auto head = static_cast<std::size_t>(2 + reply.at(1) - '0');
        const std::size_t size = head + std::stoul(reply.substr(2, head - 2)) + 1;
        for (std::string more = " "; reply.size() < size && !more.empty(); reply += more) {
            more = line.hear();
        }
        EXPECT_EQ(reply.size(), size);
        return reply;
    }

    /// The most that it has had resident, kB.
    [[nodiscard]] long highest_memory() const {
        std::ifstream status("/proc/" + std::to_string(id) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with("VmHWM:")) {
                return std::atol(line.c_str() + 6);
            }
        }
        return 0;
    }

    [[nodiscard]] std::string visa() const {
        return "TCPIP::127.0.0.1::" + std::to_string(port) + "::SOCKET";
    }
    [[nodiscard]] std::string lxi() const {
        return " -r -t 60 -a 127.0.0.1 -p " + std::to_string(port) + ' ';
    }
    [[nodiscard]] Outcome example(const std::string& name, const std::string& argument) const {
        return run("/usr/bin/python3 " KV408_SOURCE_ROOT "/examples/" + name + ' ' + visa() + ' ' +
                   argument);
    }

    TemporaryFolder folder;
    pid_t id = -1;
    FILE* out = nullptr;
    std::uint16_t port = 0;
};

/// One that listens at one address of several.
class NamedServer : public ServerProcess {
protected:
    NamedServer() : ServerProcess("127.0.0.2", "--listen 127.0.0.2") {}
};

/// One that listens at the loopback of IPv6.
class NewerServer : public ServerProcess {
public:
    NewerServer() : ServerProcess("::1", "--listen ::1") {}
    void TestBody() override {
        EXPECT_EQ(SocketLine(port, "::1").ask("SYST:VERS?"), "1999.0\n");
        EXPECT_FALSE(SocketLine(port).connected());
    }
};

/// One that listens at all of them.
class OpenServer : public ServerProcess {
protected:
    OpenServer() : ServerProcess("0.0.0.0", "--listen 0.0.0.0") {}
};

TEST_F(ServerProcess, IsReachedAtTheLoopbackAlone) {
    EXPECT_TRUE(SocketLine(port).connected());
    EXPECT_FALSE(SocketLine(port, "127.0.0.2").connected());
}

TEST_F(NamedServer, IsReachedAtThatAddressAlone) {
    EXPECT_EQ(SocketLine(port, "127.0.0.2").ask("SYST:VERS?"), "1999.0\n");
    EXPECT_FALSE(SocketLine(port).connected());
}

TEST(ServerOfIpv6, IsReachedThere) {
    if (SocketLine::has_ipv6()) { // some computers have not
        NewerServer().TestBody();
    }
}

TEST_F(OpenServer, IsReachedAtEach) {
    EXPECT_EQ(SocketLine(port).ask("SYST:VERS?"), "1999.0\n");
    EXPECT_EQ(SocketLine(port, "127.0.0.2").ask("SYST:VERS?"), "1999.0\n");
}

TEST_F(ServerProcess, AnswersLxiTools) {
    EXPECT_EQ(run("lxi scpi" + lxi() + "'*IDN?'").output,
              "Tarvo,Kv408,lm4rxa-SIM00001," KV408_VERSION "\n");
    run("lxi scpi" + lxi() + "'CHAN2:SCAL 50MV'");
    EXPECT_EQ(run("lxi scpi" + lxi() + "'CHAN2:SCAL?'").output, "5.000000E-02\n");
    const Outcome benchmark = run("lxi benchmark" + lxi() + "-c 200");
    EXPECT_EQ(benchmark.code, 0) << benchmark.output;
    EXPECT_THAT(benchmark.output, HasSubstr("requests/second"));
}

TEST_F(ServerProcess, StaysSmallWhateverClientsAskAndDoNotRead) {
    const SocketLine line(port);
    for (const std::string kind : {"PNG", "BMP"}) {
        line.say("HCOP:SDUM:DATA? " + kind + "\n");
        const std::string reply = whole_block(line);
        EXPECT_EQ(reply.substr(2 + reply.at(1) - '0', 2), kind == "PNG" ? "\x89P" : "BM");
    }
    std::vector<std::unique_ptr<SocketLine>> mute;
    std::string many = "WAV:FORM ASC;DATA?";
    while (many.size() < 60000) {
        many += ";DATA?";
    }
    for (int client = 0; client < 7; ++client) {
        mute.push_back(std::make_unique<SocketLine>(port));
        mute.back()->say(client % 2 == 0 ? "HCOP:SDUM:DATA? BMP\n" + many + '\n' : many + '\n');
    }
    for (int more = 0; more < 20; ++more) {
        EXPECT_EQ(line.ask("*OPC?"), "1\n") << "others are served";
    }
    EXPECT_LE(highest_memory(), series_stride == 1 ? 12 * 1024 : 400000)
        << "kB; sanitizers take more";
}

TEST_F(ServerProcess, AnswersPyVisa) {
    const Outcome outcome =
        run("/usr/bin/python3 " KV408_SOURCE_ROOT "/tests/server/process/visa_client.py " + visa());
    EXPECT_EQ(outcome.output, "done\n");
}

TEST_F(ServerProcess, RunsTheExamples) {
    const std::filesystem::path file = folder.path() / "made";
    const auto made = [&file] {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    };
    const Outcome measured = example("measure_and_log.py", file.string() + " 3");
    EXPECT_EQ(measured.code, 0) << measured.output;
    EXPECT_THAT(made(), MatchesRegex("sweep,Vpp \\(V\\),frequency \\(Hz\\)\r\n"
                                     "([0-9]+,0\\.4[0-9]*,(9|10)[0-9]+\\.0\r\n){3}"));
    const Outcome swept = example("sweep_and_plot.py", file.string());
    EXPECT_EQ(swept.code, 0) << swept.output;
    EXPECT_THAT(swept.output, HasSubstr("  100 mV"));
    EXPECT_THAT(made(), testing::StartsWith("<svg"));
    const Outcome saved = example("save_picture.py", file.string());
    EXPECT_EQ(saved.code, 0) << saved.output;
    EXPECT_THAT(made(), testing::StartsWith("\x89PNG\r\n"));
    Outcome waited; // two seconds may be short where the computer has much else to do
    EXPECT_TRUE(SocketLine::comes([&] {
        waited = example("wait_for_trigger.py", "0");
        return waited.output.find("no trigger") == std::string::npos;
    }));
    EXPECT_THAT(waited.output, MatchesRegex("sweep [0-9]+: -?0\\.[0-9]+ V to 0\\.[0-9]+ V\n"));
    EXPECT_EQ(example("wait_for_trigger.py", "2").output, "no trigger: -365,\"Time out error\"\n");
}

TEST_F(ServerProcess, SavesTheSettingsWhenItIsAskedToEnd) {
    EXPECT_EQ(SocketLine(port).ask("CHAN1:SCAL 10MV;SCAL?"), "1.000000E-02\n");
    EXPECT_EQ(end(SIGTERM), 0);
    std::ostringstream text;
    text << std::ifstream(folder.path() / "kv408" / "ConfigsLM4RX.TXT").rdbuf();
    EXPECT_THAT(text.str(), HasSubstr("ch1vdiv\t 5"));
}

TEST_F(ServerProcess, SaysThatSomebodyElseListens) {
    const Outcome second = run(program() + " --simulated --port " + std::to_string(port));
    EXPECT_EQ(second.code, 1);
    EXPECT_EQ(second.output, "kv408-server: cannot listen at 127.0.0.1 port " +
                                 std::to_string(port) + ": Address already in use\n");
}

} // namespace
} // namespace kv408
