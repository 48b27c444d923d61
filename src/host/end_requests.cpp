#include "host/end_requests.h"

#include <algorithm>
#include <utility>

namespace kv408 {
namespace {

using std::chrono::seconds;

/// How long the program's own thread has to end the program.
constexpr seconds time_to_end{3};
/// How long the end of the process waits for a saving that is under way.
constexpr seconds time_to_save{2};

} // namespace

void EndRequests::set_handlers(TerminationHandlers handlers) {
    const std::scoped_lock lock(asking_, saving_);
    ask_ = std::move(handlers.ask);
    save_ = std::move(handlers.save);
    if (has_been_asked_ && ask_) {
        ask_();
    }
}

void EndRequests::hear() {
    if (first_) {
        again_ = true;
    } else {
        first_ = clock_.now();
    }
    ask();
}

void EndRequests::look() {
    if (!first_ || clock_.now() - *first_ < time_to_end) {
        return;
    }
    if (!overdue_) {
        overdue_ = true;
        // A thread of its own: a disk that does not answer keeps no second request waiting.
        saved_ = std::async(std::launch::async, [this] { save(); });
    }
    if (again_) {
        wait_for_saving();
        end_process_();
    }
}

int EndRequests::milliseconds_left() const {
    if (!first_ || overdue_) {
        return -1;
    }
    // The computer may have slept past that moment.
    const auto left =
        std::max(*first_ + time_to_end - clock_.now(), std::chrono::nanoseconds::zero());
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(left).count());
}

void EndRequests::wait_for_saving() const {
    if (saved_.valid()) {
        saved_.wait_for(time_to_save);
    }
}

void EndRequests::ask() {
    const std::lock_guard lock(asking_);
    has_been_asked_ = true;
    if (ask_) {
        ask_();
    }
}

void EndRequests::save() {
    const std::lock_guard lock(saving_);
    if (save_) {
        save_();
    }
}

} // namespace kv408
