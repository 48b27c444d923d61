#include "export/density_watch.h"

#include <string>
#include <utility>

namespace kv408 {

DensityWatch::DensityWatch(DensityDialog& density, const Clock& clock, const Controls& controls,
                           Pace pace, std::function<void()> show)
    : density_(density), clock_(clock), controls_(controls), pace_(pace), show_(std::move(show)) {
    controls.channel.set_entries({"CH1", "CH2"});
    controls.channel.set_index(0);
    controls.channel.on_click([this] { refresh(); });
}

void DensityWatch::open() {
    open_ = true;
    CheckBox& collecting = density_.controls().chkDensity;
    if (!collecting.checked()) {
        collecting.set_checked(true);
    }
    if (present_) {
        present_();
    }
    refresh();
}

Channel DensityWatch::channel() const {
    return both_channels.at(static_cast<std::size_t>(controls_.channel.index()));
}

void DensityWatch::refresh() {
    if (!open_) {
        return;
    }
    refreshed_ = clock_.now();
    changes_ = density_.changes();
    controls_.remark.set_caption(remark());
    if (controls_.sweeps != nullptr) {
        controls_.sweeps->set_caption(density_.state_of(channel()));
    }
    show_();
}

std::string DensityWatch::remark() const {
    std::string remark;
    for (const std::string& line : density_.remarks()) {
        remark.append(remark.empty() ? "" : "\n").append(line);
    }
    return remark;
}

bool DensityWatch::is_due() const {
    return pace_.each_time || changes_ != density_.changes() ||
           controls_.remark.caption() != remark() ||
           (controls_.sweeps != nullptr &&
            controls_.sweeps->caption() != density_.state_of(channel()));
}

void DensityWatch::tick_over() {
    if (open_ && clock_.now() - refreshed_ >= pace_.least && is_due()) {
        refresh();
    }
}

} // namespace kv408
