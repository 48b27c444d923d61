#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "export/dialog_host.h"
#include "export/export_type.h"
#include "export/exported_sweep.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "panel/controls.h"
#include "panel/front_panel.h"
#include "state/sweeps.h"

namespace kv408 {

/// The controls of the export dialog.
struct ExportControls {
    ListBox cmbExportType{"cmbExportType"};     ///< the kind of file
    TextBox txtExportFile{"txtExportFile"};     ///< the file's name with its folders
    Button cmdExportBrowse{"cmdExportBrowse"};  ///< asks for the file in a dialog of the system
    Label lblExportPreview{"lblExportPreview"}; ///< the first lines of the sweep as CSV
    Label lblExportRemark{"lblExportRemark"}; ///< what the user should know about this kind of file
    Label lblExportSaved{"lblExportSaved"};   ///< where the last file lies, or what failed
    Button cmdExport{"cmdExport"};            ///< saves the sweep that is shown
};

/// The export dialog `frmExport`: saves the last whole sweep of the channels that are on. It is
/// modeless and stays open; the sweep is the one that is there when it is saved.
class ExportDialog {
public:
    using Host = DialogHost;
    using Origin = TellOrigin;

    /// `add_computed` brings the computed traces, which are saved behind the channels.
    ExportDialog(const FrontPanel& panel, const Sweeps& sweeps, const Host& host, Origin origin,
                 AddComputed add_computed = {});
    ExportDialog(const ExportDialog&) = delete;
    ExportDialog& operator=(const ExportDialog&) = delete;

    [[nodiscard]] ExportControls& controls() { return controls_; }

    /// Opens the dialog, with a name from date and time in `folder` unless the user has typed one;
    /// one that is open already is only brought to the front.
    void open(const std::filesystem::path& folder);

    [[nodiscard]] bool is_open() const { return open_; }
    void close() { open_ = false; }

    /// Shows the first lines of the present sweep, and what the user should know about saving it.
    /// Takes less time than a whole export; to be called when a sweep is complete while the dialog
    /// is open.
    void show_sweep();

    /// The sweep that is there as a table for the clipboard; empty without one.
    [[nodiscard]] std::string clipboard_text() const;

    /// Sets what shows the dialog and brings it to the front.
    void on_show(std::function<void()> listener) { show_ = std::move(listener); }

private:
    void cmbExportType_Click();
    void txtExportFile_Change();
    void cmdExportBrowse_Click();
    void cmdExport_Click();
    /// The sweep that is there, with at most `most` points of each channel.
    [[nodiscard]] ExportedSweep sweep(std::size_t most = npoints) const;
    [[nodiscard]] const ExportType& type() const;
    /// The file that the box names, with an ending of its kind.
    [[nodiscard]] std::filesystem::path path() const;

    const FrontPanel& panel_;
    const Sweeps& sweeps_;
    Host host_;
    Origin origin_;
    AddComputed add_computed_;
    ExportControls controls_;
    std::string offered_; ///< the name that the dialog itself has put into the box last
    bool open_ = false;
    bool naming_ = false; ///< the box or the list follows the other one
    std::function<void()> show_;
};

} // namespace kv408
