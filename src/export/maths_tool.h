#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "export/exported_sweep.h"
#include "maths/maths_evaluator.h"
#include "measure/measured_value.h"
#include "panel/controls.h"
#include "panel/front_panel.h"
#include "state/reference_curve.h"
#include "state/sweep.h"

namespace kv408 {

/// The controls of one computed trace.
struct MathsControls {
    /// Those of the trace in `place`, 0 or 1: switched off, with both lists and its colour filled
    /// in.
    explicit MathsControls(std::size_t place);

    ListBox cmbMathsFunction; ///< as `MathsFunction`; the first switches the trace off
    ListBox cmbMathsA;        ///< channel A
    ListBox cmbMathsB;        ///< channel B; enabled where there are two
    TextBox txtMathsCount;    ///< sweeps of mean and envelope, 1 to 1000
    TextBox txtMathsScale;    ///< units per division; empty: found
    TextBox txtMathsPosition; ///< of the zero line, divisions above the middle; empty: found
    Button cmdMathsClear;     ///< begins mean and envelope anew
    Label lblMathsState;      ///< what is shown, of how many sweeps, or why there is nothing
    Label lblMathsNames;      ///< names of the measurements, line by line
    Label lblMathsValues;     ///< the measurements, line by line
    Label lblMathsRemark;     ///< what has to be known of it
    Label lblMaths;           ///< beside the plot, in its colour; hidden without a trace
};

/// One computed trace: what it is, and how it is shown.
class MathsTool {
public:
    /// The highest and lowest place of the zero line, divisions from the middle.
    static constexpr double most_position = 4.0;
    /// The greatest scale that may be typed, units per division, and one over it the least.
    static constexpr double greatest_scale = 1e15;

    /// That of `place`, 0 or 1, which asks `last` for the last complete sweep, null without one.
    /// Calls `changed` after its user has changed it.
    MathsTool(std::size_t place, const FrontPanel& panel,
              std::function<std::shared_ptr<const Sweep>()> last, std::function<void()> changed);
    MathsTool(const MathsTool&) = delete;
    MathsTool& operator=(const MathsTool&) = delete;

    /// Its controls; setting one is its user's press.
    [[nodiscard]] MathsControls& controls() { return controls_; }
    [[nodiscard]] const MathsControls& controls() const { return controls_; }

    /// "MATH1" or "MATH2".
    [[nodiscard]] const std::string& name() const { return name_; }

    /// Whether a function is chosen.
    [[nodiscard]] bool is_on() const;

    /// What it computes; B is CH2 where it does not count.
    [[nodiscard]] const MathsDefinition& definition() const { return evaluator_.definition(); }

    /// How many sweeps mean and envelope are of at most.
    [[nodiscard]] std::size_t kept() const { return evaluator_.kept(); }

    /// Takes a sweep with which every channel that is on has come.
    void take(const Sweep& sweep);

    /// What was computed of the last one; null where there is nothing, as with a channel that is
    /// off.
    [[nodiscard]] std::shared_ptr<const MathsTrace> trace() const;

    /// Why there is nothing; empty where there is a trace.
    [[nodiscard]] std::string reason() const;

    /// The unit of the trace: "V", "V^2", "V/s" or "Vs".
    [[nodiscard]] std::string unit() const;

    /// How the trace is shown now: units per division and divisions of the zero line above the
    /// middle. What is not typed is in volts that of A on the panel, stopped as well; else it is
    /// found.
    [[nodiscard]] double per_division() const;
    [[nodiscard]] double position() const;

    /// The trace as the plot shows it; nothing where there is none.
    [[nodiscard]] std::optional<ShownReference> shown() const;

    /// All measurements of the trace, of an envelope's upper line, in the order of
    /// `measurement_rows`; none without a trace.
    [[nodiscard]] const std::vector<MeasuredValue>& values() const;

    /// Adds the trace to `exported` if it is of `sweep`.
    void add_to(const Sweep& sweep, ExportedSweep& exported) const;

    /// Brings the texts up to date; the measurements are made only `with_values`.
    void show(bool with_values);

    /// What stands beside the plot, "MATH1 CH1 - CH2   100mV/div"; empty without a trace.
    [[nodiscard]] std::string caption() const;

private:
    void define();
    void begin_anew(const MathsDefinition& definition);
    void count_typed();
    void place_typed();
    void find_scale();
    [[nodiscard]] bool is_off(Channel channel) const;
    [[nodiscard]] std::string state_text() const;
    [[nodiscard]] std::string values_text() const;
    [[nodiscard]] std::string remark_text() const;

    const FrontPanel& panel_;
    std::function<std::shared_ptr<const Sweep>()> last_;
    std::function<void()> changed_;
    std::string name_;
    MathsControls controls_;
    MathsEvaluator evaluator_;
    MathsUnit scale_unit_ = MathsUnit::volt; ///< of the typed scale
    std::optional<double> typed_scale_;
    std::optional<double> typed_position_;
    double found_scale_ = 0.0;    ///< units per division of what is no voltage; 0: none yet
    double taken_scale_ = 0.0;    ///< volts per division that A was taken with
    double taken_position_ = 0.0; ///< of A then, divisions above the middle
    mutable std::shared_ptr<const MathsTrace> measured_; ///< what `values_` are of
    mutable std::vector<MeasuredValue> values_;
};

} // namespace kv408
