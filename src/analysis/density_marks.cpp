#include "analysis/density_marks.h"

#include <cstddef>

namespace kv408 {

std::vector<DensityMark> eye_marks(const Collected& collected, const Eye& eye) {
    constexpr double half = 0.5;
    constexpr double middle_begins = half - eye_middle_part / 2.0;
    constexpr double middle_ends = half + eye_middle_part / 2.0;
    const auto place = [&](double time, double level) {
        return MaskPoint{(time - collected.with.first_time) / collected.with.time_per_point,
                         code_at(collected.with, level)};
    };
    const double left = eye.crossing;
    const double right = eye.crossing + eye.interval;
    const LevelHits& one = eye.levels.one;
    const LevelHits& zero = eye.levels.zero;
    const auto level_line = [&](double level) {
        return DensityMark{place(left, level), place(right, level)};
    };
    const auto time_line = [&](double time, bool dotted) {
        return DensityMark{place(time, zero.mean), place(time, one.mean), dotted};
    };
    std::vector<DensityMark> marks = {
        level_line(one.mean),
        level_line(zero.mean),
        time_line(left, false),
        time_line(right, false),
        time_line(left + middle_begins * eye.interval, true),
        time_line(left + middle_ends * eye.interval, true),
    };
    if (eye.height) {
        const double middle = left + half * eye.interval;
        marks.push_back({place(middle, zero.mean + eye_sigmas * zero.sigma),
                         place(middle, one.mean - eye_sigmas * one.sigma)});
    }
    if (eye.width) {
        const double spread = eye_sigmas * eye.crossing_sigma;
        marks.push_back(
            {place(left + spread, eye.crossing_level), place(right - spread, eye.crossing_level)});
    }
    return marks;
}

std::vector<DensityMark> mask_marks(const PlacedMask& mask) {
    std::vector<DensityMark> marks;
    for (const MaskPolygon& polygon : mask.polygons) {
        for (std::size_t corner = 0; corner < polygon.points.size(); ++corner) {
            marks.push_back(
                {polygon.points[corner], polygon.points[(corner + 1) % polygon.points.size()]});
        }
    }
    return marks;
}

} // namespace kv408
