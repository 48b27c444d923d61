#pragma once

#include "simulator/serial_line.h"
#include "simulator/sweep.h"

#include <optional>

namespace kv408::simulator {

/// Time from a command to its acknowledge.
inline constexpr std::chrono::nanoseconds acknowledge_delay = std::chrono::microseconds(200);

/// The linearity calibration: one byte per point.
inline constexpr std::chrono::nanoseconds linearity_step = std::chrono::milliseconds(225);
inline constexpr int linearity_points = 8000;

/// The instrument behind its serial port: takes bytes, keeps settings, answers commands. Nothing
/// runs in the background; each call tells the time.
class Instrument {
public:
    /// The instrument stands on `bench` with the memory `flash`; `seed` decides all chance.
    Instrument(TestBench& bench, Flash& flash, std::uint64_t seed)
        : bench_(bench), flash_(flash), noise_(seed), sweeper_(bench, flash, noise_) {}

    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    /// A byte has arrived `at`. Returns the command when it completes a frame; the command is
    /// then carried out, and a reply that is still being sent is broken off.
    std::optional<Command> receive(Byte byte, std::chrono::nanoseconds at);

    /// Lets everything happen that happens by itself up to `now`: the bytes of a linearity
    /// calibration, the loss of power.
    void run_until(std::chrono::nanoseconds now);

    /// The line to the bridge.
    [[nodiscard]] SerialLine& line() { return line_; }

    /// The present settings.
    [[nodiscard]] const Settings& settings() const { return settings_; }

private:
    /// A linearity calibration under way.
    struct LinearityRun {
        std::chrono::nanoseconds next_at; // of the next byte
        int bytes_left;
    };

    void execute(const Command& command, std::chrono::nanoseconds at);
    [[nodiscard]] bool set_up(const Command& command);
    void set_trigger(const Command& command);
    void set_gain(const Command& command);
    void acknowledge(Byte code, std::chrono::nanoseconds at);
    void send_samples(Byte code, const SampleReply& samples);
    /// Answers command `code`; the codes of a sweep that its triggers hold up go out at
    /// `codes_ready`.
    void reply(Byte code, std::vector<Byte> bytes, std::chrono::nanoseconds start,
               const std::vector<std::chrono::nanoseconds>& codes_ready = {});
    void send(std::vector<Byte> bytes, std::chrono::nanoseconds start,
              const std::vector<std::chrono::nanoseconds>& codes_ready = {});
    [[nodiscard]] Byte linearity_error();

    TestBench& bench_; // only the counts of its faults are changed
    Flash& flash_;
    Noise noise_;
    Sweeper sweeper_;
    FrameReader reader_;
    SerialLine line_;
    Settings settings_;
    std::optional<LinearityRun> linearity_run_;
    int bytes_since_loss_ = 0;
};

} // namespace kv408::simulator
