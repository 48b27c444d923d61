// Any bytes at all from a client of remote control, on the whole program with the simulated
// instrument. The first byte of the input says in pieces of which size they come. Built as
// settings_target.cpp.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "fuzz/fuzzed_program.h"
#include "fuzz/promise.h"
#include "remote/remote_program.h"

namespace kv408 {
namespace {

constexpr int most_runs = 200; ///< commands of one input, which may each take long

/// What was sent is run, with ticks where the client is held back.
void run_all(RemoteProgram& program, int& runs) {
    Client& client = program.client;
    for (int ticks = 0; client.busy() && runs < most_runs && ticks < 3;) {
        if (!client.awaits_answer() && !client.can_run(program.control.moment(client))) {
            program.ticks(1);
            ++ticks;
            continue;
        }
        runs += client.awaits_answer() ? 0 : 1;
        const std::string reply = client.run(program.control.moment(client));
        demand(client.busy() || reply.empty() || reply.back() == '\n', "a reply has its end");
        demand(!program.gate.closed(), "after a command others may run");
    }
}

void send_all(RemoteProgram& program, std::string_view bytes, std::size_t piece) {
    int runs = 0;
    while (!bytes.empty() && !program.client.closed() && runs < most_runs) {
        const std::size_t taken = program.client.take(bytes.substr(0, piece));
        bytes.remove_prefix(taken);
        run_all(program, runs);
        if (taken == 0 && program.client.busy()) {
            return; // held back for longer than the input is worth
        }
    }
}

} // namespace
} // namespace kv408

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kv408;
    FuzzInput input(std::span(data, size));
    const std::size_t piece = std::size_t{input.byte()} + 1;
    std::string bytes;
    while (!input.empty()) {
        bytes += static_cast<char>(input.byte());
    }
    RemoteProgram program;
    program.start();
    send_all(program, bytes, piece);
    program.ticks(3);
    demand(program.boxes.shown.empty(), "no box is opened");
    demand(!program.scope.ended(), "the program goes on");
    demand(program.client.errors.size() <= ErrorQueue::most, "errors are bounded");
    demand(program.files.written.size() <= 1, "no file is written but the first settings");
    for (const auto& frame : program.log.frames) {
        demand(frame.command.code != command::write_flash, "the flash memory is left alone");
    }
    for (const Channel channel : both_channels) {
        const std::int32_t wheel = program.parts().channels.at(channel).marker_wheel;
        demand(wheel >= 0 && wheel <= 1024, "markers stay on the plot");
    }
    return 0;
}
