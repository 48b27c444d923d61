#include "export/spectrum_dialog.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "export/number_text.h"
#include "measure/clipping.h"
#include "state/engineering_format.h"
#include "state/rounding.h"
#include "state/units.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// Between two updates of the window.
constexpr std::chrono::nanoseconds between_spectra = 200ms;
constexpr int told_digits = 5;
constexpr int channels = 2; ///< that stand before the computed traces

std::string hertz_text(double hertz) {
    std::string text = engformat(hertz, told_digits);
    return text.append("Hz");
}

/// `decibels` with two digits behind the point.
std::string decibels_text(double decibels, std::string_view unit) {
    constexpr double hundredths = 100.0;
    std::string text = number_text(std::round(decibels * hundredths) / hundredths);
    return text.append(" ").append(unit);
}

} // namespace

SpectrumDialog::SpectrumDialog(const FrontPanel& panel, const Clock& clock,
                               FindComputed find_computed)
    : panel_(panel), clock_(clock), find_computed_(std::move(find_computed)) {
    controls_.cmbSpectrumChannel.set_entries({"CH1", "CH2", "MATH1", "MATH2"});
    controls_.cmbSpectrumWindow.set_entries({window_names.begin(), window_names.end()});
    controls_.cmbSpectrumUnit.set_entries({"dBV", "dBm in 50 Ohm"});
    controls_.cmbSpectrumHold.set_entries({"Last sweep", "Mean of sweeps", "Highest of sweeps"});
    for (ListBox* const list : {&controls_.cmbSpectrumChannel, &controls_.cmbSpectrumWindow,
                                &controls_.cmbSpectrumUnit, &controls_.cmbSpectrumHold}) {
        list->set_index(0);
    }
    for (ListBox* const list : {&controls_.cmbSpectrumChannel, &controls_.cmbSpectrumWindow}) {
        list->on_click([this] { begin_anew(); });
    }
    for (ListBox* const list : {&controls_.cmbSpectrumUnit, &controls_.cmbSpectrumHold}) {
        list->on_click([this] { show(); });
    }
    controls_.txtSpectrumCount.set_text(std::to_string(history_.kept()));
    controls_.txtSpectrumCount.on_change([this] { count_typed(); });
    controls_.chkSpectrumLog.on_click([this] { show(); });
    controls_.cmdSpectrumClear.on_click([this] { begin_anew(); });
    show();
}

void SpectrumDialog::open(const std::shared_ptr<const Sweep>& last) {
    if (!std::exchange(open_, true)) {
        last_ = last;
        begin_anew();
    }
    if (present_) {
        present_();
    }
}

void SpectrumDialog::close() {
    open_ = false;
    history_.clear();
    last_.reset();
    of_.reset();
    show();
}

std::optional<std::size_t> SpectrumDialog::computed_place() const {
    const int chosen = controls_.cmbSpectrumChannel.index();
    return chosen < channels ? std::nullopt
                             : std::optional(static_cast<std::size_t>(chosen - channels));
}

SpectrumDialog::Computed SpectrumDialog::computed() const {
    const auto place = computed_place();
    return place && find_computed_ ? find_computed_(*place)
                                   : Computed{.trace = nullptr, .reason = "Off"};
}

/// The channel that is chosen, or A of the computed trace.
Channel SpectrumDialog::channel() const {
    if (computed_place()) {
        return definition_.a;
    }
    return controls_.cmbSpectrumChannel.index() == 1 ? ch2 : ch1;
}

void SpectrumDialog::computed_changed() {
    if (open_ && computed_place() && (!of_ || computed().trace != of_)) {
        begin_anew();
    }
}

void SpectrumDialog::begin_anew() {
    history_.clear();
    has_clipped_ = false;
    definition_ = {};
    of_.reset();
    if (open_ && computed_place()) {
        add_computed(computed().trace); // that is on the plot, of whichever sweep
    } else if (open_ && last_) {
        add(*last_);
    }
    show();
}

void SpectrumDialog::take(const std::shared_ptr<const Sweep>& sweep) {
    if (open_) {
        last_ = sweep;
        add(*sweep);
        stale_ = true;
    }
}

void SpectrumDialog::add(const Sweep& sweep) {
    if (computed_place()) {
        const auto trace = computed().trace;
        add_computed(trace && trace->sweep == sweep.number ? trace : nullptr);
        return;
    }
    const ChannelSweep& part = *sweep.channel.at(channel());
    if (sweep.came.at(channel()) && part.whole) {
        history_.add(spectrum_of(part.mv, part.time_per_point, window()));
        note(part.averaged, clipping_of(part) != Clipping{});
    }
}

void SpectrumDialog::note(bool averaged, bool clips) {
    averaged_ = averaged;
    clips_ = clips;
    has_clipped_ = has_clipped_ || clips;
}

/// Adds the spectrum of `trace`; without one those before it are forgotten.
void SpectrumDialog::add_computed(const std::shared_ptr<const MathsTrace>& trace) {
    of_ = trace;
    if (!trace) {
        history_.clear();
        return;
    }
    if (trace->definition != definition_) {
        history_.clear();
        definition_ = trace->definition;
    }
    std::vector<double> thousandths = trace->values;
    for (double& value : thousandths) {
        value *= millivolts_per_volt;
    }
    history_.add(spectrum_of(thousandths, trace->time_per_point, window()));
    note(trace->averaged, trace->clipped);
}

void SpectrumDialog::count_typed() {
    TextBox& box = controls_.txtSpectrumCount;
    const auto count = whole_number_in(box.text());
    constexpr auto most = static_cast<std::int32_t>(SpectrumHistory::most);
    const bool told = count && *count >= 1 && *count <= most;
    box.set_faulty(!told);
    if (told) {
        history_.set_kept(static_cast<std::size_t>(*count));
        show();
    }
}

SpectrumWindow SpectrumDialog::window() const {
    return static_cast<SpectrumWindow>(controls_.cmbSpectrumWindow.index());
}

SpectrumHold SpectrumDialog::held() const {
    return static_cast<SpectrumHold>(controls_.cmbSpectrumHold.index());
}

std::size_t SpectrumDialog::sweeps() const {
    const bool one = held() == SpectrumHold::last;
    return one ? std::min<std::size_t>(history_.count(), 1) : history_.count();
}

double SpectrumDialog::level(double power) const {
    return controls_.cmbSpectrumUnit.index() == 0 || !in_volts() ? dbv(power) : dbm(power);
}

std::string SpectrumDialog::unit() const {
    if (!in_volts()) {
        std::string text = "dB(";
        return text.append(unit_name(definition_.unit())).append(")");
    }
    return controls_.cmbSpectrumUnit.index() == 0 ? "dBV" : "dBm";
}

void SpectrumDialog::tick_over() {
    if (open_ && stale_ && clock_.now() - shown_at_ >= between_spectra) {
        show();
    }
}

void SpectrumDialog::show() {
    stale_ = false;
    shown_at_ = clock_.now();
    shown_ = history_.shown(held());
    peaks_ = peaks_of(shown_, most_peaks);
    purity_ = purity_of(shown_);
    reason_.clear();
    if (shown_.power.empty()) {
        const std::string why = computed_place() ? computed().reason : std::string();
        reason_ = why == "Off" ? "No function is chosen for " + controls_.cmbSpectrumChannel.text()
                  : !why.empty()                                  ? why
                  : panel_.channel.at(channel()).enable.checked() ? "No whole sweep has come yet"
                                                                  : "The channel is off";
    }
    controls_.cmbSpectrumUnit.set_enabled(in_volts());
    controls_.txtSpectrumCount.set_enabled(controls_.cmbSpectrumHold.index() != 0);
    controls_.cmdSpectrumCopy.set_enabled(reason_.empty());
    controls_.lblSpectrumState.set_caption(state_text());
    controls_.lblSpectrumPeaks.set_caption(peaks_text());
    controls_.lblSpectrumPurity.set_caption(purity_text());
    controls_.lblSpectrumRemark.set_caption(remark_text());
    if (computed_) {
        computed_();
    }
}

std::string SpectrumDialog::state_text() const {
    if (!reason_.empty()) {
        return reason_;
    }
    std::string text = std::to_string(sweeps()) + (sweeps() == 1 ? " sweep; " : " sweeps; ");
    text += "lines " + hertz_text(shown_.step) + " apart, up to the Nyquist limit of ";
    const double limit = shown_.frequency(static_cast<double>(shown_.power.size() - 1));
    return text + hertz_text(limit) + "; what the signal has above it is folded in below";
}

std::string SpectrumDialog::peaks_text() const {
    std::string text;
    for (const SpectralPeak& peak : peaks_) {
        text += text.empty() ? "" : "\n";
        text += hertz_text(peak.frequency) + "   " + decibels_text(level(peak.power), unit());
    }
    return text.empty() && reason_.empty() ? "No peak" : text;
}

std::string SpectrumDialog::purity_text() const {
    if (!purity_) {
        return peaks_.empty() ? std::string()
                              : "THD and SNR not told: with this window " +
                                    std::to_string(least_line_of_purity(shown_.window)) +
                                    " periods have to be on the screen";
    }
    constexpr double percent = 100.0;
    std::string text = "THD ";
    if (purity_->harmonics < 2) {
        text += "not told: no harmonic lies below the limit";
    } else {
        text += plain_text(purity_->distortion * percent, told_digits) + " %, of harmonics 2 to " +
                std::to_string(purity_->harmonics);
    }
    text += "\nSNR ";
    if (std::isfinite(purity_->signal_to_noise)) {
        text += decibels_text(dbv(purity_->signal_to_noise), "dB") +
                ", over all lines but the mean's, the highest peak's and its harmonics'";
    } else {
        text += "not told: no line is left over";
    }
    return text;
}

std::string SpectrumDialog::remark_text() const {
    if (shown_.power.empty()) {
        return {};
    }
    if (!panel_.channel.at(channel()).enable.checked()) {
        return "The channel is off: this is of its last sweeps.";
    }
    std::string text;
    const auto say = [&text](std::string_view line) {
        text.append(text.empty() ? "" : "\n").append(line);
    };
    if (held() == SpectrumHold::last ? clips_ : has_clipped_) {
        say("The trace leaves the instrument's scale: it has harmonics that the signal has not.");
    }
    if (averaged_) {
        say("Filter Avg. is on: noise is smaller than the signal's.");
    }
    if (!peaks_.empty() &&
        peaks_.front().frequency < shown_.frequency(least_periods_of_level(shown_.window))) {
        say("Few periods of the highest peak are on the screen: its frequency and level are "
            "rough.");
    }
    if (purity_ && held() == SpectrumHold::peak && sweeps() > 1) {
        say("The highest of sweeps makes noise look higher: SNR and THD are worse than the "
            "signal's.");
    }
    return text;
}

std::string SpectrumDialog::table() const {
    std::string text =
        "Frequency, Hz\t" + controls_.cmbSpectrumChannel.text() + ", " + unit() + '\n';
    for (std::size_t line = 0; line < shown_.power.size(); ++line) {
        text += number_text(shown_.frequency(static_cast<double>(line))) + '\t' +
                number_text(level(shown_.power[line])) + '\n';
    }
    return text;
}

} // namespace kv408
