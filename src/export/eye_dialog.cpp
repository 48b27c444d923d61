#include "export/eye_dialog.h"

#include <cmath>
#include <utility>

#include "export/typed_quantity.h"
#include "state/units.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

std::string_view found_text(const Told<Eye>& eye) {
    if (!eye) {
        return text_of(eye.why());
    }
    const auto closed = [](const Told<double>& size) {
        return !size && size.why() == WhyNot::closed;
    };
    if (closed(eye->height)) {
        return closed(eye->width) ? "The eye is closed in height and width"
                                  : "The eye is closed in height";
    }
    if (closed(eye->width)) {
        return "The eye is closed in width";
    }
    return eye->height ? "The eye is open" : text_of(eye->height.why());
}

} // namespace

std::vector<ToldValue> eye_values(const Told<Eye>& eye) {
    constexpr double s = picoseconds_per_second;
    constexpr double v = millivolts_per_volt;
    const auto told = [&eye](std::string_view name, ToldUnit unit, double per_unit, auto number) {
        return ToldValue{std::string(name), told_of(eye, per_unit, number), unit};
    };
    using enum ToldUnit;
    return {
        told("Hits", hits, 1.0, [](const Eye& of) { return of.crossing_hits; }),
        told("Sweeps for 2 %", hits, 1.0,
             [](const Eye& of) { return std::ceil(of.sweeps_wanted); }),
        told("Unit interval", seconds, s, [](const Eye& of) { return of.interval; }),
        told("Crossing time", seconds, s, [](const Eye& of) { return of.crossing; }),
        told("Crossing level", volts, v, [](const Eye& of) { return of.crossing_level; }),
        told("Crossing percentage", percent, 1.0,
             [](const Eye& of) { return of.crossing_percentage; }),
        told("One level", volts, v, [](const Eye& of) { return of.levels.one.mean; }),
        told("Zero level", volts, v, [](const Eye& of) { return of.levels.zero.mean; }),
        told("Sigma of one", volts, v, [](const Eye& of) { return of.levels.one.sigma; }),
        told("Sigma of zero", volts, v, [](const Eye& of) { return of.levels.zero.sigma; }),
        told("Eye amplitude", volts, v, [](const Eye& of) { return of.amplitude; }),
        told("Eye height", volts, v, [](const Eye& of) { return of.height; }),
        told("Eye width", seconds, s, [](const Eye& of) { return of.width; }),
        told("Jitter", seconds, s, [](const Eye& of) { return of.crossing_sigma; }),
        told("Q", ratio, 1.0, [](const Eye& of) { return of.q; }),
        told("Signal to noise", decibels, 1.0, [](const Eye& of) { return of.signal_to_noise; }),
        told("Rise time", seconds, s, [](const Eye& of) { return of.rise_time; }),
        told("Fall time", seconds, s, [](const Eye& of) { return of.fall_time; }),
        told("Duty-cycle distortion", seconds, s, [](const Eye& of) { return of.distortion; }),
    };
}

EyeDialog::EyeDialog(DensityDialog& density, const Clock& clock, ShowMarks show_marks)
    : show_marks_(std::move(show_marks)), watch_(density, clock,
                                                 {.channel = controls_.cmbEyeChannel,
                                                  .remark = controls_.lblEyeRemark,
                                                  .sweeps = &controls_.lblEyeState},
                                                 {.least = 1s}, [this] { show_values(); }) {
    for (TextBox* const box : {&controls_.txtEyeInterval, &controls_.txtEyeCrossing}) {
        box->on_change([this] { take_setup(); });
    }
    controls_.lblEyeNames.set_caption(told_names(eye_values(WhyNot::no_hits)));
}

void EyeDialog::close() {
    watch_.close();
    show_marks_(std::nullopt);
}

void EyeDialog::take_setup() {
    setup_.interval =
        typed_time(controls_.txtEyeInterval, {least_typed_interval, longest_typed_time});
    setup_.crossing =
        typed_time(controls_.txtEyeCrossing, {-longest_typed_time, longest_typed_time});
    refresh();
}

Told<Eye> EyeDialog::eye() const {
    const Collected* const collected = watch_.collected();
    if (collected == nullptr) {
        return WhyNot::no_hits;
    }
    return eye_of(*collected, setup_);
}

void EyeDialog::show_values() {
    const Told<Eye> found = eye();
    values_ = eye_values(found);
    controls_.lblEyeFound.set_caption(std::string(found_text(found)));
    controls_.lblEyeValues.set_caption(told_texts(values_));
    if (found) {
        const Collected& collected = *watch_.collected();
        show_marks_(DensityMarks{watch_.channel(), collected.with, eye_marks(collected, *found)});
    } else {
        show_marks_(std::nullopt);
    }
}

std::string EyeDialog::table() const {
    return told_table(values_, controls_.cmbEyeChannel.text());
}

} // namespace kv408
