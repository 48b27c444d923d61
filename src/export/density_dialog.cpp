#include "export/density_dialog.h"

#include <utility>

#include "export/date_text.h"
#include "export/density_file.h"
#include "panel/time_base.h"
#include "state/rounding.h"
#include "state/text.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// The time between two updates of the texts.
constexpr std::chrono::nanoseconds between_texts = 500ms;

/// The time of day of `time`, "13:05:09".
std::string time_of_day(std::chrono::system_clock::time_point time, const Clock& clock) {
    constexpr std::size_t begin = 11; // behind the date
    constexpr std::size_t length = 8;
    return date_text(time, utc_offset(clock)).substr(begin, length);
}

} // namespace

std::optional<int> half_life_in(std::string_view text) {
    const auto sweeps = whole_number_in(text);
    return sweeps && *sweeps >= 1 && *sweeps <= DensityCollector::longest_half_life ? sweeps
                                                                                    : std::nullopt;
}

DensityDialog::DensityDialog(const FrontPanel& panel, const DialogHost& host, Plot plot)
    : panel_(panel), host_(host), plot_(std::move(plot)) {
    controls_.cmbDensityPalette.set_entries({"Cividis", "Channel colour"});
    controls_.cmbDensityPalette.set_index(0);
    for (const Channel channel : both_channels) {
        controls_.channel.at(channel).put_checked(true);
        controls_.channel.at(channel).on_click([this] { collect(); });
    }
    controls_.chkDensity.on_click([this] { collect(); });
    controls_.cmbDensityPalette.on_click([this] {
        plot_.colour(static_cast<std::size_t>(controls_.cmbDensityPalette.index()));
        draw();
    });
    controls_.txtDensityHalfLife.on_change([this] { half_life_typed(); });
    controls_.chkDensityFreeze.on_click([this] {
        collector_.freeze(controls_.chkDensityFreeze.checked());
        refresh();
    });
    controls_.cmdDensityClear.on_click([this] { clear(); });
    controls_.cmdDensityExport.on_click([this] { cmdDensityExport_Click(); });
    collector_.on_counted(
        [this](Channel channel, std::span<const std::int16_t> codes, std::uint32_t weight) {
            ++changes_;
            plot_.add(channel, codes, weight);
        });
    collector_.on_changed([this](Channel channel) {
        ++changes_;
        plot_.show(channel, collector_.collected(channel));
    });
    refresh();
}

void DensityDialog::open() {
    open_ = true;
    if (show_) {
        show_();
    }
    refresh();
}

void DensityDialog::collect() {
    for (const Channel channel : both_channels) {
        collector_.collect(channel, controls_.chkDensity.checked() &&
                                        controls_.channel.at(channel).checked());
    }
    draw();
    refresh();
}

void DensityDialog::half_life_typed() {
    const std::string& text = controls_.txtDensityHalfLife.text();
    const bool none = is_blank(text);
    const auto sweeps = half_life_in(text);
    controls_.txtDensityHalfLife.set_faulty(!none && !sweeps);
    if (none || sweeps) {
        collector_.set_half_life(sweeps);
        draw();
    }
}

void DensityDialog::clear() {
    collector_.clear();
    draw();
    refresh();
}

void DensityDialog::draw() const {
    plot_.draw();
}

void DensityDialog::sweep_finished(const Sweep& sweep) {
    collector_.take(sweep);
}

void DensityDialog::tick_over() {
    if (open_ && host_.clock.now() - refreshed_ >= between_texts) {
        refresh();
    }
}

void DensityDialog::refresh() {
    refreshed_ = host_.clock.now();
    for (const Channel channel : both_channels) {
        controls_.state.at(channel).set_caption(state_of(channel));
    }
    std::string text;
    for (const std::string& remark : remarks()) {
        text += (text.empty() ? "" : "\n") + remark;
    }
    controls_.lblDensityRemark.set_caption(std::move(text));
    bool any = false;
    for (const Channel channel : both_channels) {
        any = any || collector_.collected(channel) != nullptr;
    }
    controls_.cmdDensityExport.set_enabled(any);
}

std::string DensityDialog::state_of(Channel channel) const {
    std::string text = channel_label(channel) + ": ";
    if (!collector_.collects(channel)) {
        return text + "off";
    }
    const Collected* const collected = collector_.collected(channel);
    if (collected == nullptr) {
        return text + (panel_.channel.at(channel).enable.checked()
                           ? "no sweep yet"
                           : "no sweep yet, the channel is off");
    }
    text += std::to_string(collected->sweeps) + (collected->sweeps == 1 ? " sweep" : " sweeps") +
            " since " + time_of_day(collector_.since(channel), host_.clock);
    if (!collector_.begun_anew_by(channel).empty()) {
        text += ", anew with another " + collector_.begun_anew_by(channel);
    }
    return collector_.frozen() ? text + ", frozen" : text;
}

std::vector<std::string> DensityDialog::remarks() const {
    std::vector<std::string> remarks;
    if (panel_.average.checked()) {
        remarks.emplace_back("Filter Avg. is on: the instrument averages, so noise and jitter "
                             "look smaller than they are.");
    }
    for (const Channel channel : both_channels) {
        const Collected* const collected = collector_.collected(channel);
        if (collected == nullptr) {
            continue;
        }
        if (collected->averaged > 0) {
            remarks.push_back(channel_label(channel) + ": " + std::to_string(collected->averaged) +
                              " of its sweeps were averaged.");
        }
        if (collected->counts.saturated()) {
            remarks.push_back(channel_label(channel) + ": a counter has reached " +
                              std::to_string(highest_count) +
                              ", the highest; the counts are too small.");
        }
    }
    const TimeBaseRow* const row = selected_time_base(panel_);
    if (row != nullptr && row->pointmode) {
        remarks.emplace_back("This time base is measured point by point: each sweep takes long, "
                             "and so does collecting.");
    }
    return remarks;
}

void DensityDialog::cmdDensityExport_Click() {
    const auto chosen =
        host_.choosers.save_file({.title = "Density",
                                  .filter = "NumPy (*.npy)|*.npy|All Files (*.*)|*.*",
                                  .default_name = "density.npy",
                                  .default_suffix = "npy"});
    if (chosen) {
        save(chosen->path);
    }
}

void DensityDialog::save(const std::filesystem::path& path) {
    const bool both = collector_.collected(ch1) != nullptr && collector_.collected(ch2) != nullptr;
    for (const Channel channel : both_channels) {
        const Collected* const collected = collector_.collected(channel);
        if (collected == nullptr) {
            continue;
        }
        std::filesystem::path own = path;
        if (both) {
            own = path.parent_path() / path.stem();
            own += "_ch" + std::to_string(number_of(channel));
            own += path.extension();
        }
        FileResult result = host_.files.replace(own, density_file(*collected));
        if (result.status == FileStatus::done) {
            result = host_.files.replace(density_axes_path(own), density_axes_file(*collected));
        }
        if (result.status != FileStatus::done) {
            host_.boxes.show({.text = "The density wasn't saved!\nError:" + result.reason,
                              .icon = MessageIcon::critical});
            return;
        }
    }
}

} // namespace kv408
