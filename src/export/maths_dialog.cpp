#include "export/maths_dialog.h"

#include <algorithm>
#include <utility>

#include "export/number_text.h"
#include "measure/measurement_rows.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// Between two updates of the texts.
constexpr std::chrono::nanoseconds between_maths_texts = 500ms;

} // namespace

MathsDialog::MathsDialog(const FrontPanel& panel, const Sweeps& sweeps, const Clock& clock,
                         Show show, std::function<void()> draw)
    : show_(std::move(show)), draw_(std::move(draw)), clock_(clock) {
    for (std::size_t place = 0; place < count; ++place) {
        tools_.at(place) = std::make_unique<MathsTool>(
            place, panel, [&sweeps] { return sweeps.last_complete(); }, [this] { changed(); });
    }
}

void MathsDialog::open() {
    open_ = true;
    show_texts();
    if (present_) {
        present_();
    }
}

void MathsDialog::take(const Sweep& sweep) {
    if (any_on()) {
        for (const auto& tool : tools_) {
            tool->take(sweep);
        }
        show_traces();
    }
}

bool MathsDialog::any_on() const {
    return std::any_of(tools_.begin(), tools_.end(),
                       [](const auto& tool) { return tool->is_on(); });
}

void MathsDialog::changed() {
    show_traces();
    show_texts();
    draw_();
    if (changed_) {
        changed_();
    }
}

void MathsDialog::show_traces() {
    std::vector<ShownReference> shown;
    for (std::size_t place = count; place-- > 0;) { // the first comes to lie on top
        auto trace = tools_.at(place)->shown();
        seen_.at(place) = trace ? trace->caption : std::string();
        if (trace) {
            shown.push_back(std::move(*trace));
        }
    }
    show_(std::move(shown));
}

void MathsDialog::show_texts() {
    shown_at_ = clock_.now();
    for (const auto& tool : tools_) {
        tool->show(open_);
    }
}

void MathsDialog::add_to(const Sweep& sweep, ExportedSweep& exported) const {
    for (const auto& tool : tools_) {
        tool->add_to(sweep, exported);
    }
}

void MathsDialog::tick_over() {
    if (!any_on()) {
        return;
    }
    // A channel may have been switched off or on, or scaled, without another sweep.
    bool differs = false;
    for (std::size_t place = 0; place < count; ++place) {
        differs = differs || seen_.at(place) != tools_.at(place)->caption();
    }
    if (differs) {
        show_traces();
        show_texts();
        draw_();
    } else if (clock_.now() - shown_at_ >= between_maths_texts) {
        show_texts();
    }
}

std::string MathsDialog::table() const {
    std::string text = "Measurement";
    for (const auto& tool : tools_) {
        text += '\t' + tool->name();
        if (tool->is_on()) {
            text += ' ' + tool->definition().label() + '\t' + "Unit";
        }
    }
    text += '\n';
    const auto rows = measurement_rows();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        text += rows[row].name;
        for (const auto& tool : tools_) {
            const auto& values = tool->values();
            const bool told = row < values.size() && values[row].value;
            text += '\t' + (told ? number_text(*values[row].value) : std::string());
            if (tool->is_on()) {
                const bool level = rows[row].unit == MeasurementUnit::volt;
                text += '\t' + (level ? tool->unit() : std::string(unit_name(rows[row].unit)));
            }
        }
        text += '\n';
    }
    return text;
}

} // namespace kv408
