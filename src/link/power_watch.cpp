#include "link/power_watch.h"

#include <utility>

namespace kv408 {

bool SetUpWhenLate::take(bool late) {
    const bool due = late ? !within_ : put_off_;
    within_ = late || due;
    put_off_ = late && !due;
    return due;
}

void PowerWatch::note_request() {
    asked_at_ = clock_.now();
    judged_ = false;
}

bool PowerWatch::note_empty_queue() {
    // By then the instrument has sent the first bytes of a reply: it waits 65.535 ms for a trigger
    // at most. A tick may come right after a request, as after a set-up that took longer.
    constexpr std::chrono::milliseconds longest_wait{80};
    if (clock_.now() - asked_at_ < longest_wait) {
        return false;
    }
    note_silence();
    return true;
}

void PowerWatch::note_silence() {
    unanswered_ = true;
    ranges_doubtful_ = true;
    late_ = late_ || passed(heard_at_);
}

void PowerWatch::note_answer() {
    ranges_doubtful_ = ranges_doubtful_ || unanswered_ || passed(heard_at_);
    unanswered_ = false;
    heard_at_ = clock_.now();
}

void PowerWatch::note_acknowledge(bool ranges) {
    // What was sent before a long silence may be lost.
    late_ = late_ || (passed(heard_at_) && !back_.within_lateness());
    note_answer();
    if (ranges) {
        ranges_doubtful_ = false;
        late_ = false;
        back_.forget_put_off();
    }
}

bool PowerWatch::ranges_lost() const {
    const bool long_ago = passed(heard_at_);
    return !(unanswered_ && long_ago) && (ranges_doubtful_ || long_ago);
}

bool PowerWatch::is_back() {
    if (std::exchange(judged_, true)) {
        return false;
    }
    ranges_doubtful_ = ranges_doubtful_ || unanswered_;
    unanswered_ = false;
    return back_.take(std::exchange(late_, false));
}

} // namespace kv408
