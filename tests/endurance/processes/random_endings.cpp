// random_endings [--seconds <n>] [--seed <n>]: starts the program over and over, with links and
// FIFOs planted beside its settings, and ends it in every way at any moment: killed, by one signal
// or many, stopped meanwhile, stopped while the instrument is switched off and on, with its display
// gone; a third of all on a disk that is full at any byte. Each time the settings file is the one
// from before or the one of the run, whole, and so is what was set aside; an end that can save has
// saved; an instrument that was off is set up anew; and what asks for an end is answered. Ends with
// 0 when nothing failed.

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

#include <sys/stat.h>

#include "endurance/processes/program_process.h"
#include "endurance/processes/x_display.h"
#include "support/places.h"
#include "support/temporary_folder.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

enum class Way { killed, signal, signals, stopped, switched_off, display_gone };
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
        const bool complete = number(1, 2) == 1;
        if (complete || way == Way::switched_off) {
            reach_an_instrument(how);
        }
        const bool full_disk = number(1, 3) == 1;
        if (full_disk) {
            // The settings have no room; what the instrument was asked is noted, and has.
            constexpr int room_of_the_log = 200;
            how.disk_room = static_cast<std::size_t>(
                number(room_of_the_log, static_cast<int>(new_.size()) - 1));
        }
        what_ = "way " + std::to_string(static_cast<int>(way)) + (full_disk ? ", full disk" : "");
        ++lives_.at(static_cast<std::size_t>(way));
        full_disks_ += full_disk ? 1 : 0;
        ProgramProcess program(how);
        plant_for(program);
        if (complete && !check(comes_true([this] { return sweeps(); }, 30s), "it does not start")) {
            return false;
        }
        pause_for(milliseconds(number(0, 700)));
        const bool set_up = end(way, program, display) || !complete || full_disk;
        const bool ended = program.end_within(8s).has_value();
        what_ += complete ? ", after its start" : ", early";
        what_ += ": " + program.words();
        return check(set_up, "the instrument was off and is not set up anew") &&
               check(ended, "it does not end") &&
               check_files(complete && way != Way::killed, full_disk);
    }

    /// How many lives had a full disk.
    [[nodiscard]] int full_disks() const { return full_disks_; }

    [[nodiscard]] const std::string& what() const { return what_; }

    /// How many lives ended in each way.
    [[nodiscard]] const std::array<int, ways>& lives() const { return lives_; }

private:
    [[nodiscard]] ProgramStart start() const {
        return {.program = std::filesystem::path(place::programs) / "kv408-demo",
                .environment = {{"APPDATA", folder_.path()},
                                {"TMPDIR", temporary_},
                                {"QT_QPA_PLATFORM", "offscreen"}}};
    }

    /// The program that has its instrument on a bridge library which can be switched off.
    void reach_an_instrument(ProgramStart& how) const {
        how.program = std::filesystem::path(place::programs) / "kv408";
        how.environment["LD_LIBRARY_PATH"] = place::hostile_folder;
        how.environment["KV408_HOSTILE_LOG"] = log_;
        how.environment["KV408_HOSTILE_OFF"] = switch_;
    }

    /// Whether the start is complete: of the frames that set the trigger five belong to the start,
    /// the check among them, and the next one to the first sweep.
    [[nodiscard]] bool sweeps() const {
        constexpr std::ptrdiff_t of_start_and_sweep = 6;
        const std::string asked = content_of(log_);
        std::ptrdiff_t set_ups = 0;
        for (auto at = asked.find("set up"); at != std::string::npos;
             at = asked.find("set up", at + 1)) {
            ++set_ups;
        }
        return set_ups >= of_start_and_sweep;
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
        std::filesystem::remove(log_);
        std::filesystem::remove(switch_);
        std::ofstream(file_, std::ios::binary) << old_;
        for (const char* const ending : {".kv408-new", ".new", ".tmp", ".bad", ".unsaved", "~"}) {
            std::filesystem::create_symlink(prey_, file_.string() + ending);
        }
    }

    /// Plants what can be guessed once the process is known.
    void plant_for(const ProgramProcess& program) {
        const std::string ending = ".kv408-new" + std::to_string(program.id());
        const auto flash = file_.parent_path() / ("simulated-flash.bin" + ending);
        std::error_code error;
        std::filesystem::create_symlink(prey_, flash, error);
        if (number(1, 2) == 1) {
            std::filesystem::create_symlink(prey_, file_.string() + ending, error);
        } else {
            mkfifo((file_.string() + ending).c_str(), S_IRUSR | S_IWUSR);
        }
    }

    /// Ends the program; false when an instrument that was off meanwhile was not set up anew.
    bool end(Way way, const ProgramProcess& program, const std::optional<XDisplay>& display) {
        bool set_up = true;
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
        case Way::switched_off:
            set_up = switch_off_and_on(program);
            program.signal(any_signal());
            break;
        case Way::display_gone:
            display->kill();
            break;
        case Way::signal:
            program.signal(any_signal());
            break;
        }
        return set_up;
    }

    /// The instrument is switched off and on while `program` is stopped; whether it is set up anew.
    bool switch_off_and_on(const ProgramProcess& program) {
        program.signal(SIGSTOP);
        const auto before = content_of(log_).size();
        std::ofstream(switch_) << "off";
        pause_for(milliseconds(number(2100, 3500)));
        program.signal(SIGCONT);
        return comes_true(
            [&] { return content_of(log_).find("set up", before) != std::string::npos; }, 5s);
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

    /// What an end has left that came late enough to save, or too early for that.
    bool check_files(bool saves, bool full_disk) {
        const std::string left = content_of(file_);
        return check(left == old_ || left == new_, "the settings are torn:\n" + left) &&
               check(!saves || full_disk || left == new_, "the settings are lost") &&
               check(!full_disk || left == old_, "written on a full disk") &&
               check(content_of(prey_) == "the user's own", "a planted link was followed") &&
               check(nothing_torn(), "what was set aside is torn");
    }

    [[nodiscard]] bool is_whole_aside(const std::filesystem::path& path) const {
        return std::filesystem::is_symlink(path) || !std::filesystem::exists(path) ||
               content_of(path) == new_;
    }

    /// Whether all that was set aside is whole.
    [[nodiscard]] bool nothing_torn() const {
        const auto is_whole = [this](const auto& entry) {
            return !entry.path().filename().string().starts_with("kv408-unsaved-") ||
                   is_whole_aside(entry.path());
        };
        return std::all_of(std::filesystem::directory_iterator(temporary_),
                           std::filesystem::directory_iterator(), is_whole) &&
               is_whole_aside(file_.string() + ".unsaved");
    }

    std::mt19937 chance_;
    TemporaryFolder folder_;
    std::filesystem::path temporary_ = folder_.path() / "temporary";
    std::filesystem::path file_ = folder_.path() / "kv408" / "ConfigsLM4RX.TXT";
    std::filesystem::path prey_ = folder_.path() / "prey";
    std::string log_ = folder_.path() / "log";       ///< what the instrument was asked
    std::string switch_ = folder_.path() / "switch"; ///< there: it is switched off and on
    std::string new_;
    std::string old_;
    std::string what_;
    std::array<int, ways> lives_ = {};
    int full_disks_ = 0;
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
    std::cout << "; on a full disk: " << endings.full_disks() << "\n";
    return EXIT_SUCCESS;
}

} // namespace
} // namespace kv408

int main(int argc, char** argv) {
    long seconds = 60;
    long seed = 1;
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    for (std::size_t index = 1; index + 1 < arguments.size(); index += 2) {
        const std::string name = arguments[index];
        const long value = std::strtol(arguments[index + 1], nullptr, 10);
        (name == "--seed" ? seed : seconds) = value;
    }
    return kv408::run_for(std::chrono::seconds(seconds), static_cast<unsigned>(seed));
}
