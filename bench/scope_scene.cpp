#include "scope_scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "display/trace.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408::bench {
namespace {

constexpr double periods = 5.0;
constexpr double amplitude = 3.0 * plot::division;          // rows
constexpr double deviation = plot::division / 10.0;         // rows
constexpr double codes_per_row = 2400.0 / 512.0;            // of a channel as it starts up
constexpr std::size_t shown_sweeps = 1 + plot::generations; // the current one and the history

std::size_t slot(int index) {
    return static_cast<std::size_t>(index);
}

} // namespace

ScopeScene::ScopeScene(Signal signal, int depth, double scale)
    : signal_(signal), depth_(depth), picture_({panel_, samples_, channels_, acquisition_, program_,
                                                colours_, cursors_, trigger_, settings_, marks_}) {
    program_.loaded = true;
    acquisition_.scopestate = "scope";
    acquisition_.ready = {true, true};
    panel_.persist.set_checked(true);
    settings_.persisttime = static_cast<std::int16_t>(depth);
    picture_.set_scale(PlotScale(scale));
    picture_.calcPersistColors();
    picture_.makegrid();
    picture_.refreshCH1(0);
    picture_.refreshCH2(0);
    // As in the window: each draw composes.
    picture_.on_drawn([](Columns) {});
    while (sweeps_.size() < shown_sweeps) {
        sweep();
    }
    picture_.draw(draw_flags::all);
}

void ScopeScene::sample(int index) {
    std::normal_distribution<double> around(0.0, deviation);
    std::uniform_real_distribution<double> anywhere(-255.0, 255.0);
    for (const Channel channel : both_channels) {
        const double phase =
            2.0 * std::numbers::pi * periods * index / plot::width + (channel == ch1 ? 0.0 : 1.0);
        const double rows = signal_ == Signal::sine ? amplitude * std::sin(phase) + around(random_)
                                                    : anywhere(random_);
        samples_[slot(channel)].raw[slot(index)] = static_cast<std::uint16_t>(
            std::clamp(round_to_int32(zero_volt_code + rows * codes_per_row), 0, 4095));
    }
}

void ScopeScene::sweep() {
    SweepPoints points;
    for (int index = plot::first_point; index <= plot::last_point; ++index) {
        sample(index);
        for (const Channel channel : both_channels) {
            picture_.refresh(channel, index);
            const TracePoint point = map_sample(channels_[slot(channel)],
                                                samples_[slot(channel)].raw[slot(index)], index);
            points[slot(channel)].push_back(
                {picture_.scale().place(point.x), picture_.scale().place(point.y)});
        }
    }
    picture_.movepersistance();
    sweeps_.push_front(std::move(points));
    if (sweeps_.size() > shown_sweeps) {
        sweeps_.pop_back();
    }
}

void ScopeScene::sample_next_point() {
    acquisition_.pointmode = true;
    newest_point_ = newest_point_ % plot::last_point + 1;
    sample(newest_point_);
}

void ScopeScene::show_point() {
    picture_.refreshCH1(newest_point_);
    picture_.refreshCH2(newest_point_);
    picture_.set_newest_point(newest_point_);
    picture_.draw(draw_flags::all);
}

} // namespace kv408::bench
