#include "acquisition/set_up_upload.h"

#include <chrono>

#include "state/rounding.h"

namespace kv408 {

using std::chrono::milliseconds;

SweepRequest sweep_request(const FrontPanel& panel, Channel channel) {
    return {
        .average = panel.average.checked(), .speed = panel.adcspeed.checked(), .channel = channel};
}

bool SetUpUpload::setscope8ghz() {
    if (!send_time_base()) {
        around_.boxes.show({.text = "Error setting scope", .link_failure = true});
        return false;
    }
    note_delays();
    around_.acquisition.data.take_set_up(around_.clock.now());
    if (around_.acquisition.pointmode) {
        return false;
    }
    around_.link.flush();
    around_.clock.sleep(milliseconds(2));
    const bool second_first =
        !around_.panel.channel[ch1].enable.checked() && around_.panel.channel[ch2].enable.checked();
    const Channel first = second_first ? ch2 : ch1;
    fill_sweep(around_.link.cmdargs(), sweep_request(around_.panel, first));
    around_.acquisition.scopestate = state_word::block[first];
    around_.link.sendcommand(command::start_sweep, around_.link.cmdargs());
    return true;
}

bool SetUpUpload::send_time_base() {
    put_32_bits(around_.link.cmdargs(), around_.acquisition.offset[ch1]);
    if (!around_.link.send_setup(command::set_offset_ch1, " set time base offset ch1 ")) {
        return false;
    }
    around_.clock.sleep(milliseconds(20));
    put_32_bits(around_.link.cmdargs(), around_.acquisition.offset[ch2]);
    if (!around_.link.send_setup(command::set_offset_ch2, " set time base offset ch2 ")) {
        return false;
    }
    around_.clock.sleep(milliseconds(1));
    const std::int32_t resolution = round_to_int32(around_.time_base.tbresolution);
    if (resolution == 0) {
        around_.time_base.tbresolution = 1.0;
    }
    fill_resolution(around_.link.cmdargs(), resolution);
    return around_.link.send_setup(command::set_resolution, " set time base resolution ");
}

void SetUpUpload::note_delays() {
    for (ChannelState& channel : around_.channels) {
        channel.uploaded_delaypts = channel.delaypts;
        if (channel.delaypts != channel.shown_delaypts) {
            // What was taken with the old delay is no longer current: only data taken with the new
            // one may bring the shown delay into line.
            around_.acquisition.pending_refresh = true;
            around_.acquisition.await_new_data(ch1);
            around_.acquisition.await_new_data(ch2);
        }
    }
}

} // namespace kv408
