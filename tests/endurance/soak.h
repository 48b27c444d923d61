#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "endurance/soak_host.h"
#include "endurance/soak_user.h"

namespace kv408 {

/// What is asked of a soak.
struct SoakOptions {
    std::chrono::minutes length{10};        ///< of virtual time
    unsigned seed = 1;                      ///< decides everything that happens
    std::optional<std::int64_t> until_step; ///< ends after this step and tells what is there
};

/// The whole program in the hands of someone who does anything with it, the instrument and its
/// cables for hours of virtual time, on and on: a program that ends by itself or on request is
/// started again. After an hour in which that happens often come five in which one program lives
/// on, as memory that it never uses again is given back at its end. Fails when the program ends
/// without a reason, when the instrument has another set-up than the panel shows, when settings do
/// not come back at the next start, or when memory grows.
class Soak {
public:
    explicit Soak(const SoakOptions& options);

    /// Runs it and prints how it goes; true when nothing failed.
    bool run();

private:
    void ticks(int count);
    void step();
    void note_faults();
    void check_steps();
    void heal();
    /// The computer sleeps; meanwhile the instrument is switched off and on.
    void sleep_awhile();
    void hear(const std::string& text);
    void pass_mark();

    void settle();
    void check_set_up();
    void check_memory(const std::string& when);
    void change_weather();

    void begin();
    bool start();
    /// What a program left open the system closes when its process ends: as if it were unplugged.
    void close_device();
    void end_on_request();
    void begin_again();
    void check_settings(const std::string& before);
    [[nodiscard]] std::string saved_settings() const;
    /// What the end could not save.
    [[nodiscard]] std::string settings_aside() const;

    void fail(const std::string& what);
    void tell_where() const;
    void tell_state() const;

    SoakOptions options_;
    Chance chance_;
    CalendarClock clock_;
    simulator::Simulation simulation_;
    SoakBoxes boxes_{chance_};
    SoakMessages messages_{chance_};
    SoakFiles files_;
    SoakChoosers choosers_{chance_, files_};
    SoakCoder coder_;
    std::function<void(int)> ticks_ = [this](int count) { ticks(count); };
    std::unique_ptr<Scope> scope_;
    std::unique_ptr<SoakUser> user_;

    SoakWeather weather_;
    std::int64_t step_ = 0;
    std::int64_t tick_count_ = 0;
    std::int64_t starts_ = 0;
    std::int64_t asides_ = 0;           ///< starts that were offered what could not be saved
    std::int64_t agreements_ = 0;       ///< times that instrument and panel were compared
    std::chrono::nanoseconds interval_; ///< between the marks at which memory is looked at
    std::chrono::nanoseconds next_mark_;
    std::optional<std::size_t> first_bytes_; ///< allocated at the first mark
    std::chrono::nanoseconds last_fault_{0};
    bool fault_seen_ = false; ///< there was a fault since the last comparison
    bool within_message_ = false;
    bool failed_ = false;
    LastTexts done_{20};
    LastTexts told_{20};
};

} // namespace kv408
