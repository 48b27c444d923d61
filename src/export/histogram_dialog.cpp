#include "export/histogram_dialog.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "export/number_text.h"
#include "state/engineering_format.h"
#include "state/plot_geometry.h"
#include "state/units.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// The time between two updates of numbers and bars.
constexpr std::chrono::nanoseconds between_histograms = 500ms;

constexpr std::size_t shares = 3; // the last values

double per_base_unit(HistogramOf of) {
    return of == HistogramOf::levels ? millivolts_per_volt : picoseconds_per_second;
}

std::string with_unit_of(double value, HistogramOf of) {
    constexpr int digits = 5;
    std::string text = engformat(value, digits);
    return text.append(of == HistogramOf::levels ? "V" : "s");
}

std::string percent(double share) {
    constexpr int digits = 4;
    return plain_text(share * 100.0, digits) + " %";
}

} // namespace

std::array<double, histogram_names.size()> values_of(const HistogramStatistics& statistics,
                                                     HistogramOf of) {
    std::array values = {statistics.hits,     statistics.mean,         statistics.median,
                         statistics.mode,     statistics.sigma,        statistics.lowest,
                         statistics.highest,  statistics.peak_to_peak, statistics.within_1,
                         statistics.within_2, statistics.within_3};
    static_assert(values.size() == histogram_names.size());
    for (std::size_t value = 1; value < values.size() - shares; ++value) {
        values.at(value) /= per_base_unit(of);
    }
    return values;
}

HistogramDialog::HistogramDialog(DensityDialog& density, const Clock& clock, Plot plot)
    : plot_(std::move(plot)),
      watch_(density, clock,
             {.channel = controls_.cmbHistogramChannel, .remark = controls_.lblHistogramRemark},
             {.least = between_histograms, .each_time = true},
             [this] {
                 plot_.show(channel(), window_, of());
                 show_values();
             }),
      window_{plot::centre_x - plot::division / 2, plot::division,
              plot::centre_x + plot::division / 2, plot::height - plot::division} {
    controls_.cmbHistogramOf.set_entries({"Levels", "Times"});
    controls_.cmbHistogramOf.set_index(0);
    controls_.cmbHistogramOf.on_click([this] { refresh(); });
    std::string names;
    for (const std::string_view name : histogram_names) {
        names.append(names.empty() ? "" : "\n").append(name);
    }
    controls_.lblHistogramNames.set_caption(std::move(names));
}

void HistogramDialog::close() {
    watch_.close();
    held_.reset();
    plot_.show(channel(), std::nullopt, of());
}

HistogramOf HistogramDialog::of() const {
    return controls_.cmbHistogramOf.index() == 0 ? HistogramOf::levels : HistogramOf::times;
}

void HistogramDialog::set_window(PlotWindow window) {
    const auto hold = [](int& first, int& end, int size) {
        first = std::clamp(first, 0, size - least_side);
        end = std::clamp(end, first + least_side, size);
    };
    hold(window.left, window.right, plot::width);
    hold(window.top, window.bottom, plot::height);
    if (window_ != window) {
        window_ = window;
        refresh();
    }
}

void HistogramDialog::nudge(int right, int down) {
    const int x = std::clamp(right, -window_.left, plot::width - window_.right);
    const int y = std::clamp(down, -window_.top, plot::height - window_.bottom);
    set_window({window_.left + x, window_.top + y, window_.right + x, window_.bottom + y});
}

void HistogramDialog::stretch(int right, int down) {
    set_window({window_.left, window_.top, window_.right + right, window_.bottom + down});
}

bool HistogramDialog::press(double x, double y) {
    constexpr double reach = 4.0;
    const bool beside = x < window_.left - reach || x >= window_.right + reach ||
                        y < window_.top - reach || y >= window_.bottom + reach;
    if (!is_open() || beside) {
        return false;
    }
    const auto near_to = [](double place, int edge) { return std::abs(place - edge) <= reach; };
    Held held{.left = near_to(x, window_.left),
              .top = near_to(y, window_.top),
              .right = near_to(x, window_.right),
              .bottom = near_to(y, window_.bottom),
              .x = std::lround(x),
              .y = std::lround(y),
              .before = window_};
    // Of a narrow window the right and the lower edge can be taken; inside all of it.
    held.left = held.left && !held.right;
    held.top = held.top && !held.bottom;
    held_ = held;
    return true;
}

void HistogramDialog::drag(double x, double y) {
    if (!held_) {
        return;
    }
    // From unit to unit, so that it is as many of them at each scale of the plot.
    const auto right = static_cast<int>(std::lround(x) - held_->x);
    const auto down = static_cast<int>(std::lround(y) - held_->y);
    PlotWindow window = held_->before;
    if (!held_->left && !held_->top && !held_->right && !held_->bottom) {
        const int by_x = std::clamp(right, -window.left, plot::width - window.right);
        const int by_y = std::clamp(down, -window.top, plot::height - window.bottom);
        set_window(
            {window.left + by_x, window.top + by_y, window.right + by_x, window.bottom + by_y});
        return;
    }
    window.left =
        held_->left ? std::min(window.left + right, window.right - least_side) : window.left;
    window.top = held_->top ? std::min(window.top + down, window.bottom - least_side) : window.top;
    window.right += held_->right ? right : 0;
    window.bottom += held_->bottom ? down : 0;
    set_window(window);
}

std::optional<DensityHistogram> HistogramDialog::histogram() const {
    const Collected* const collected = watch_.collected();
    const auto window = plot_.find(channel(), window_);
    if (collected == nullptr || !window) {
        return std::nullopt;
    }
    return histogram_of(*collected, *window, of());
}

std::optional<HistogramStatistics> HistogramDialog::statistics() const {
    const auto found = histogram();
    return found ? statistics_of(*found) : std::nullopt;
}

void HistogramDialog::show_values() {
    const auto found = histogram();
    const auto statistics = found ? statistics_of(*found) : std::nullopt;
    tell_clipping(found ? found->clipped : 0.0);
    std::string text;
    if (statistics) {
        const auto values = values_of(*statistics, of());
        for (std::size_t value = 0; value < values.size(); ++value) {
            text += text.empty() ? "" : "\n";
            if (value == 0) {
                text += std::to_string(std::llround(values.at(value)));
            } else if (value >= values.size() - shares) {
                text += percent(values.at(value));
            } else {
                text += with_unit_of(values.at(value), of());
            }
        }
    } else {
        text = "No hits";
    }
    controls_.lblHistogramValues.set_caption(std::move(text));
    controls_.lblHistogramWindow.set_caption(place_text());
}

void HistogramDialog::tell_clipping(double hits) {
    if (hits > 0.0) {
        Label& remark = controls_.lblHistogramRemark;
        remark.set_caption(remark.caption() + (remark.caption().empty() ? "" : "\n") +
                           "Hits lie at an end of the instrument's scale: what the signal has "
                           "beyond it is missing.");
    }
}

std::string HistogramDialog::place_text() const {
    std::string where;
    const Collected* const collected = watch_.collected();
    const auto window = plot_.find(channel(), window_);
    if (collected != nullptr && window && window->first_point < window->end_point &&
        window->first_code < window->end_code) {
        const MeasuredWith& with = collected->with;
        const double low =
            std::min(level_of(with, window->first_code), level_of(with, window->end_code - 1));
        const double high =
            std::max(level_of(with, window->first_code), level_of(with, window->end_code - 1));
        const auto time = [&](int point) {
            return with_unit_of(time_of(with, point) / picoseconds_per_second, HistogramOf::times);
        };
        const auto level = [](double mv) {
            return with_unit_of(mv / millivolts_per_volt, HistogramOf::levels);
        };
        where = time(window->first_point);
        where.append(" to ").append(time(window->end_point - 1)).append("; ");
        where.append(level(low)).append(" to ").append(level(high));
    }
    return where;
}

std::string HistogramDialog::table() const {
    const auto found = histogram();
    const auto statistics = found ? statistics_of(*found) : std::nullopt;
    if (!statistics) {
        return {};
    }
    const auto values = values_of(*statistics, of());
    std::string text = "Value\t";
    text.append(of() == HistogramOf::levels ? "CH1, V" : "CH1, s");
    text.replace(text.find("CH1"), 3, controls_.cmbHistogramChannel.text());
    text += '\n';
    for (std::size_t value = 0; value < values.size(); ++value) {
        text.append(histogram_names.at(value)).append(1, '\t');
        text.append(number_text(values.at(value))).append(1, '\n');
    }
    text += of() == HistogramOf::levels ? "\nLevel\tHits\n" : "\nTime\tHits\n";
    for (std::size_t bin = 0; bin < found->hits.size(); ++bin) {
        const double value = found->value_of(static_cast<double>(bin)) / per_base_unit(of());
        text.append(number_text(value)).append(1, '\t');
        text.append(number_text(found->hits[bin])).append(1, '\n');
    }
    return text;
}

} // namespace kv408
