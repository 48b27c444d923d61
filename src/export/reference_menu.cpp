#include "export/reference_menu.h"

#include <utility>

#include "export/csv.h"
#include "export/csv_import.h"
#include "export/date_text.h"
#include "export/export_file.h"
#include "host/path_text.h"
#include "host/shown_text.h"

namespace kv408 {
namespace {

/// Each differs from the colours that traces, marks and texts have by default, and is seen on a
/// dark and on a white background.
constexpr std::array<Colour, References::count> reference_colours = {
    rgb(255, 140, 0), rgb(60, 190, 90), rgb(215, 90, 230), rgb(150, 150, 150)};

constexpr const char* csv_files = "CSV (*.csv)|*.csv|All Files (*.*)|*.*";

} // namespace

ReferenceControls::ReferenceControls(std::size_t place)
    : mnuReferenceShow(indexed("mnuReferenceShow", place)),
      mnuReferenceKeepCH1(indexed("mnuReferenceKeepCH1", place)),
      mnuReferenceKeepCH2(indexed("mnuReferenceKeepCH2", place)),
      mnuReferenceLoad(indexed("mnuReferenceLoad", place)),
      mnuReferenceSave(indexed("mnuReferenceSave", place)),
      mnuReferenceClear(indexed("mnuReferenceClear", place)),
      lblReference(indexed("lblReference", place)) {
    lblReference.set_fore_colour(reference_colours.at(place));
}

ReferenceMenu::ReferenceMenu(const Sweeps& sweeps, const Host& host, Origin origin, Show show)
    : sweeps_(sweeps), host_(host), origin_(std::move(origin)),
      show_(std::move(show)), controls_{ReferenceControls(0), ReferenceControls(1),
                                        ReferenceControls(2), ReferenceControls(3)} {
    for (std::size_t place = 0; place < controls_.size(); ++place) {
        ReferenceControls& controls = controls_.at(place);
        controls.mnuReferenceKeepCH1.on_click(
            [this, place] { mnuReferenceKeep_Click(place, "CH1"); });
        controls.mnuReferenceKeepCH2.on_click(
            [this, place] { mnuReferenceKeep_Click(place, "CH2"); });
        controls.mnuReferenceLoad.on_click([this, place] { mnuReferenceLoad_Click(place); });
        controls.mnuReferenceSave.on_click([this, place] { mnuReferenceSave_Click(place); });
        controls.mnuReferenceShow.on_click([this, place] { mnuReferenceShow_Click(place); });
        controls.mnuReferenceClear.on_click([this, place] { mnuReferenceClear_Click(place); });
    }
    show_controls();
}

void ReferenceMenu::mnuReferenceKeep_Click(std::size_t place, std::string_view channel) {
    const auto& sweep = sweeps_.last_complete();
    ExportOrigin origin = origin_();
    origin.utc_offset = utc_offset(host_.clock);
    if (!sweep || !references_.keep(place, exported_sweep(*sweep, sweep->came, origin), channel)) {
        host_.boxes.show({.text = std::string(channel) + " has no whole sweep to keep.",
                          .icon = MessageIcon::information});
        return;
    }
    show_all();
}

void ReferenceMenu::mnuReferenceLoad_Click(std::size_t place) {
    const auto path =
        host_.choosers.open_file({.title = "Load " + reference_name(place), .filter = csv_files});
    if (!path) {
        return;
    }
    std::string bytes;
    const FileResult read = host_.files.read(*path, bytes);
    CsvImport found =
        read.status == FileStatus::done ? csv_import(bytes) : CsvImport{{}, read.reason};
    if (!found.sweep) {
        host_.boxes.show({.text = shown_path(*path) + " could not be loaded: " + found.problem,
                          .icon = MessageIcon::critical});
        return;
    }
    const std::string name = shown_path(path->filename());
    if (const auto channel = channel_to_keep(name, *found.sweep)) {
        references_.keep_loaded(place, name, std::move(*found.sweep), *channel);
        show_all();
    }
}

std::optional<std::size_t> ReferenceMenu::channel_to_keep(const std::string& file,
                                                          const ExportedSweep& sweep) {
    if (sweep.channels.size() == 1) {
        return 0;
    }
    const std::string& first = sweep.channels.front().name;
    const std::string& second = sweep.channels.back().name;
    const MessageAnswer answer =
        host_.boxes.show({.text = file + " holds " + first + " and " + second + ".",
                          .buttons = MessageButtons::ok_cancel,
                          .icon = MessageIcon::question,
                          .informative = "OK keeps " + first + ".",
                          .extra_button = "Keep " + second});
    if (answer == MessageAnswer::cancel) {
        return std::nullopt;
    }
    return answer == MessageAnswer::extra ? 1 : 0;
}

void ReferenceMenu::mnuReferenceSave_Click(std::size_t place) {
    const auto& reference = references_.at(place);
    if (!reference) {
        return;
    }
    // A copy: another one may be kept there while the dialog is open.
    const std::string text = csv_text(reference->sweep);
    const auto chosen = host_.choosers.save_file(
        {.title = "Save " + reference_name(place),
         .filter = csv_files,
         .default_name = reference_name(place) + "_" + reference->channel().name + ".csv",
         .default_suffix = "csv"});
    if (!chosen) {
        return;
    }
    const SavedFile saved = save_export(host_.files, chosen->path, text, true);
    if (saved.status != FileStatus::done) {
        host_.boxes.show({.text = saved.message, .icon = MessageIcon::critical});
    }
}

void ReferenceMenu::mnuReferenceShow_Click(std::size_t place) {
    const auto& reference = references_.at(place);
    if (reference && reference->shown != controls_.at(place).mnuReferenceShow.checked()) {
        references_.toggle(place);
    }
    show_all();
}

void ReferenceMenu::mnuReferenceClear_Click(std::size_t place) {
    references_.clear(place);
    show_all();
}

void ReferenceMenu::show_controls() {
    for (std::size_t place = 0; place < controls_.size(); ++place) {
        ReferenceControls& controls = controls_.at(place);
        const auto& reference = references_.at(place);
        controls.mnuReferenceShow.put_checked(reference && reference->shown);
        controls.mnuReferenceShow.set_enabled(reference.has_value());
        controls.mnuReferenceSave.set_enabled(reference.has_value());
        controls.mnuReferenceClear.set_enabled(reference.has_value());
        controls.lblReference.set_caption(reference ? reference->caption() : std::string());
        controls.lblReference.set_visible(reference.has_value());
    }
}

void ReferenceMenu::show_all() {
    show_controls();
    std::vector<ShownReference> shown;
    for (std::size_t place = 0; place < References::count; ++place) {
        if (const auto& reference = references_.at(place); reference && reference->shown) {
            shown.push_back({.curve = reference->curve,
                             .colour = reference_colours.at(place),
                             .caption = reference->caption()});
        }
    }
    show_(std::move(shown));
}

} // namespace kv408
