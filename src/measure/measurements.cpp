#include "measure/measurements.h"

#include <array>
#include <cassert>
#include <string>

#include "measure/annotation_geometry.h"
#include "measure/engine.h"
#include "measure/measurement_rows.h"
#include "measure/measurement_texts.h"

namespace kv408 {
namespace {

/// What a channel's result says: nothing while the channel is off.
std::string result_text(const std::string& text, const ChannelControls& channel) {
    if (!channel.enable.checked()) {
        return {};
    }
    return text.empty() ? std::string(not_measurable) : text;
}

/// How a result that says `text` is marked on the trace; `row` is nullptr without a measurement.
MarkKind mark_kind(const MeasurementRow* row, std::string_view text) {
    if (text == not_measurable || text == infinitely_fast) {
        return MarkKind::none;
    }
    // Without a measurement another annotated slot's levels are shown.
    return row == nullptr || row->unit == MeasurementUnit::volt ? MarkKind::lines : MarkKind::dots;
}

} // namespace

Measurements::Measurements(FrontPanel& panel, const Data& data, Screen& screen)
    : panel_(panel), data_(data), screen_(screen) {
    panel.check1.on_click([this] { Check1_Click(); });
    for (int slot = 0; slot < static_cast<int>(panel.measurement.size()); ++slot) {
        MeasurementControls& controls = panel.measurement[static_cast<std::size_t>(slot)];
        controls.selector.on_click([this] { cmbMeas_Click(); });
        controls.annotate.on_mouse_down([this, slot] { chkMeasAnno_MouseDown(slot); });
    }
}

void Measurements::makemeasurement() {
    if (panel_.check1.checked()) {
        measure_sweep(*data_.sweeps.last(), data_.state);
    }
}

void Measurements::showmeasurements() {
    if (!panel_.check1.checked()) {
        disablemeasurements();
        return;
    }
    for (std::size_t slot = 0; slot < panel_.measurement.size(); ++slot) {
        show_slot(slot);
        if (panel_.measurement[slot].annotate.checked()) {
            take_marks(slot);
        }
    }
    enablemeasurements();
}

void Measurements::show_slot(std::size_t slot) {
    MeasurementControls& controls = panel_.measurement[slot];
    for (Label* const label : {&controls.label, &controls.ch1, &controls.ch2}) {
        label->set_visible(true);
    }
    const MeasurementRow* const row = measurement_row(controls.selector.text());
    auto& kind = data_.marks.kind[slot];
    if (row == nullptr) {
        for (Label* const label : {&controls.mark, &controls.label, &controls.ch1, &controls.ch2}) {
            label->set_caption({});
        }
        kind.fill(mark_kind(nullptr, {}));
        return;
    }
    controls.mark.set_caption(controls.annotate.checked() ? "*" : "");
    controls.label.set_caption(std::string(row->label));
    const std::array results = {&controls.ch1, &controls.ch2};
    for (std::size_t channel = 0; channel < results.size(); ++channel) {
        const std::string text =
            result_text(data_.state.meastexts[channel][row->field], panel_.channel[channel]);
        results[channel]->set_caption(text + " ");
        kind[channel] = mark_kind(row, text);
    }
}

void Measurements::take_marks(std::size_t slot) {
    data_.marks.mark = {};
    const MeasurementRow* const row = measurement_row(panel_.measurement[slot].selector.text());
    if (row == nullptr) {
        return;
    }
    for (std::size_t channel = 0; channel < data_.channels.size(); ++channel) {
        const AnnotationPlaces& places = data_.state.annotations[channel];
        const SampleBuffer& columns = data_.sweeps.last()->channel[channel]->columns;
        const std::array<double, 2> ends = {places.start[row->mark_field],
                                            places.end[row->mark_field]};
        for (std::size_t end = 0; end < ends.size(); ++end) {
            data_.marks.mark[channel][end] =
                row->unit == MeasurementUnit::volt
                    ? annolevelline(data_.channels[channel], ends[end])
                    : annomarkrect(data_.channels[channel], columns, ends[end]);
        }
    }
}

void Measurements::Check1_Click() {
    if (!panel_.check1.checked()) {
        disablemeasurements();
        // What was marked must not come back before it is measured again.
        data_.marks = {};
        screen_.draw(draw_flags::all);
    }
}

void Measurements::cmbMeas_Click() {
    showmeasurements();
    screen_.draw(draw_flags::all);
}

void Measurements::chkMeasAnno_MouseDown(int index) {
    assert(index >= 0 && index < static_cast<int>(panel_.measurement.size()));
    for (std::size_t slot = 0; slot < panel_.measurement.size(); ++slot) {
        if (slot != static_cast<std::size_t>(index)) {
            panel_.measurement[slot].annotate.set_checked(false);
        }
    }
    makemeasurement();
    showmeasurements();
    screen_.draw(draw_flags::all);
}

} // namespace kv408
