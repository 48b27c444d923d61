#include "measure/annotation_geometry.h"

#include <cassert>
#include <cmath>

#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/trace_mapping.h"

namespace kv408 {
namespace {

constexpr std::int32_t mark_size = 8;

} // namespace

AnnotationGeometry annolevelline(const ChannelState& channel, double level) {
    const std::int32_t row = round_to_int32(channel.pos - channel.pixpermv * level);
    return {{{plot::first_point, row}, {plot::last_point, row}}};
}

AnnotationGeometry annomarkrect(const ChannelState& channel, const SampleBuffer& samples,
                                double position) {
    const double whole = std::floor(position);
    const auto index = static_cast<std::size_t>(whole);
    assert(position >= 0.0 && index + 1 < samples.raw.size());
    const double first = samples.raw[index];
    const double second = samples.raw[index + 1];
    const double code = first + (second - first) * (position - whole);
    constexpr double half = mark_size / 2.0;
    const std::int32_t left =
        round_to_int32(position - half + static_cast<double>(trace_shift(channel)));
    const std::int32_t top = round_to_int32(trace_row(channel, code) - half);
    return {{{left, top}, {left + mark_size, top + mark_size}}};
}

} // namespace kv408
