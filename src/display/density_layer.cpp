#include "display/density_layer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "display/reference_lines.h"
#include "display/trace.h"
#include "panel/time_base.h"
#include "state/block_points.h"
#include "state/code_conversion.h"
#include "state/rounding.h"
#include "state/trace_mapping.h"
#include "state/units.h"

namespace kv408 {
namespace {

/// A pixel that no colour is: nothing is painted there.
constexpr Pixel no_pixel = 0;

/// The colours of the bands of a density.
class Shades {
public:
    Shades(const DensityColours& colours, const DensityBandEnds& ends) : changes_(colours) {
        for (std::size_t band = 1; band < ends_below_.size(); ++band) {
            ends_below_[band] = ends[band - 1];
            changes_[band] ^= colours[band - 1];
        }
    }

    /// Sets `pixels` to the colours of `hits`, `no_pixel` where there are none. Without a branch,
    /// for several to be told apart at a time.
    void shade(std::span<const std::uint32_t> hits, Pixel* pixels) const {
        const std::array ends = ends_below_;
        const std::array changes = changes_;
        for (std::size_t index = 0; index < hits.size(); ++index) {
            const std::uint32_t here = hits[index];
            Pixel pixel = no_pixel;
            for (std::size_t band = 0; band < ends.size(); ++band) {
                pixel ^= here > ends[band] ? changes[band] : no_pixel;
            }
            pixels[index] = pixel;
        }
    }

private:
    std::array<Pixel, density_bands> changes_; ///< bits that differ from the band below
    std::array<std::uint32_t, density_bands> ends_below_ = {}; ///< where the band below ends
};

/// Lays the pixels from `over` on that are any over `pixels`.
void lay_over(std::span<Pixel> pixels, const Pixel* over) {
    for (std::size_t index = 0; index < pixels.size(); ++index) {
        pixels[index] = over[index] == no_pixel ? pixels[index] : over[index];
    }
}

/// For each column of pixels of `units`, which of the units it lies in, 0 the first.
std::vector<std::uint16_t> units_of_pixels(const PlotScale& scale, Columns units) {
    std::vector<std::uint16_t> unit_of;
    const int first = scale.edge(units.left);
    for (int unit = units.left; unit < units.right; ++unit) {
        unit_of.resize(static_cast<std::size_t>(scale.edge(unit + 1) - first),
                       static_cast<std::uint16_t>(unit - units.left));
    }
    return unit_of;
}

/// Whether a unit whose hits rise from `before` to `after` comes to lie in another of the bands of
/// a density whose most hit place has `most`.
bool leaves_band(std::uint32_t before, std::uint32_t after, std::uint32_t most) {
    return before == 0 ||
           density_band(std::min(before, most), most) != density_band(std::min(after, most), most);
}

} // namespace

std::optional<DensityScreen> density_screen(const FrontPanel& panel, const Channels& channels,
                                            const AcquisitionState& acquisition, Channel channel,
                                            const MeasuredWith& with) {
    const TimeBaseRow* const row = selected_time_base(panel);
    const auto now = reference_screen(panel, channels, channel);
    if (row == nullptr || !now) {
        return std::nullopt;
    }
    const ChannelState& state = channels.at(channel);
    const bool point = with.mode == SweepMode::point;
    const double first_time =
        point ? row->tbresolution : static_cast<double>(acquisition.offset.at(channel));
    const double columns_per_picosecond = now->columns_per_second / picoseconds_per_second;
    return DensityScreen{.codes_per_code = with.conversion.atten * with.conversion.vtfactor /
                                           (state.atten * state.vtfactor),
                         .centre_code = static_cast<double>(state.offsetdac),
                         .rows_per_code = state.scale * state.vtfactor,
                         .aligned = point == row->pointmode &&
                                    with.time_per_point == row->tbresolution &&
                                    with.first_time == first_time,
                         .stretched = !point,
                         .hstretch = row->hstretch,
                         .shift = trace_shift(state),
                         .first_column = plot::first_point + (with.first_time - now->first_time) *
                                                                 columns_per_picosecond,
                         .columns_per_point = with.time_per_point * columns_per_picosecond};
}

void DensityLayer::show(const Collected& collected, const DensityScreen& screen) {
    if (current_ && collected_ == &collected && screen_ == screen) {
        return;
    }
    collected_ = &collected;
    screen_ = screen;
    current_ = true;
    place_codes(collected.with.conversion);
    place_points(collected.counts.points());
    hits_.assign(std::size_t{plot::width} * plot::height, 0);
    most_ = 0;
    hit_.clear();
    count(collected.counts);
    change_all();
}

void DensityLayer::place_codes(const Conversion& conversion) {
    const auto row_of = [&](double code) {
        return (screen_.centre_code - code) * screen_.rows_per_code + double{plot::centre_y};
    };
    const double half = screen_.codes_per_code * std::abs(screen_.rows_per_code) / 2.0;
    rows_.resize(scale_codes);
    for (int code = 0; code < scale_codes; ++code) {
        const int from_zero =
            converted(conversion, static_cast<std::int16_t>(code)).code - zero_volt_code;
        const double row = row_of(zero_volt_code + from_zero * screen_.codes_per_code);
        const int own = round_to_int32(std::clamp(row, highest_row, lowest_row));
        // The rows that are nearer to this code than to its neighbours.
        const int top =
            static_cast<int>(std::ceil(std::clamp(row - half, highest_row, lowest_row + 1)));
        const int end =
            static_cast<int>(std::ceil(std::clamp(row + half, highest_row, lowest_row + 1)));
        rows_[static_cast<std::size_t>(code)] = {
            static_cast<std::int16_t>(std::min(own, top < end ? top : own)),
            static_cast<std::int16_t>(std::max(own + 1, top < end ? end : own + 1))};
    }
}

void DensityLayer::place_points(int points) {
    points_.assign(plot::width, {});
    const auto set = [&](std::int64_t column, int first, int end) {
        first = std::clamp(first, 0, points);
        end = std::clamp(end, first, points);
        if (column >= plot::first_point && column <= plot::last_point) {
            points_[static_cast<std::size_t>(column)] = {static_cast<std::int16_t>(first),
                                                         static_cast<std::int16_t>(end)};
        }
    };
    if (screen_.aligned) {
        const auto block = block_points(screen_.hstretch);
        for (int column = plot::first_point; column <= plot::last_point; ++column) {
            const int point =
                screen_.stretched ? block[static_cast<std::size_t>(column)] : column - 1;
            set(column + screen_.shift, point, point + 1);
        }
        return;
    }
    const auto point_at = [&](double column) {
        return (column - screen_.first_column) / screen_.columns_per_point;
    };
    const auto whole = [points](double point) {
        return static_cast<int>(std::clamp(point, -1.0, points + 1.0));
    };
    for (int column = plot::first_point; column <= plot::last_point; ++column) {
        const int first = whole(std::ceil(point_at(column - 0.5)));
        const int end = whole(std::ceil(point_at(column + 0.5)));
        const int before = whole(std::floor(point_at(column)));
        set(column, first < end ? first : before, first < end ? end : before + 1);
    }
}

void DensityLayer::count(const Density& density) {
    for (int column = 0; column < plot::width; ++column) {
        const Points points = points_[static_cast<std::size_t>(column)];
        for (int point = points.first; point < points.end; ++point) {
            const auto counts = density.at(point);
            const Density::Codes passed = density.passed(point);
            for (int code = passed.first; code < passed.end; ++code) {
                const auto index = static_cast<std::size_t>(code);
                if (counts[index] != 0) {
                    for (int y = rows_[index].top; y < rows_[index].end; ++y) {
                        hit(column, y, counts[index]);
                    }
                }
            }
        }
    }
}

/// Returns how many the unit had before.
inline std::uint32_t DensityLayer::hit(int column, int y, std::uint32_t hits) {
    std::uint32_t& at = hits_[static_cast<std::size_t>(y * plot::width + column)];
    const std::uint32_t before = at;
    at += std::min(hits, highest_count - at);
    most_ = std::max(most_, at);
    if (before == 0) {
        hit_.add_pixel(column, y);
    }
    return before;
}

void DensityLayer::add(std::span<const std::int16_t> codes, std::uint32_t weight) {
    if (!current_) {
        return;
    }
    for (int column = plot::first_point; column <= plot::last_point; ++column) {
        const Points points = points_[static_cast<std::size_t>(column)];
        for (int point = points.first; point < points.end; ++point) {
            const int code =
                std::clamp(int{codes[static_cast<std::size_t>(point)]}, 0, scale_codes - 1);
            const RowRun rows = rows_[static_cast<std::size_t>(code)];
            for (int y = rows.top; y < rows.end; ++y) {
                const std::uint32_t before = hit(column, y, weight);
                if (leaves_band(before, row(y)[static_cast<std::size_t>(column)], taken_most_)) {
                    changed_.add_pixel(column, y);
                }
            }
        }
    }
}

Tiles DensityLayer::take_changed() {
    add_moved();
    taken_most_ = most_;
    return std::exchange(changed_, Tiles(plot::width, plot::height));
}

/// Adds the units with hits that lie in another band because the bands end elsewhere.
void DensityLayer::add_moved() {
    const DensityBandEnds before = density_band_ends(taken_most_);
    const DensityBandEnds now = density_band_ends(most_);
    if (before == now) {
        return;
    }
    const auto look_at = [&](const Rectangle& units) {
        std::array<std::uint32_t, plot::width> moved = {};
        const int right = std::min(units.right, plot::width);
        for (std::size_t band = 0; band < now.size(); ++band) {
            // Ends rise: those in between were in the band above.
            const std::uint32_t from = before[band];
            const std::uint32_t by = now[band] - from;
            for (int y = units.top; by != 0 && y < std::min(units.bottom, plot::height); ++y) {
                const auto hits = row(y);
                for (auto x = static_cast<std::size_t>(units.left);
                     x < static_cast<std::size_t>(right); ++x) {
                    moved[x] |= hits[x] - from - 1 < by ? 1U : 0U;
                }
            }
        }
        for (int x = units.left; x < right; ++x) {
            if (moved[static_cast<std::size_t>(x)] != 0) {
                changed_.add_pixel(x, units.top);
            }
        }
    };
    for (int top = 0; top < plot::height; top += Tiles::band_rows) {
        hit_.for_each_row({0, plot::width}, top, look_at);
    }
}

std::span<const std::uint32_t> DensityLayer::row(int y) const {
    return std::span(hits_).subspan(static_cast<std::size_t>(y) * plot::width, plot::width);
}

DensityWindow DensityLayer::within(const PlotWindow& window) const {
    DensityWindow found{.first_code = 0, .end_code = 0};
    for (int x = window.left; x < window.right; ++x) {
        const Points points = points_[static_cast<std::size_t>(x)];
        if (points.first < points.end) {
            found.first_point = found.end_point == 0
                                    ? points.first
                                    : std::min<int>(found.first_point, points.first);
            found.end_point = std::max<int>(found.end_point, points.end);
        }
    }
    for (int code = 0; code < scale_codes; ++code) {
        const RowRun rows = rows_[static_cast<std::size_t>(code)];
        if (rows.top < window.bottom && rows.end > window.top) {
            found.first_code = found.end_code == 0 ? code : found.first_code;
            found.end_code = code + 1;
        }
    }
    return found;
}

void DensityLayer::paint(Surface& surface, const PlotScale& scale, const Rectangle& units,
                         const DensityColours& colours) const {
    const Shades shades(colours, density_band_ends(most_));
    const int right = std::min(units.right, plot::width);
    const auto left = static_cast<std::size_t>(units.left);
    const auto count = static_cast<std::size_t>(right) - left;
    const int first = scale.edge(units.left);
    std::array<Pixel, plot::width> shaded = {};
    std::vector<Pixel> line(static_cast<std::size_t>(scale.edge(right) - first));
    const bool natural = scale.factor() == PlotScale::natural;
    const auto unit_of =
        natural ? std::vector<std::uint16_t>() : units_of_pixels(scale, {units.left, right});
    for (int y = units.top; y < std::min(units.bottom, plot::height); ++y) {
        shades.shade(row(y).subspan(left, count), shaded.data());
        const Pixel* over = shaded.data();
        if (!natural) {
            for (std::size_t pixel = 0; pixel < line.size(); ++pixel) {
                line[pixel] = shaded[unit_of[pixel]];
            }
            over = line.data();
        }
        for (int at = scale.edge(y); at < scale.edge(y + 1); ++at) {
            lay_over({&surface.at(first, at), line.size()}, over);
        }
    }
}

} // namespace kv408
