#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "export/dialog_host.h"
#include "export/exported_sweep.h"
#include "export/recorder.h"
#include "export/recording_files.h"
#include "export/recording_plan.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "panel/controls.h"
#include "panel/front_panel.h"
#include "state/sweep.h"

namespace kv408 {

/// The controls of the recording dialog.
struct RecordControls {
    ListBox cmbRecordPace{"cmbRecordPace"};    ///< every sweep, every n-th, or one in a time
    TextBox txtRecordPace{"txtRecordPace"};    ///< the n, or the time in seconds
    TextBox txtRecordCount{"txtRecordCount"};  ///< sweeps after which it ends; empty: none
    ListBox cmbRecordType{"cmbRecordType"};    ///< one file, or numbered files of a kind
    TextBox txtRecordFile{"txtRecordFile"};    ///< the file's name with its folders
    Button cmdRecordBrowse{"cmdRecordBrowse"}; ///< asks for the file in a dialog of the system
    Label lblRecordDone{"lblRecordDone"};      ///< how many sweeps are in the file
    Label lblRecordMissed{"lblRecordMissed"};  ///< how many came faster than they could be written
    Label lblRecordFree{"lblRecordFree"};      ///< free space on the disk
    Label lblRecordRemark{"lblRecordRemark"};  ///< where the recording goes, or why it has ended
    Button cmdRecord{"cmdRecord"};             ///< begins
    Button cmdRecordStop{"cmdRecordStop"};     ///< ends
};

/// The recording dialog `frmRecord`: saves one sweep after the other. It is modeless; a recording
/// goes on while the window is in the background, and ends with it.
class RecordDialog {
public:
    using Host = DialogHost;
    using Origin = TellOrigin;

    /// `space` tells what is free where a file lies; it is asked on the recorder's thread.
    RecordDialog(const FrontPanel& panel, const Host& host, Origin origin,
                 FreeSpace space = free_space);
    RecordDialog(const RecordDialog&) = delete;
    RecordDialog& operator=(const RecordDialog&) = delete;

    [[nodiscard]] RecordControls& controls() { return controls_; }

    /// Opens the dialog, with a name from date and time in `folder` unless the user has typed one;
    /// one that is open already is only brought to the front.
    void open(const std::filesystem::path& folder);

    [[nodiscard]] bool is_open() const { return open_; }

    /// Closes it; while a recording runs only if the user confirms that it is to end.
    void close();

    /// Hands `sweep`, which is complete, to the recording, if one runs and its plan takes it.
    /// Waits for nothing.
    void take(const Sweep& sweep);

    /// Shows how far the recording is, and tells in a message when it has failed. To be called
    /// every tick; without a recording it does nothing.
    void tick();

    /// Sets what shows the dialog while it is open, and hides it when it is closed.
    void on_show(std::function<void()> listener) { show_ = std::move(listener); }

private:
    void cmdRecordBrowse_Click();
    void cmdRecord_Click();
    /// The plan in the boxes; nothing where it is faulty, with the boxes at fault marked.
    [[nodiscard]] std::optional<RecordingPlan> plan();
    /// The file that the box names, with the ending of its kind.
    [[nodiscard]] std::filesystem::path path() const;
    /// Begins the file at `path`; null, told in a message, when that cannot be done.
    [[nodiscard]] std::unique_ptr<RecordingTarget> begin(const std::filesystem::path& path);
    [[nodiscard]] std::string saved_text(std::uint64_t sweeps) const;
    void show_progress(const RecordingProgress& progress);
    /// Enables what can be used now.
    void enable();

    const FrontPanel& panel_;
    Host host_;
    Origin origin_;
    FreeSpace space_;
    /// Free bytes as last asked for; shared with the recorder's thread. The largest number: not
    /// known.
    std::shared_ptr<std::atomic<std::uintmax_t>> free_;
    RecordControls controls_;
    std::string offered_; ///< the name that the dialog itself has put into the box last
    bool open_ = false;
    std::function<void()> show_;
    std::optional<RecordingPace> pace_; ///< while sweeps are taken
    std::unique_ptr<Recorder> recorder_;
};

} // namespace kv408
