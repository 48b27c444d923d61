#include "bench_driver.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "host/system_files.h"
#ifndef _WIN32
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace kv408::simulator {
namespace {

/// A folder of the test's own that goes away with it.
class FlashFile : public ::testing::Test {
public:
    ~FlashFile() override { std::filesystem::remove_all(folder_); }

protected:
    // The same test of another build may run at the same time.
    FlashFile()
        : folder_(std::filesystem::temp_directory_path() /
                  (std::string("kv408-flash-") + std::to_string(std::random_device()()))) {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }

    [[nodiscard]] std::filesystem::path file() const { return folder_ / "flash.txt"; }

    /// The memory in the file at `path`.
    FlashPlace at(const std::filesystem::path& path) { return {&files_, path}; }

    std::filesystem::path folder_;
    SystemFiles files_;
};

TEST_F(FlashFile, WordsSurvive) {
    {
        Flash flash(at(file()));
        EXPECT_TRUE(flash.empty());
        flash.write(0xA400, 2101);
        flash.write(0xA43F, 55);
        flash.write(0xFFFF, 0);
        flash.write(0, 0xFFFF);
        EXPECT_TRUE(flash.saved());
    }
    const Flash again(at(file()));
    EXPECT_EQ(again.read(0xA400), 2101);
    EXPECT_EQ(again.read(0xA43F), 55);
    EXPECT_EQ(again.read(0xFFFF), 0);
    EXPECT_EQ(again.read(0), 0xFFFF);
    EXPECT_EQ(again.read(0xA401), erased_word);
}

TEST_F(FlashFile, EveryWriteIsSavedAndLeavesOneFile) {
    Flash flash(at(file()));
    for (std::uint16_t word = 0; word < 5; ++word) {
        flash.write(0xA404, word);
        EXPECT_EQ(Flash(at(file())).read(0xA404), word);
    }
    const auto entries = std::distance(std::filesystem::directory_iterator(folder_),
                                       std::filesystem::directory_iterator());
    EXPECT_EQ(entries, 1);
}

TEST_F(FlashFile, DamagedLinesAreSkipped) {
    std::ofstream(file()) << "A400 7D0\nrubbish\n\nA401\n1A400 5\nA402 10000\nA403 7D1\n";
    const Flash flash(at(file()));
    EXPECT_EQ(flash.read(0xA400), 2000);
    EXPECT_EQ(flash.read(0xA401), erased_word);
    EXPECT_EQ(flash.read(0xA402), erased_word);
    EXPECT_EQ(flash.read(0xA403), 2001);
}

TEST_F(FlashFile, AFileThatCannotBeWrittenIsReported) {
    Flash flash(at(folder_ / "missing" / "flash.txt"));
    EXPECT_TRUE(flash.saved());
    flash.write(1, 2);
    EXPECT_FALSE(flash.saved());
    EXPECT_EQ(flash.read(1), 2);
}

TEST_F(FlashFile, ARecordWrittenByCommandSurvivesARestart) {
    const auto exchange = [&](int command, const Arguments& arguments, std::size_t reply) {
        VirtualClock clock;
        Simulation simulation(clock, at(file()));
        std::vector<Byte> bytes(reply);
        EXPECT_EQ(simulation.bridge().open(0), bridge_success);
        EXPECT_EQ(simulation.bridge().set_speed(833000), bridge_success);
        EXPECT_EQ(simulation.bridge().write(frame(command, arguments)), bridge_success);
        EXPECT_EQ(simulation.bridge().read(bytes).count, reply);
        return bytes;
    };
    exchange(34, {0xA4, 0x05, 0x26, 0xAC, 0}, 0); // 9900
    EXPECT_EQ(exchange(33, {0xA4, 0x05, 0, 0, 0}, 2), (std::vector<Byte>{0x26, 0xAC}));
    // What was not written is still the factory's.
    EXPECT_EQ(exchange(33, {0xA4, 0x3F, 0, 0, 0}, 2), (std::vector<Byte>{0, 55}));
}

#ifndef _WIN32

TEST_F(FlashFile, AFifoOrALinkPlantedInItsPlaceHoldsNobodyAndIsNotFollowed) {
    ASSERT_EQ(::mkfifo(file().c_str(), 0666), 0);
    std::filesystem::create_symlink(folder_ / "prey", folder_ / "flash.txt.new");
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(5);
        Flash flash(at(file()));
        flash.write(1, 2);
        ::_exit(flash.read(1) == 2 && !flash.saved() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status)) << "it hung";
    EXPECT_EQ(WEXITSTATUS(status), 0);
    std::filesystem::remove(file());
    Flash flash(at(file()));
    flash.write(1, 2);
    EXPECT_TRUE(flash.saved());
    EXPECT_FALSE(std::filesystem::exists(folder_ / "prey"));
}

#endif

class FlashCommands : public BenchDriver {
protected:
    int word(int address) {
        send(33, {address >> 8, address & 0xFF, 0, 0, 0});
        clock_.sleep(milliseconds(20)); // as the program waits
        EXPECT_EQ(waiting(), 2U);
        return words(read(2)).at(0);
    }
};

TEST_F(FlashCommands, WordsReadBackHighByteFirst) {
    send(34, {0xA4, 0x07, 0x12, 0x34, 0});
    EXPECT_EQ(word(0xA407), 0x1234);
    EXPECT_EQ(simulation_.flash().read(0xA407), 0x1234);
}

TEST_F(FlashCommands, EveryWordHasItsAddress) {
    for (int index = 0; index < 11; ++index) {
        send(34, {0xA4, index, 0x30, index, 0});
    }
    for (int index = 0; index < 11; ++index) {
        EXPECT_EQ(word(0xA400 + index), 0x3000 + index);
    }
}

TEST_F(FlashCommands, DeliveryHasIdentificationAndMarker) {
    EXPECT_EQ(word(0xA43F), 55);
    EXPECT_NE(word(0xA43D), 0xFFFF);
    EXPECT_NE(word(0xA43E), 0xFFFF);
    EXPECT_EQ(word(0xA440), 0xFFFF); // never written
    for (int index = 0; index < 4; ++index) {
        EXPECT_NEAR(word(0xA400 + index), 2048, 60);
        EXPECT_NEAR(word(0xA404 + index), 10000, 200);
    }
    EXPECT_NEAR(word(0xA408), 10000, 200);
    EXPECT_EQ(word(0xA409), 100);
    EXPECT_EQ(word(0xA40A), 70);
}

} // namespace
} // namespace kv408::simulator
