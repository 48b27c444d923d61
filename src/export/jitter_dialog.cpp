#include "export/jitter_dialog.h"

#include <array>
#include <cmath>
#include <utility>

#include "export/typed_quantity.h"
#include "state/units.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

constexpr int most_edges = 1000;

std::string_view edge_text(Crosses way) {
    switch (way) {
    case Crosses::rising:
        return "A rising edge";
    case Crosses::falling:
        return "A falling edge";
    case Crosses::both:
        break;
    }
    return "Random data: edges of both directions";
}

/// `number` of the dual-Dirac parts of `jitter`.
template <typename Number>
Told<double> part_in(const Told<Jitter>& jitter, double per_unit, Number number) {
    return told_of(jitter, per_unit, [number](const Jitter& of) -> Told<double> {
        return of.parts ? Told<double>(number(*of.parts)) : Told<double>(of.parts.why());
    });
}

std::string estimate_of(const Told<Jitter>& jitter) {
    if (!jitter || !jitter->parts) {
        return {};
    }
    return "estimate, from " + told_text(jitter->parts->tail_hits, ToldUnit::hits) + " hits";
}

} // namespace

std::vector<ToldValue> jitter_values(const Told<Jitter>& jitter) {
    constexpr double s = picoseconds_per_second;
    constexpr double v = millivolts_per_volt;
    const auto told = [&jitter](std::string_view name, ToldUnit unit, double per_unit,
                                auto number) {
        return ToldValue{std::string(name), told_of(jitter, per_unit, number), unit};
    };
    const auto estimate = [&jitter](std::string_view name, double per_unit, ToldUnit unit,
                                    auto number) {
        return ToldValue{std::string(name), part_in(jitter, per_unit, number), unit,
                         estimate_of(jitter)};
    };
    using enum ToldUnit;
    return {
        told("Hits", hits, 1.0, [](const Jitter& of) { return of.times.hits; }),
        told("Sweeps for 2 %", hits, 1.0,
             [](const Jitter& of) { return std::ceil(of.sweeps_wanted); }),
        told("Crossing level", volts, v, [](const Jitter& of) { return of.level; }),
        told("Mean time", seconds, s, [](const Jitter& of) { return of.times.mean; }),
        told("Slope", volts_per_second, v / s, [](const Jitter& of) { return of.times.slope; }),
        told("Std dev", seconds, s, [](const Jitter& of) { return of.times.sigma; }),
        told("Peak to peak", seconds, s, [](const Jitter& of) { return of.peak_to_peak; }),
        told("Noise", volts, v, [](const Jitter& of) { return of.noise; }),
        told("Taken off", seconds, s, [](const Jitter& of) { return of.taken_off; }),
        told("RMS jitter", seconds, s, [](const Jitter& of) { return of.rms; }),
        told("Interval", seconds, s,
             [](const Jitter& of) {
                 return of.interval ? Told<double>(*of.interval)
                                    : Told<double>(WhyNot::one_crossing);
             }),
        told("Sweeps for 10 %", hits, 1.0,
             [](const Jitter& of) {
                 return of.parts ? Told<double>(std::ceil(of.parts_wanted))
                                 : Told<double>(of.parts.why());
             }),
        estimate("Random jitter", s, seconds, [](const DualDirac& of) { return of.random; }),
        estimate("Deterministic jitter", s, seconds,
                 [](const DualDirac& of) { return of.deterministic; }),
        estimate("Total jitter at 1E-12", s, seconds,
                 [](const DualDirac& of) { return of.total(told_error_ratio); }),
    };
}

JitterDialog::JitterDialog(DensityDialog& density, const Clock& clock)
    : watch_(density, clock,
             {.channel = controls_.cmbJitterChannel,
              .remark = controls_.lblJitterRemark,
              .sweeps = &controls_.lblJitterState},
             {.least = 1s}, [this] { show_values(); }) {
    controls_.cmbJitterEdge.set_entries({"Any edge", "Rising edge", "Falling edge"});
    controls_.cmbJitterEdge.set_index(0);
    controls_.cmbJitterEdge.on_click([this] { take_setup(); });
    for (TextBox* const box : {&controls_.txtJitterNumber, &controls_.txtJitterLevel,
                               &controls_.txtJitterOwn, &controls_.txtJitterInterval}) {
        box->on_change([this] { take_setup(); });
    }
    controls_.lblJitterNames.set_caption(told_names(jitter_values(WhyNot::no_hits)));
}

void JitterDialog::take_setup() {
    constexpr std::array<std::optional<Crosses>, 3> ways = {std::nullopt, Crosses::rising,
                                                            Crosses::falling};
    setup_.way = ways.at(static_cast<std::size_t>(controls_.cmbJitterEdge.index()));
    setup_.number = typed_whole(controls_.txtJitterNumber, {1, most_edges});
    setup_.level = typed_level(controls_.txtJitterLevel);
    setup_.instrument_ps =
        typed_time(controls_.txtJitterOwn, {0.0, longest_typed_time}).value_or(0.0);
    setup_.interval =
        typed_time(controls_.txtJitterInterval, {least_typed_interval, longest_typed_time});
    refresh();
}

Told<Jitter> JitterDialog::jitter() const {
    const Collected* const collected = watch_.collected();
    if (collected == nullptr) {
        return WhyNot::no_hits;
    }
    return jitter_of(*collected, setup_);
}

void JitterDialog::show_values() {
    const Told<Jitter> found = jitter();
    values_ = jitter_values(found);
    controls_.lblJitterEdge.set_caption(
        std::string(found ? edge_text(found->way) : text_of(found.why())));
    controls_.lblJitterValues.set_caption(told_texts(values_));
    bathtub_ = found ? kv408::bathtub(*found, bathtub_steps) : found.why();
    if (computed_) {
        computed_();
    }
}

std::string JitterDialog::table() const {
    return told_table(values_, controls_.cmbJitterChannel.text());
}

} // namespace kv408
