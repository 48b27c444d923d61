#include "autoset/users_set_up.h"

#include "link/commands.h"
#include "panel/delay_text.h"

namespace kv408 {

UsersSetUp users_set_up(const FrontPanel& panel, const Channels& channels,
                        const TriggerState& trigger) {
    UsersSetUp users = {.tab = panel.tabstrip2.selected_key(),
                        .timeout = trigger_timeout(panel.trtout.text()),
                        .level = trigger.saved_trigpos,
                        .hysteresis = trigger.hyst,
                        .vdiv = {},
                        .delay = {}};
    for (const Channel channel : both_channels) {
        const ChannelControls& controls = panel.channel.at(channel);
        users.vdiv.at(channel) = controls.vdiv.text();
        users.delay.at(channel) = delay_text(controls.psofset, channels.at(channel));
    }
    return users;
}

} // namespace kv408
