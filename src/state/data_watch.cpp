#include "state/data_watch.h"

#include <algorithm>

namespace kv408 {

void DataWatch::take_sweep(Time now) {
    since_ = now;
    silence_.reset();
}

void DataWatch::take_set_up(Time now) {
    if (!silence_) {
        since_ = now;
    }
}

void DataWatch::take_point(Time now, int index) {
    pass_takes_ = (now - pass_began_) * points_per_pass / index;
}

void DataWatch::look(Time now, const Doing& doing) {
    if (!doing.sweeps) {
        since_.reset();
        silence_.reset();
        return;
    }
    if (!since_) {
        since_ = now;
    }
    constexpr Time shortest = std::chrono::seconds(1);
    const Time usual = doing.by_points ? std::max(shortest, 2 * pass_takes_) : shortest;
    const Time passed = now - *since_;
    if (silence_ || passed >= usual) {
        silence_ = std::chrono::duration_cast<std::chrono::seconds>(passed);
    }
}

} // namespace kv408
