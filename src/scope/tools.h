#pragma once

#include <memory>

#include "export/export_dialog.h"
#include "export/record_dialog.h"
#include "host/places.h"
#include "panel/front_panel.h"
#include "state/sweeps.h"

namespace kv408 {

/// What the menu "Tools" opens. Each tool works on finished sweeps and sends nothing. With none of
/// them in use nothing else changes.
class Tools {
public:
    /// What they need of the machine.
    struct Host {
        Clock& clock;
        MessageBoxes& boxes;
        Files& files;
        FileChoosers& choosers;
        Places places;
    };

    /// Connects the menu entries of `panel`.
    Tools(FrontPanel& panel, const Sweeps& sweeps, const Host& host);
    Tools(const Tools&) = delete;
    Tools& operator=(const Tools&) = delete;

    /// The export dialog.
    [[nodiscard]] ExportDialog& export_dialog() { return export_dialog_; }

    /// The recording dialog.
    [[nodiscard]] RecordDialog& record_dialog() { return record_dialog_; }

    /// Hands `sweep`, with which every channel that is on has come and been measured, to each tool.
    /// Runs in a tick: nothing here waits for a disk.
    void sweep_complete(const std::shared_ptr<const Sweep>& sweep);

    /// Shows what has come of that meanwhile; every tick.
    void tick() { record_dialog_.tick(); }

private:
    [[nodiscard]] ExportOrigin origin() const;

    FrontPanel& panel_;
    Places places_;
    ExportDialog export_dialog_;
    RecordDialog record_dialog_;
};

} // namespace kv408
