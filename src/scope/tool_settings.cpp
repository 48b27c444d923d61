#include "scope/tool_settings.h"

#include <cstddef>

#include "measure/measurement_rows.h"

namespace kv408 {
namespace {

using Value = std::variant<bool, int, std::string>;

/// The controls that hold a value, each behind those that decide what it means.
std::vector<Control*> controls_with_values(Tools& tools) {
    DensityControls& density = tools.density().controls();
    std::vector<Control*> all{&density.cmbDensityPalette, &density.txtDensityHalfLife,
                              &density.chkDensityFreeze};
    for (CheckBox& channel : density.channel) {
        all.push_back(&channel);
    }
    for (std::size_t place = 0; place < MathsDialog::count; ++place) {
        MathsControls& maths = tools.maths().tool(place).controls();
        all.insert(all.end(),
                   {&maths.cmbMathsFunction, &maths.cmbMathsA, &maths.cmbMathsB,
                    &maths.txtMathsCount, &maths.txtMathsScale, &maths.txtMathsPosition});
    }
    HistogramControls& histogram = tools.histogram().controls();
    JitterControls& jitter = tools.jitter().controls();
    EyeControls& eye = tools.eye().controls();
    MaskControls& mask = tools.mask().controls();
    SpectrumControls& spectrum = tools.spectrum().controls();
    StatisticsControls& statistics = tools.statistics().controls();
    all.insert(all.end(), {&histogram.cmbHistogramChannel,
                           &histogram.cmbHistogramOf,
                           &jitter.cmbJitterChannel,
                           &jitter.cmbJitterEdge,
                           &jitter.txtJitterNumber,
                           &jitter.txtJitterLevel,
                           &jitter.txtJitterOwn,
                           &jitter.txtJitterInterval,
                           &eye.cmbEyeChannel,
                           &eye.txtEyeInterval,
                           &eye.txtEyeCrossing,
                           &mask.cmbMaskChannel,
                           &mask.cmbMask,
                           &mask.txtMaskRatio,
                           &mask.cmbMaskAction,
                           &spectrum.cmbSpectrumChannel,
                           &spectrum.cmbSpectrumWindow,
                           &spectrum.cmbSpectrumUnit,
                           &spectrum.cmbSpectrumHold,
                           &spectrum.txtSpectrumCount,
                           &spectrum.chkSpectrumLog,
                           &statistics.cmbStatisticsChannel,
                           &statistics.cmbStatisticsValue,
                           &tools.readouts().controls().chkClippingMark});
    return all;
}

Value value_of(Control& control) {
    const AnyControl any = control.kind();
    if (const auto* const box = std::get_if<CheckBox*>(&any)) {
        return (*box)->checked();
    }
    if (const auto* const list = std::get_if<ListBox*>(&any)) {
        return (*list)->index();
    }
    return std::get<TextBox*>(any)->text();
}

void set_value(Control& control, const Value& value) {
    if (value_of(control) == value) {
        return;
    }
    const AnyControl any = control.kind();
    if (const auto* const box = std::get_if<CheckBox*>(&any)) {
        (*box)->set_checked(std::get<bool>(value));
    } else if (const auto* const list = std::get_if<ListBox*>(&any)) {
        if ((*list)->has_index(std::get<int>(value))) { // a mask from a file is not there any more
            (*list)->set_index(std::get<int>(value));
        }
    } else {
        std::get<TextBox*>(any)->set_text(std::get<std::string>(value));
    }
}

bool are_alike(const LimitRule& one, const LimitRule& other) {
    return one.low == other.low && one.high == other.high && one.colour == other.colour &&
           one.action == other.action;
}

/// Types each limit in the place of the value that it belongs to.
void set_limits(StatisticsDialog& statistics, const std::array<std::vector<LimitRule>, 2>& limits) {
    StatisticsControls& controls = statistics.controls();
    for (std::size_t channel = 0; channel < limits.size(); ++channel) {
        for (std::size_t row = 0; row < limits.at(channel).size(); ++row) {
            const LimitRule& rule = limits.at(channel)[row];
            if (are_alike(statistics.rule(channel, row), rule)) {
                continue;
            }
            statistics.choose(channel, row);
            set_value(controls.txtStatisticsLow, rule.low);
            set_value(controls.txtStatisticsHigh, rule.high);
            set_value(controls.cmbStatisticsColour, static_cast<int>(rule.colour));
            set_value(controls.cmbStatisticsAction, static_cast<int>(rule.action));
        }
    }
}

/// Opens the window of `tool` by `entry`, or closes it.
template <typename Tool>
void set_open(Tool& tool, bool open, Button& entry) {
    if (tool.is_open() != open) {
        open ? entry.click() : tool.close();
    }
}

void set_open_tools(Tools& tools, const ToolSettings::Open& open) {
    StatisticsDialog& statistics = tools.statistics();
    if (statistics.is_open() != open.statistics) {
        open.statistics ? statistics.open() : statistics.close();
    }
    set_open(tools.histogram(), open.histogram, tools.histogram().controls().mnuhistogram);
    set_open(tools.jitter(), open.jitter, tools.jitter().controls().mnujitter);
    set_open(tools.eye(), open.eye, tools.eye().controls().mnueye);
    set_open(tools.mask(), open.mask, tools.mask().controls().mnumask);
    set_open(tools.spectrum(), open.spectrum, tools.spectrum().controls().mnuspectrum);
}

} // namespace

ToolSettings settings_of(Tools& tools) {
    ToolSettings settings;
    settings.density = tools.density().controls().chkDensity.checked();
    settings.open = {.statistics = tools.statistics().is_open(),
                     .histogram = tools.histogram().is_open(),
                     .jitter = tools.jitter().is_open(),
                     .eye = tools.eye().is_open(),
                     .mask = tools.mask().is_open(),
                     .spectrum = tools.spectrum().is_open()};
    settings.histogram_window = tools.histogram().window();
    for (Control* const control : controls_with_values(tools)) {
        settings.values.push_back(value_of(*control));
    }
    for (std::size_t channel = 0; channel < settings.limits.size(); ++channel) {
        for (std::size_t row = 0; row < measurement_rows().size(); ++row) {
            settings.limits.at(channel).push_back(tools.statistics().rule(channel, row));
        }
    }
    return settings;
}

void set_tools(Tools& tools, const ToolSettings& settings) {
    set_limits(tools.statistics(), settings.limits);
    const std::vector<Control*> controls = controls_with_values(tools);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        set_value(*controls[i], settings.values.at(i));
    }
    tools.histogram().set_window(settings.histogram_window);
    set_open_tools(tools, settings.open);
    // Last, because those that work on a density switch it on.
    set_value(tools.density().controls().chkDensity, settings.density);
}

} // namespace kv408
