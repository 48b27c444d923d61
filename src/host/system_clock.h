#pragma once

#include "host/clock.h"

namespace kv408 {

/// The machine's own clocks. What passes while the computer sleeps counts: the instrument may have
/// been switched off and on meanwhile.
class SystemClock : public Clock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override;
    void sleep(std::chrono::nanoseconds duration) override;
    [[nodiscard]] LocalTime local_time() const override;
    [[nodiscard]] std::chrono::system_clock::time_point time_of_day() const override {
        return std::chrono::system_clock::now();
    }
};

} // namespace kv408
