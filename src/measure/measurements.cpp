#include "measure/measurements.h"

#include <array>
#include <cassert>
#include <string>

#include "measure/annotation_geometry.h"
#include "measure/measurement_rows.h"
#include "measure/measurement_texts.h"

namespace kv408 {
namespace {

/// The caption of a channel's result: `text` and a blank.
std::string result_caption(const std::string& text, const ChannelControls& channel) {
    std::string caption;
    if (channel.enable.checked()) {
        caption = text.empty() ? not_measurable : text;
    }
    caption += ' ';
    return caption;
}

} // namespace

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
    if (row == nullptr) {
        for (Label* const label : {&controls.mark, &controls.label, &controls.ch1, &controls.ch2}) {
            label->set_caption({});
        }
        return;
    }
    controls.mark.set_caption(controls.annotate.checked() ? "*" : "");
    controls.label.set_caption(std::string(row->label));
    const auto& texts = data_.state.meastexts;
    controls.ch1.set_caption(result_caption(texts[ch1][row->field], panel_.channel[ch1]));
    controls.ch2.set_caption(result_caption(texts[ch2][row->field], panel_.channel[ch2]));
}

void Measurements::take_marks(std::size_t slot) {
    data_.marks = {};
    const MeasurementRow* const row = measurement_row(panel_.measurement[slot].selector.text());
    if (row == nullptr) {
        return;
    }
    for (std::size_t channel = 0; channel < data_.channels.size(); ++channel) {
        const AnnotationPlaces& places = data_.state.annotations[channel];
        const std::array<double, 2> ends = {places.start[row->mark_field],
                                            places.end[row->mark_field]};
        for (std::size_t end = 0; end < ends.size(); ++end) {
            data_.marks.mark[channel][end] =
                row->in_time
                    ? annomarkrect(data_.channels[channel], data_.samples[channel], ends[end])
                    : annolevelline(data_.channels[channel], ends[end]);
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
