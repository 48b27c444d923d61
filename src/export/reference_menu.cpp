#include "export/reference_menu.h"

#include <utility>

#include "export/computed_channel.h"
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
      mnuReferenceKeepMATH1(indexed("mnuReferenceKeepMATH1", place)),
      mnuReferenceKeepMATH2(indexed("mnuReferenceKeepMATH2", place)),
      mnuReferenceLoad(indexed("mnuReferenceLoad", place)),
      mnuReferenceSave(indexed("mnuReferenceSave", place)),
      mnuReferenceClear(indexed("mnuReferenceClear", place)),
      lblReference(indexed("lblReference", place)) {
    lblReference.set_fore_colour(reference_colours.at(place));
}

ReferenceMenu::ReferenceMenu(const Sweeps& sweeps, const Host& host, Origin origin, Show show,
                             AddComputed add_computed)
    : sweeps_(sweeps), host_(host), origin_(std::move(origin)), show_(std::move(show)),
      add_computed_(std::move(add_computed)), controls_{ReferenceControls(0), ReferenceControls(1),
                                                        ReferenceControls(2),
                                                        ReferenceControls(3)} {
    for (std::size_t place = 0; place < controls_.size(); ++place) {
        ReferenceControls& controls = controls_.at(place);
        controls.mnuReferenceKeepCH1.on_click(
            [this, place] { mnuReferenceKeep_Click(place, "CH1"); });
        controls.mnuReferenceKeepCH2.on_click(
            [this, place] { mnuReferenceKeep_Click(place, "CH2"); });
        controls.mnuReferenceKeepMATH1.on_click(
            [this, place] { mnuReferenceKeep_Click(place, maths_name(0)); });
        controls.mnuReferenceKeepMATH2.on_click(
            [this, place] { mnuReferenceKeep_Click(place, maths_name(1)); });
        controls.mnuReferenceLoad.on_click([this, place] { mnuReferenceLoad_Click(place); });
        controls.mnuReferenceSave.on_click([this, place] { mnuReferenceSave_Click(place); });
        controls.mnuReferenceShow.on_click([this, place] { mnuReferenceShow_Click(place); });
        controls.mnuReferenceClear.on_click([this, place] { mnuReferenceClear_Click(place); });
    }
    show_controls();
}

void ReferenceMenu::mnuReferenceKeep_Click(std::size_t place, const std::string& trace) {
    const auto& sweep = sweeps_.last_complete();
    ExportOrigin origin = origin_();
    origin.utc_offset = utc_offset(host_.clock);
    bool kept = false;
    if (sweep) {
        ExportedSweep exported = exported_sweep(*sweep, sweep->came, origin);
        if (add_computed_) {
            add_computed_(*sweep, exported);
        }
        kept = references_.keep(place, exported, trace);
    }
    if (kept) {
        show_all();
    } else {
        host_.boxes.show(
            {.text = trace + " has no whole sweep to keep.", .icon = MessageIcon::information});
    }
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
    std::vector<std::size_t> traces; // where each begins: an envelope has two lines
    std::string names;
    for (std::size_t index = 0; index < sweep.channels.size(); ++index) {
        if (index > 0 && envelope_at(sweep, index - 1)) {
            continue;
        }
        names += traces.empty() ? "" : ", ";
        names += trace_of(sweep.channels[index]);
        traces.push_back(index);
    }
    const auto name = [&](std::size_t place) { return trace_of(sweep.channels[traces[place]]); };
    if (traces.size() > 1) {
        names.replace(names.rfind(", "), 2, " and ");
    }
    for (std::size_t place = 0; place + 1 < traces.size(); ++place) {
        const bool two_left = place + 2 == traces.size();
        const MessageAnswer answer =
            host_.boxes.show({.text = file + " holds " + names + ".",
                              .buttons = MessageButtons::ok_cancel,
                              .icon = MessageIcon::question,
                              .informative = "OK keeps " + name(place) + ".",
                              .extra_button = two_left ? "Keep " + name(place + 1) : "Another"});
        if (answer == MessageAnswer::cancel) {
            return std::nullopt;
        }
        if (answer != MessageAnswer::extra) {
            return traces[place];
        }
    }
    return traces.back();
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
         .default_name = reference_name(place) + "_" + trace_of(reference->channel()) + ".csv",
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
