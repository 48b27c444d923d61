#include "export/maths_tool.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "export/computed_channel.h"
#include "export/number_text.h"
#include "export/quantity_text.h"
#include "export/typed_quantity.h"
#include "measure/clipping.h"
#include "measure/curve_measurements.h"
#include "measure/measurement_rows.h"
#include "state/engineering_format.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/text.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr int maths_digits = 4;

/// Each differs from the colours that traces, references and marks have by default, and is seen on
/// a dark and on a white background.
constexpr std::array<Colour, 2> maths_colours = {rgb(240, 75, 60), rgb(90, 130, 255)};

/// The least of 1, 2, 5, 10 and so on, times a power of ten, that is at least `needed`, above 0.
double step_from(double needed) {
    constexpr double rounding = 1.0 + 1e-9; // of the logarithm
    const int power = static_cast<int>(std::floor(std::log10(needed)));
    // As text, for no system's powers of ten are other ones then.
    const auto step_of = [](const char* digit, int exponent) {
        std::string text = digit;
        text += 'e';
        text += std::to_string(exponent);
        return entire_number(text).value_or(0.0);
    };
    for (const char* const digit : {"1", "2", "5"}) {
        const double step = step_of(digit, power);
        if (needed <= step * rounding) {
            return step;
        }
    }
    return step_of("1", power + 1);
}

/// What the boxes of volts per division say: "50mV" in volts.
double volts_of(const ListBox& scale) {
    return quantity_typed(scale.text(), "V").value_or(0.0);
}

} // namespace

MathsControls::MathsControls(std::size_t place)
    : cmbMathsFunction(indexed("cmbMathsFunction", place)), cmbMathsA(indexed("cmbMathsA", place)),
      cmbMathsB(indexed("cmbMathsB", place)), txtMathsCount(indexed("txtMathsCount", place)),
      txtMathsScale(indexed("txtMathsScale", place)),
      txtMathsPosition(indexed("txtMathsPosition", place)),
      cmdMathsClear(indexed("cmdMathsClear", place)),
      lblMathsState(indexed("lblMathsState", place)),
      lblMathsNames(indexed("lblMathsNames", place)),
      lblMathsValues(indexed("lblMathsValues", place)),
      lblMathsRemark(indexed("lblMathsRemark", place)), lblMaths(indexed("lblMaths", place)) {
    cmbMathsFunction.set_entries({maths_function_names.begin(), maths_function_names.end()});
    cmbMathsFunction.set_index(0);
    for (ListBox* const list : {&cmbMathsA, &cmbMathsB}) {
        list->set_entries({channel_label(ch1), channel_label(ch2)});
        list->set_index(list == &cmbMathsA ? 0 : 1);
    }
    std::string names;
    for (const MeasurementRow& row : measurement_rows()) {
        names += names.empty() ? "" : "\n";
        names += row.name;
    }
    lblMathsNames.set_caption(std::move(names));
    lblMaths.set_fore_colour(maths_colours.at(place));
    lblMaths.set_visible(false);
}

MathsTool::MathsTool(std::size_t place, const FrontPanel& panel,
                     std::function<std::shared_ptr<const Sweep>()> last,
                     std::function<void()> changed)
    : panel_(panel), last_(std::move(last)), changed_(std::move(changed)), name_(maths_name(place)),
      controls_(place) {
    for (ListBox* const list :
         {&controls_.cmbMathsFunction, &controls_.cmbMathsA, &controls_.cmbMathsB}) {
        list->on_click([this] { define(); });
    }
    controls_.txtMathsCount.set_text(std::to_string(evaluator_.kept()));
    controls_.txtMathsCount.on_change([this] { count_typed(); });
    for (TextBox* const box : {&controls_.txtMathsScale, &controls_.txtMathsPosition}) {
        box->on_change([this] { place_typed(); });
    }
    controls_.cmdMathsClear.on_click([this] { begin_anew(definition()); });
    show(false);
}

bool MathsTool::is_on() const {
    return definition().function != MathsFunction::off;
}

bool MathsTool::is_off(Channel channel) const {
    return !panel_.channel.at(channel).enable.checked();
}

void MathsTool::define() {
    const auto channel = [](const ListBox& list) { return list.index() == 1 ? ch2 : ch1; };
    MathsDefinition chosen{static_cast<MathsFunction>(controls_.cmbMathsFunction.index()),
                           channel(controls_.cmbMathsA), channel(controls_.cmbMathsB)};
    if (!chosen.has_two_channels()) {
        chosen.b = MathsDefinition{}.b; // does not count: the trace stays the same
    }
    if (chosen == definition()) {
        return;
    }
    if (chosen.function != MathsFunction::off &&
        std::exchange(scale_unit_, chosen.unit()) != chosen.unit()) {
        evaluator_.define(chosen); // no scale is to be found of what was
        found_scale_ = 0.0;
        if (!controls_.txtMathsScale.text().empty()) {
            controls_.txtMathsScale.set_text({}); // it says nothing in another unit
        }
    }
    begin_anew(chosen);
}

/// Forgets what there is, and computes `definition` of the last sweep at once.
void MathsTool::begin_anew(const MathsDefinition& definition) {
    evaluator_.define(definition);
    if (const auto last = last_()) {
        take(*last);
    }
    changed_();
}

void MathsTool::count_typed() {
    constexpr TypedRange range{1.0, static_cast<double>(MathsEvaluator::most_sweeps)};
    const auto count = typed_whole(controls_.txtMathsCount, range);
    if (count) {
        evaluator_.set_kept(static_cast<std::size_t>(*count));
        changed_();
    }
}

/// Takes scale and position as they are typed; what cannot be taken leaves what was.
void MathsTool::place_typed() {
    TextBox& scale = controls_.txtMathsScale;
    TextBox& position = controls_.txtMathsPosition;
    const auto blank = [](const TextBox& box) { return is_blank(box.text()); };
    const auto typed = quantity_typed(scale.text(), unit());
    const bool possible = typed && *typed <= greatest_scale && *typed >= 1.0 / greatest_scale;
    scale.set_faulty(!blank(scale) && !possible);
    if (!scale.faulty()) {
        typed_scale_ = blank(scale) ? std::nullopt : typed;
    }
    const auto divisions = entire_number(position.text());
    position.set_faulty(!blank(position) && !(divisions && std::fabs(*divisions) <= most_position));
    if (!position.faulty()) {
        typed_position_ = blank(position) ? std::nullopt : divisions;
    }
    find_scale();
    changed_();
}

void MathsTool::take(const Sweep& sweep) {
    if (!is_on()) {
        return;
    }
    const ChannelSweep& part = *sweep.channel.at(definition().a);
    taken_scale_ = part.mv_per_division / millivolts_per_volt;
    taken_position_ = part.position;
    const auto clips = [&sweep](Channel channel) {
        return clipping_of(*sweep.channel.at(channel)) != Clipping{};
    };
    evaluator_.take(sweep, clips(definition().a) ||
                               (definition().has_two_channels() && clips(definition().b)));
    find_scale();
}

/// Finds a scale for what is no voltage: one that the trace fits in, and kept while it does and
/// takes a fifth of it.
void MathsTool::find_scale() {
    const auto& computed = evaluator_.trace();
    if (!computed || definition().unit() == MathsUnit::volt) {
        return;
    }
    constexpr double least_room = 0.5; // divisions
    constexpr double least_part = 0.2;
    const double above = std::max(most_position - position(), least_room);
    const double below = std::max(most_position + position(), least_room);
    double needed = 0.0;
    for (const double value : computed->values) {
        needed = std::max(needed, value > 0.0 ? value / above : -value / below);
    }
    if (needed > 0.0 && !(needed <= found_scale_ && needed >= found_scale_ * least_part)) {
        found_scale_ = step_from(needed);
    }
}

std::shared_ptr<const MathsTrace> MathsTool::trace() const {
    const bool off =
        is_off(definition().a) || (definition().has_two_channels() && is_off(definition().b));
    return off ? nullptr : evaluator_.trace();
}

std::string MathsTool::reason() const {
    if (is_on()) {
        for (const Channel channel : {definition().a, definition().b}) {
            if (is_off(channel) && (channel == definition().a || definition().has_two_channels())) {
                return channel_label(channel) + " is off";
            }
        }
    }
    return evaluator_.reason();
}

std::string MathsTool::unit() const {
    return std::string(unit_name(definition().unit()));
}

double MathsTool::per_division() const {
    if (typed_scale_) {
        return *typed_scale_;
    }
    if (definition().unit() == MathsUnit::volt) {
        return volts_of(panel_.channel.at(definition().a).vdiv);
    }
    return found_scale_ > 0.0 ? found_scale_ : 1.0;
}

double MathsTool::position() const {
    if (typed_position_ || definition().unit() != MathsUnit::volt) {
        return typed_position_.value_or(0.0);
    }
    const auto row = panel_.channel.at(definition().a).text.marked();
    return row ? static_cast<double>(plot::centre_y - *row) / plot::division : taken_position_;
}

std::optional<ShownReference> MathsTool::shown() const {
    const auto computed = trace();
    if (!computed) {
        return std::nullopt;
    }
    ReferenceCurve curve{.channel = computed->definition.a,
                         .first_time = computed->first_time,
                         .interval = computed->time_per_point,
                         .mv = computed->values,
                         .lower = computed->lowest,
                         .scale = {.per_division = typed_scale_, .position = typed_position_}};
    for (std::vector<double>* const line : {&curve.mv, &curve.lower}) {
        for (double& value : *line) {
            value *= millivolts_per_volt;
        }
    }
    if (definition().unit() != MathsUnit::volt) {
        curve.scale = {.per_division = per_division(), .position = position()};
    }
    if (curve.scale.per_division) {
        *curve.scale.per_division *= millivolts_per_volt;
    }
    return ShownReference{.curve = std::make_shared<const ReferenceCurve>(std::move(curve)),
                          .colour = controls_.lblMaths.fore_colour().value_or(Colour{}),
                          .caption = caption()};
}

const std::vector<MeasuredValue>& MathsTool::values() const {
    const auto computed = trace();
    if (!computed) {
        values_.clear();
        measured_.reset();
    } else if (computed != measured_) {
        const std::vector<double> columns = screen_columns(*computed);
        values_.clear();
        if (!columns.empty()) {
            values_ = curve_measurements(columns, computed->columns_per_second);
        }
        measured_ = computed;
    }
    return values_;
}

void MathsTool::add_to(const Sweep& sweep, ExportedSweep& exported) const {
    const auto computed = trace();
    if (computed && computed->sweep == sweep.number) {
        // As the sweep was taken, whatever the panel has now.
        const bool volts = definition().unit() == MathsUnit::volt;
        add_computed(*computed, name_, volts && !typed_scale_ ? taken_scale_ : per_division(),
                     volts ? typed_position_.value_or(taken_position_) : position(), sweep,
                     exported);
    }
}

std::string MathsTool::caption() const {
    if (!trace()) {
        return {};
    }
    return name_ + " " + definition().label() + "   " + scale_text(per_division(), unit()) + "/div";
}

void MathsTool::show(bool with_values) {
    const bool sweeps = definition().has_sweeps();
    controls_.cmbMathsA.set_enabled(is_on());
    controls_.cmbMathsB.set_enabled(definition().has_two_channels());
    controls_.txtMathsCount.set_enabled(sweeps);
    controls_.cmdMathsClear.set_enabled(sweeps);
    controls_.txtMathsScale.set_enabled(is_on());
    controls_.txtMathsPosition.set_enabled(is_on());
    controls_.lblMaths.set_caption(caption());
    controls_.lblMaths.set_visible(trace() != nullptr);
    controls_.lblMathsState.set_caption(state_text());
    controls_.lblMathsValues.set_caption(with_values ? values_text() : std::string());
    controls_.lblMathsRemark.set_caption(remark_text());
}

std::string MathsTool::state_text() const {
    const auto computed = trace();
    if (!computed) {
        return is_on() ? reason() + "." : "Off.";
    }
    std::string text =
        definition().label() + ", " + scale_text(per_division(), unit()) + " per division, ";
    if (definition().has_sweeps()) {
        text += std::to_string(computed->sweeps) + (computed->sweeps == 1 ? " sweep" : " sweeps");
    } else {
        text += "sweep " + std::to_string(computed->sweep);
    }
    return text + ".";
}

std::string MathsTool::values_text() const {
    std::string text;
    const auto rows = measurement_rows();
    const std::vector<MeasuredValue>& measured = values();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        text += row == 0 ? "" : "\n";
        if (row >= measured.size()) {
            text += "---";
            continue;
        }
        const MeasuredValue& value = measured[row];
        const bool level = rows[row].unit == MeasurementUnit::volt;
        text += !value.value ? std::string(reason_text(value.why))
                : level      ? quantity_text(*value.value, unit(), maths_digits)
                        : engformat(*value.value, maths_digits).append(unit_name(rows[row].unit));
    }
    return text;
}

std::string MathsTool::remark_text() const {
    const auto computed = trace();
    if (!computed) {
        return {};
    }
    std::string text;
    if (definition().has_two_channels() && definition().a != definition().b) {
        text = "The channels are swept one after the other: what changes from sweep to sweep does "
               "not cancel.";
    }
    if (computed->clipped) {
        text += text.empty() ? "" : "\n";
        text += "A channel leaves the instrument's scale: the trace is wrong there.";
    }
    return text;
}

} // namespace kv408
