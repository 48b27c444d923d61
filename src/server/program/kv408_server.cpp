// The program without a window.

#include <filesystem>
#include <iostream>
#include <optional>
#include <span>
#include <system_error>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "doctor/diagnosis.h"
#include "host/settings_folder.h"
#include "host/system_clock.h"
#include "host/system_files.h"
#include "host/termination_signals.h"
#include "link/make_bridge.h"
#include "server/options.h"
#include "server/service.h"
#include "server/stb_picture_coder.h"
#include "simulator/simulation.h"

namespace {

/// Runs the service until it is asked to end; the exit code.
int run(kv408::TerminationSignals& signals, const kv408::Service::Host& host,
        const kv408::Network::Place& place) {
    std::optional<kv408::Service> service;
    try {
        service.emplace(host, place);
    } catch (const std::system_error& error) {
        std::cerr << "kv408-server: cannot listen at " << place.address << " port " << place.port
                  << ": " << error.code().message() << std::endl;
        return 1;
    }
    signals.set_handlers(
        {.ask = [&service] { service->ask_end(); }, .save = [&service] { service->save(); }});
    service->run();
    signals.set_handlers({});
    return 0;
}

/// The folder that this program, started as `name`, lies in.
std::filesystem::path program_folder(const char* name) {
    std::error_code none;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", none);
    return (none ? std::filesystem::absolute(name) : program).parent_path();
}

} // namespace

int main(int argc, char** argv) {
#ifdef __GLIBC__
    // The memory of pictures and long replies goes back to the system at once: it is wanted for a
    // moment, and seldom again.
    constexpr int large = 64 * 1024;
    mallopt(M_MMAP_THRESHOLD, large);
    mallopt(M_TRIM_THRESHOLD, large);
#endif
    const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
    const kv408::CommandLine line =
        kv408::read_command_line(arguments.subspan(1), std::cout, std::cerr);
    if (!line.options) {
        return line.exit_code;
    }
    kv408::TerminationSignals signals;
    kv408::SystemClock clock;
    kv408::SystemFiles files;
    kv408::StbPictureCoder coder;
    const std::filesystem::path folder = kv408::settings_folder();
    const kv408::Places places{.settings = folder, .program = program_folder(arguments[0])};
    if (line.options->simulated) {
        kv408::simulator::Simulation simulation(clock, kv408::simulator::kept_flash(files, folder));
        return run(signals,
                   {.clock = clock,
                    .bridge = simulation.bridge(),
                    .files = files,
                    .places = places,
                    .coder = coder,
                    .log = std::cout},
                   line.options->place);
    }
    const auto choice = kv408::make_bridge(clock, std::clog);
    return run(signals,
               {.clock = clock,
                .bridge = *choice.bridge,
                .files = files,
                .places = places,
                .coder = coder,
                .diagnose = [&choice] { return kv408::diagnosis(choice); },
                .log = std::cout},
               line.options->place);
}
