#include "export/export_dialog.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "export/csv.h"
#include "export/date_text.h"
#include "export/export_file.h"
#include "host/path_text.h"

namespace kv408 {
namespace {

/// How many points the preview shows.
constexpr std::size_t previewed_points = 4;

std::vector<std::string> captions() {
    std::vector<std::string> texts;
    for (const ExportType& type : export_types()) {
        texts.emplace_back(type.caption);
    }
    return texts;
}

/// The kinds of files for a dialog of the system, `first` in front.
std::string filter(const ExportType& first) {
    const auto entry = [](const ExportType& type) {
        return std::string(type.caption) + "|*" + std::string(type.ending);
    };
    std::string text = entry(first);
    for (const ExportType& type : export_types()) {
        if (&type != &first) {
            text += '|' + entry(type);
        }
    }
    return text;
}

} // namespace

ExportDialog::ExportDialog(const FrontPanel& panel, const Sweeps& sweeps, const Host& host,
                           Origin origin, AddComputed add_computed)
    : panel_(panel), sweeps_(sweeps), host_(host), origin_(std::move(origin)),
      add_computed_(std::move(add_computed)) {
    controls_.cmbExportType.set_entries(captions());
    controls_.cmbExportType.set_index(0);
    controls_.cmbExportType.on_click([this] { cmbExportType_Click(); });
    controls_.txtExportFile.on_change([this] { txtExportFile_Change(); });
    controls_.cmdExportBrowse.on_click([this] { cmdExportBrowse_Click(); });
    controls_.cmdExport.on_click([this] { cmdExport_Click(); });
}

void ExportDialog::open(const std::filesystem::path& folder) {
    if (!std::exchange(open_, true)) {
        TextBox& file = controls_.txtExportFile;
        if (file.text().empty() || file.text() == offered_) {
            offered_ = text_of_path(folder / export_name(type(), host_.clock.local_time()));
            file.set_text(offered_);
        }
        controls_.lblExportSaved.set_caption({});
        show_sweep();
    }
    if (show_) {
        show_();
    }
}

const ExportType& ExportDialog::type() const {
    return export_types().at(static_cast<std::size_t>(controls_.cmbExportType.index()));
}

std::filesystem::path ExportDialog::path() const {
    std::filesystem::path path = path_of_text(controls_.txtExportFile.text());
    if (!export_type_of(path)) {
        path += type().ending;
    }
    return path;
}

ExportedSweep ExportDialog::sweep(std::size_t most) const {
    const auto& last = sweeps_.last_complete();
    if (!last) {
        return {};
    }
    ExportOrigin origin = origin_();
    origin.utc_offset = utc_offset(host_.clock);
    ExportedSweep exported = exported_sweep(
        *last, {panel_.channel[ch1].enable.checked(), panel_.channel[ch2].enable.checked()}, origin,
        most);
    if (add_computed_) {
        add_computed_(*last, exported);
        for (ExportedChannel& channel : exported.channels) {
            channel.mv.resize(std::min(most, channel.mv.size()));
        }
    }
    return exported;
}

void ExportDialog::show_sweep() {
    const ExportedSweep shown = sweep(previewed_points);
    const ExportRemark remark = export_remark(type(), shown);
    controls_.lblExportPreview.set_caption(shown.channels.empty() ? std::string()
                                                                  : csv_text(shown));
    controls_.lblExportRemark.set_caption(remark.text);
    controls_.cmdExport.set_enabled(remark.possible);
}

std::string ExportDialog::clipboard_text() const {
    const ExportedSweep all = sweep();
    return all.channels.empty() ? std::string() : tab_separated(all);
}

void ExportDialog::cmbExportType_Click() {
    if (!naming_) {
        naming_ = true;
        TextBox& file = controls_.txtExportFile;
        const bool offered = file.text() == offered_;
        std::filesystem::path path = path_of_text(file.text());
        if (export_type_of(path)) {
            path.replace_extension(type().ending);
            file.set_text(text_of_path(path));
        }
        if (offered) {
            offered_ = file.text();
        }
        naming_ = false;
    }
    show_sweep();
}

void ExportDialog::txtExportFile_Change() {
    const auto named = export_type_of(path_of_text(controls_.txtExportFile.text()));
    if (!naming_ && named) {
        naming_ = true;
        controls_.cmbExportType.set_index(static_cast<int>(*named));
        naming_ = false;
    }
}

void ExportDialog::cmdExportBrowse_Click() {
    const std::filesystem::path before = path();
    const auto chosen =
        host_.choosers.save_file({.title = "Export",
                                  .filter = filter(type()),
                                  .default_name = text_of_path(before.filename()),
                                  .default_suffix = std::string(type().ending.substr(1)),
                                  .folder = before.parent_path()});
    if (chosen) {
        controls_.txtExportFile.set_text(text_of_path(chosen->path));
    }
}

void ExportDialog::cmdExport_Click() {
    // Sweeping goes on behind the question: the sweep of the moment of the press is saved.
    const ExportedSweep saved = sweep();
    const ExportRemark remark = export_remark(type(), saved);
    if (!remark.possible) {
        controls_.lblExportSaved.set_caption(remark.text);
        return;
    }
    const std::string bytes = type().bytes(saved);
    const std::filesystem::path file = path();
    SavedFile result = save_export(host_.files, file, bytes, false);
    if (result.status == FileStatus::exists) {
        if (host_.boxes.show({.text = result.message,
                              .buttons = MessageButtons::yes_no,
                              .icon = MessageIcon::question}) != MessageAnswer::yes) {
            return;
        }
        result = save_export(host_.files, file, bytes, true);
    }
    if (result.status != FileStatus::done) {
        host_.boxes.show({.text = result.message, .icon = MessageIcon::exclamation});
    }
    controls_.lblExportSaved.set_caption(std::move(result.message));
}

} // namespace kv408
