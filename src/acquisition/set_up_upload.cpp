#include "acquisition/set_up_upload.h"

#include <chrono>

#include "state/rounding.h"

namespace kv408 {

using std::chrono::milliseconds;

SweepRequest sweep_request(const FrontPanel& panel, int channel) {
    return {
        .average = panel.average.checked(), .speed = panel.adcspeed.checked(), .channel = channel};
}

bool SetUpUpload::setscope8ghz() {
    if (!send_time_base()) {
        boxes_.show({.text = "Error setting scope", .link_failure = true});
        return false;
    }
    note_delays();
    acquisition_.data.take_set_up(clock_.now());
    if (acquisition_.pointmode) {
        return false;
    }
    link_.flush();
    clock_.sleep(milliseconds(2));
    const bool second_first =
        !panel_.channel[0].enable.checked() && panel_.channel[1].enable.checked();
    fill_sweep(link_.cmdargs(), sweep_request(panel_, second_first ? 2 : 1));
    acquisition_.scopestate = state_word::block[second_first ? ch2 : ch1];
    link_.sendcommand(command::start_sweep, link_.cmdargs());
    return true;
}

bool SetUpUpload::send_time_base() {
    put_32_bits(link_.cmdargs(), acquisition_.offset[0]);
    if (!link_.send_setup(command::set_offset_ch1, " set time base offset ch1 ")) {
        return false;
    }
    clock_.sleep(milliseconds(20));
    put_32_bits(link_.cmdargs(), acquisition_.offset[1]);
    if (!link_.send_setup(command::set_offset_ch2, " set time base offset ch2 ")) {
        return false;
    }
    clock_.sleep(milliseconds(1));
    const std::int32_t resolution = round_to_int32(time_base_.tbresolution);
    if (resolution == 0) {
        time_base_.tbresolution = 1.0;
    }
    fill_resolution(link_.cmdargs(), resolution);
    return link_.send_setup(command::set_resolution, " set time base resolution ");
}

void SetUpUpload::note_delays() {
    for (ChannelState& channel : channels_) {
        channel.uploaded_delaypts = channel.delaypts;
        if (channel.delaypts != channel.shown_delaypts) {
            // What was taken with the old delay is no longer current: only data taken with the new
            // one may bring the shown delay into line.
            acquisition_.pending_refresh = true;
            acquisition_.await_new_data(ch1);
            acquisition_.await_new_data(ch2);
        }
    }
}

} // namespace kv408
