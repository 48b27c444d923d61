// random_endings [--seconds <n>] [--seed <n>]: starts kv408-demo over and over, with links planted
// beside its settings, and ends it in every way at any moment: killed, by one signal or many,
// stopped meanwhile, with its display gone, on a disk that is full at any byte. Each time the
// settings file is the one from before or the one of the run, whole; an end that can save has
// saved; and what asks for an end is answered. Ends with 0 when nothing failed.

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <random>
#include <span>
#include <string>

#include "endurance/processes/program_process.h"
#include "endurance/processes/x_display.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

enum class Way { killed, signal, signals, stopped, display_gone, full_disk };
constexpr int ways = 6;

/// One program after another, all in one folder.
class RandomEndings {
public:
    explicit RandomEndings(unsigned seed) : chance_(seed) {
        std::filesystem::create_directories(temporary_);
        std::filesystem::create_directories(file_.parent_path());
        std::ofstream(prey_) << "the user's own";
    }

    /// The settings that the program writes; false when it does not come so far.
    bool learn() {
        ProgramProcess program(start());
        const bool made = comes_true([this] { return content_of(file_).size() > 500; }, 60s);
        pause_for(1s);
        program.signal(SIGTERM);
        program.end_within(10s);
        new_ = content_of(file_);
        // An unknown key is passed over, and so not written again.
        old_ = new_ + "an older release\t 1 \r\n";
        return made && lines(new_) >= 47;
    }

    /// One life of the program; false when something went wrong.
    bool run() {
        const Way way = static_cast<Way>(number(0, ways - 1));
        prepare();
        std::optional<XDisplay> display;
        ProgramStart how = start();
        if (way == Way::display_gone) {
            how.environment["DISPLAY"] = display.emplace(folder_.path()).name();
            how.environment["QT_QPA_PLATFORM"] = "xcb";
        }
        if (way == Way::full_disk) {
            how.disk_room = static_cast<std::size_t>(number(0, static_cast<int>(new_.size()) - 1));
        }
        what_ = "way " + std::to_string(static_cast<int>(way));
        ++lives_.at(static_cast<std::size_t>(way));
        ProgramProcess program(how);
        const bool complete = number(1, 2) == 1;
        pause_for(milliseconds(complete ? number(1500, 2500) : number(0, 700)));
        end(way, program, display);
        const bool ended = program.end_within(8s).has_value();
        what_ += complete ? ", after its start" : ", early";
        what_ += ": " + program.words();
        return check(ended, "it does not end") && check_files(way, complete);
    }

    [[nodiscard]] const std::string& what() const { return what_; }

    /// How many lives ended in each way.
    [[nodiscard]] const std::array<int, ways>& lives() const { return lives_; }

private:
    [[nodiscard]] ProgramStart start() const {
        return {.program = KV408_PROGRAM_DIR "/kv408-demo",
                .environment = {{"APPDATA", folder_.path()},
                                {"TMPDIR", temporary_},
                                {"QT_QPA_PLATFORM", "offscreen"}}};
    }

    int number(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(chance_);
    }

    static std::ptrdiff_t lines(const std::string& text) {
        return std::count(text.begin(), text.end(), '\n');
    }

    /// Puts the old settings there, and a link to the prey under each name that can be guessed.
    void prepare() {
        std::filesystem::remove_all(file_.parent_path());
        std::filesystem::create_directories(file_.parent_path());
        std::ofstream(file_, std::ios::binary) << old_;
        for (const char* const ending : {".kv408-new", ".new", ".tmp", ".bad", ".unsaved", "~"}) {
            std::filesystem::create_symlink(prey_, file_.string() + ending);
        }
    }

    void end(Way way, const ProgramProcess& program, const std::optional<XDisplay>& display) {
        switch (way) {
        case Way::killed:
            program.signal(SIGTERM);
            pause_for(milliseconds(number(0, 60)));
            program.signal(SIGKILL);
            break;
        case Way::signals:
            for (int count = number(2, 6); count > 0; --count) {
                program.signal(any_signal());
                pause_for(milliseconds(number(0, 30)));
            }
            break;
        case Way::stopped:
            program.signal(SIGSTOP);
            program.signal(any_signal());
            pause_for(milliseconds(number(0, 300)));
            program.signal(SIGCONT);
            break;
        case Way::display_gone:
            display->kill();
            break;
        case Way::signal:
        case Way::full_disk:
            program.signal(any_signal());
            break;
        }
    }

    int any_signal() {
        return std::array{SIGTERM, SIGINT, SIGHUP}.at(static_cast<std::size_t>(number(0, 2)));
    }

    bool check(bool good, const std::string& otherwise) {
        if (!good) {
            what_ = otherwise + "; " + what_;
        }
        return good;
    }

    bool check_files(Way way, bool complete) {
        const std::string left = content_of(file_);
        const bool can_save = way != Way::killed && way != Way::full_disk;
        return check(left == old_ || left == new_, "the settings are torn:\n" + left) &&
               check(!complete || !can_save || left == new_, "the settings are lost") &&
               check(way != Way::full_disk || left == old_, "written on a full disk") &&
               check(content_of(prey_) == "the user's own", "a planted link was followed");
    }

    std::mt19937 chance_;
    TemporaryFolder folder_;
    std::filesystem::path temporary_ = folder_.path() / "temporary";
    std::filesystem::path file_ = folder_.path() / "kv408" / "ConfigsLM4RX.TXT";
    std::filesystem::path prey_ = folder_.path() / "prey";
    std::string new_;
    std::string old_;
    std::string what_;
    std::array<int, ways> lives_ = {};
};

int run_for(std::chrono::seconds length, unsigned seed) {
    RandomEndings endings(seed);
    if (!endings.learn()) {
        std::cout << "FAILED: the program does not start\n";
        return EXIT_FAILURE;
    }
    int lives = 0;
    const auto until = std::chrono::steady_clock::now() + length;
    while (std::chrono::steady_clock::now() < until) {
        ++lives;
        if (!endings.run()) {
            std::cout << "FAILED in life " << lives << " of seed " << seed << ": " << endings.what()
                      << "\n";
            return EXIT_FAILURE;
        }
    }
    std::cout << "passed: " << lives << " lives; by way:";
    for (const int count : endings.lives()) {
        std::cout << " " << count;
    }
    std::cout << "\n";
    return EXIT_SUCCESS;
}

} // namespace
} // namespace kv408

int main(int argc, char** argv) {
    long seconds = 20;
    long seed = 1;
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    for (std::size_t index = 1; index + 1 < arguments.size(); index += 2) {
        const std::string name = arguments[index];
        const long value = std::strtol(arguments[index + 1], nullptr, 10);
        (name == "--seed" ? seed : seconds) = value;
    }
    return kv408::run_for(std::chrono::seconds(seconds), static_cast<unsigned>(seed));
}
