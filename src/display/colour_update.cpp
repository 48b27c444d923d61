#include "display/colour_update.h"

#include "state/channel_state.h"

namespace kv408 {

void ColourUpdate::colorupdate() {
    screen_.refreshCH1(0);
    screen_.refreshCH2(0);
    recolour_panel();
    screen_.calcPersistColors();
    screen_.ClearTrace(ch1);
    screen_.ClearTrace(ch2);
    screen_.makegrid();
}

void ColourUpdate::recolour_panel() {
    panel_.picture1.set_back_colour(colours_.background);
    recolour_channel(ch1);
    recolour_channel(ch2);
    panel_.picmeasure.set_back_colour(colours_.background);
    // The rules between the results.
    panel_.picmeasure.set_fore_colour(colours_.grid);
    recolour_measurements();
    recolour_general_texts();
}

void ColourUpdate::recolour_channel(Channel channel) {
    ChannelControls& controls = panel_.channel[channel];
    const Colour colour = colours_.channel(channel);
    controls.text.set_fore_colour(colour);
    controls.label.set_fore_colour(colour);
    controls.vdiv.set_fore_colour(colour);
    controls.vdivtext.set_fore_colour(colour);
    controls.hor_delay.set_fore_colour(colour);
    // The frame's outline is drawn in its fore colour.
    controls.labelframe.set_fore_colour(colour);
    controls.text.set_back_colour(colours_.text_background);
    controls.labelframe.set_back_colour(colours_.text_background);
    controls.vdiv.set_back_colour(colours_.text_background);
}

void ColourUpdate::recolour_measurements() {
    for (MeasurementControls& slot : panel_.measurement) {
        slot.ch1.set_fore_colour(colours_.ch1);
        slot.ch2.set_fore_colour(colours_.ch2);
        slot.label.set_fore_colour(colours_.normal_text);
        slot.mark.set_fore_colour(colours_.normal_text);
        slot.ch1.set_back_colour(colours_.text_background);
        slot.ch2.set_back_colour(colours_.text_background);
    }
}

void ColourUpdate::recolour_general_texts() {
    for (Label* const label : std::initializer_list<Label*>{
             &panel_.trigertext, &panel_.tdivtext, &panel_.lbldate, &panel_.ltp2, &panel_.avglabel,
             &panel_.centerfr, &panel_.lblc1, &panel_.lblc2}) {
        label->set_fore_colour(colours_.normal_text);
    }
    for (Label* const label : std::initializer_list<Label*>{
             &panel_.trigertext, &panel_.ltp2, &panel_.centerfr, &panel_.lblc1, &panel_.lblc2}) {
        label->set_back_colour(colours_.text_background);
    }
    panel_.seltimediv.set_back_colour(colours_.text_background);
    panel_.seltimediv.set_fore_colour(colours_.normal_text);
}

} // namespace kv408
