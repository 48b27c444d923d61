// How late the service's ticks are while clients keep it busy: kv408-server's own service, clock
// and simulated instrument, which sweeps both channels, and clients on threads beside it.

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "host/system_clock.h"
#include "server/service.h"
#include "server/stb_picture_coder.h"
#include "server/tick_pace.h"
#include "simulator/simulation.h"
#include "support/fake_files.h"
#include "support/socket_line.h"

namespace {

using namespace std::chrono_literals;
using kv408::SocketLine;
using Time = std::chrono::nanoseconds;

/// Notes when the instrument is spoken to after it has been left alone: in steady sweeping that is
/// each tick's beginning.
class NotingBridge : public kv408::Bridge {
public:
    NotingBridge(kv408::Bridge& bridge, const kv408::Clock& clock)
        : bridge_(bridge), clock_(clock) {}

    /// The times noted since the last call.
    std::vector<Time> take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(ticks_, {});
    }

    kv408::Counted count_devices() override { return bridge_.count_devices(); }
    kv408::SerialNumber serial_number(std::uint32_t index) override {
        return bridge_.serial_number(index);
    }
    kv408::BridgeStatus open(std::uint32_t index) override { return bridge_.open(index); }
    kv408::BridgeStatus close() override { return bridge_.close(); }
    kv408::BridgeStatus set_speed(std::uint32_t baud) override { return bridge_.set_speed(baud); }
    kv408::BridgeStatus set_time_out(std::uint32_t ms) override { return bridge_.set_time_out(ms); }
    kv408::BridgeStatus flush() override { return spoken_to(), bridge_.flush(); }
    kv408::BridgeStatus write(std::span<const kv408::Byte> bytes) override {
        return spoken_to(), bridge_.write(bytes);
    }
    kv408::Counted read(std::span<kv408::Byte> bytes) override {
        return spoken_to(), bridge_.read(bytes);
    }
    kv408::Counted waiting() override { return spoken_to(), bridge_.waiting(); }

private:
    void spoken_to() {
        const Time now = clock_.now();
        const std::lock_guard lock(mutex_);
        if (now - last_ > kv408::TickPace::interval / 2) {
            ticks_.push_back(now);
        }
        last_ = now;
    }

    kv408::Bridge& bridge_;
    const kv408::Clock& clock_;
    std::mutex mutex_;
    Time last_{};
    std::vector<Time> ticks_;
};

/// How long after its time each tick came. Ticks are due on a grid of 100 ms; none comes before its
/// time, so the one that is least late tells where the grid lies.
std::vector<Time> lateness(const std::vector<Time>& ticks) {
    constexpr Time interval = kv408::TickPace::interval;
    Time grid = ticks.front();
    for (const Time tick : ticks) {
        const Time offset = (tick - grid + interval / 2) % interval - interval / 2;
        grid += std::min(offset, Time{});
    }
    std::vector<Time> late(ticks.size());
    std::transform(ticks.begin(), ticks.end(), late.begin(),
                   [grid, interval](Time tick) { return (tick - grid) % interval; });
    std::sort(late.begin(), late.end());
    return late;
}

double milliseconds(Time time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Does one thing over a connection; false where that has ended.
using Load = std::function<bool(const SocketLine&)>;

bool ask(const SocketLine& line, const std::string& question) {
    line.say(question + '\n');
    std::string part;
    do {
        part = line.hear();
    } while (!part.empty() && part.back() != '\n');
    return !part.empty();
}

/// Does `load` again and again until `ended`, on another connection where one has been turned away.
void keep_busy(std::uint16_t port, const Load& load, const std::atomic<bool>& ended,
               std::atomic<long>& answered) {
    while (!ended) {
        for (const SocketLine line(port); !ended && load(line);) {
            ++answered;
        }
        std::this_thread::sleep_for(10ms);
    }
}

void measure(const char* name, std::uint16_t port, NotingBridge& bridge, int clients,
             const Load& load, std::chrono::seconds time) {
    std::atomic<bool> ended = false;
    std::atomic<long> answered = 0;
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(clients));
    for (int client = 0; client < clients; ++client) {
        threads.emplace_back([&] { keep_busy(port, load, ended, answered); });
    }
    std::this_thread::sleep_for(500ms);
    bridge.take();
    answered = 0;
    std::this_thread::sleep_for(time);
    const double rate = static_cast<double>(answered) / static_cast<double>(time.count());
    const std::vector<Time> late = lateness(bridge.take());
    ended = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::printf("%-42s %9.0f %6zu %9.2f %9.2f %9.2f\n", name, rate, late.size(),
                milliseconds(late[late.size() / 2]), milliseconds(late[late.size() * 99 / 100]),
                milliseconds(late.back()));
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) {
    const std::chrono::seconds time(argc > 1 ? std::atoi(argv[1]) : 30);
    kv408::SystemClock clock;
    kv408::FakeFiles files;
    kv408::StbPictureCoder coder;
    std::ostringstream log;
    kv408::simulator::Simulation simulation(clock, kv408::simulator::kept_flash(files, "."));
    NotingBridge bridge(simulation.bridge(), clock);
    kv408::Service service({.clock = clock,
                            .bridge = bridge,
                            .files = files,
                            .places = {},
                            .coder = coder,
                            .log = log},
                           {.port = 0});
    std::thread program([&service] { service.run(); });
    const std::uint16_t port = service.port();
    ask(SocketLine(port), "*OPC?");
    std::this_thread::sleep_for(1s);
    std::printf("%-42s %9s %6s %9s %9s %9s\n", "", "answers/s", "ticks", "median ms", "99 % ms",
                "worst ms");
    const auto asks = [](const char* question) {
        return [question](const SocketLine& line) { return ask(line, question); };
    };
    measure("nobody", port, bridge, 0, {}, time);
    measure("1 client asks a number", port, bridge, 1, asks("ACQ:COUN?"), time);
    measure("8 clients ask a number", port, bridge, 8, asks("ACQ:COUN?"), time);
    measure("8 clients fetch 650 points", port, bridge, 8, asks("WAV:DATA?"), time);
    measure("8 clients measure everything", port, bridge, 8, asks("MEAS:ALL? CHAN1"), time);
    measure("1 client takes bitmaps", port, bridge, 1, asks("HCOP:SDUM:DATA? BMP"), time);
    measure("1 client takes PNGs", port, bridge, 1, asks("HCOP:SDUM:DATA? PNG"), time);
    std::this_thread::sleep_for(500ms); // until nobody is there
    {
        std::vector<std::unique_ptr<SocketLine>> mute;
        while (mute.size() < 7) {
            mute.push_back(std::make_unique<SocketLine>(port));
            for (int more = 0; more < 20; ++more) {
                mute.back()->say("HCOP:SDUM:DATA? BMP\n");
            }
        }
        measure("1 client asks a number, 7 never read", port, bridge, 1, asks("ACQ:COUN?"), time);
    }
    service.ask_end();
    program.join();
}
