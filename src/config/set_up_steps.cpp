#include "config/set_up_steps.h"

#include <cassert>
#include <utility>

namespace kv408 {
namespace {

std::vector<std::string> keys_of(const std::map<std::string, std::string>& changed) {
    std::vector<std::string> keys;
    keys.reserve(changed.size());
    for (const auto& [key, value] : changed) {
        keys.push_back(key);
    }
    return keys;
}

} // namespace

void SetUpSteps::begin(PanelSetUp now) {
    set_ups_ = {std::move(now)};
    words_of_steps_.clear();
    place_ = 0;
    open_ = false;
}

bool SetUpSteps::goes_on(const std::vector<std::string>& keys, const Moment& moment) const {
    if (!open_ || place_ == 0 || moment.press != last_.press) {
        return false;
    }
    return moment.press != 0 || (keys == last_keys_ && moment.time - last_.time <= one_turn);
}

void SetUpSteps::note(const PanelSetUp& now, const Moment& moment, const std::string& name) {
    const PanelSetUp& before = present();
    if (now == before) {
        return;
    }
    std::vector<std::string> keys = keys_of(differences(before, now));
    forget_what_was_taken_back();
    if (name.empty() && goes_on(keys, moment)) {
        go_on(now);
    } else {
        take_step(now);
    }
    if (!name.empty()) {
        words_of_steps_.back() = name;
        open_ = false;
    }
    last_ = moment;
    last_keys_ = std::move(keys);
}

void SetUpSteps::go_on(const PanelSetUp& now) {
    set_ups_[place_] = now;
    if (now == set_ups_[place_ - 1]) {
        // It went back to where it began: nothing has been done.
        set_ups_.pop_back();
        words_of_steps_.pop_back();
        --place_;
        open_ = false;
    } else {
        words_of_steps_.back() = words_(differences(set_ups_[place_ - 1], now));
    }
}

void SetUpSteps::take_step(const PanelSetUp& now) {
    words_of_steps_.push_back(words_(differences(set_ups_[place_], now)));
    set_ups_.push_back(now);
    ++place_;
    open_ = true;
    if (words_of_steps_.size() > most) {
        words_of_steps_.erase(words_of_steps_.begin());
        set_ups_.erase(set_ups_.begin());
        --place_;
    }
}

void SetUpSteps::forget_what_was_taken_back() {
    if (place_ < count()) {
        set_ups_.resize(place_ + 1);
        words_of_steps_.resize(place_);
        open_ = false;
    }
}

const PanelSetUp& SetUpSteps::go(std::size_t place) {
    assert(place <= count());
    place_ = place;
    open_ = false;
    return set_ups_[place_];
}

} // namespace kv408
