#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "export/dialog_host.h"
#include "export/references.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "panel/controls.h"
#include "state/reference_curve.h"
#include "state/sweeps.h"

namespace kv408 {

/// The controls of one reference: its entries in the menu, and what stands beside the plot.
struct ReferenceControls {
    explicit ReferenceControls(std::size_t place);

    CheckBox mnuReferenceShow;    ///< shows it or hides it; enabled while one is kept
    Button mnuReferenceKeepCH1;   ///< keeps CH1 of the last whole sweep
    Button mnuReferenceKeepCH2;   ///< keeps CH2 of it
    Button mnuReferenceKeepMATH1; ///< keeps the first computed trace
    Button mnuReferenceKeepMATH2; ///< keeps the second one
    Button mnuReferenceLoad;      ///< asks for a file and keeps what it holds
    Button mnuReferenceSave;      ///< asks for a file and saves it there
    Button mnuReferenceClear;     ///< forgets it
    Label lblReference; ///< name, volts and time per division in its colour; hidden without one
};

/// The submenu "References": keeps, loads, saves, shows and clears the four references, and tells
/// what is to be shown.
class ReferenceMenu {
public:
    using Host = DialogHost;
    using Origin = TellOrigin;

    /// Who draws the references that are shown.
    using Show = std::function<void(std::vector<ShownReference>)>;

    /// `add_computed` brings the computed traces, of which any reference can be made too.
    ReferenceMenu(const Sweeps& sweeps, const Host& host, Origin origin, Show show,
                  AddComputed add_computed = {});
    ReferenceMenu(const ReferenceMenu&) = delete;
    ReferenceMenu& operator=(const ReferenceMenu&) = delete;

    /// The controls of the reference in `place`, 0..3.
    [[nodiscard]] ReferenceControls& controls(std::size_t place) { return controls_.at(place); }

    [[nodiscard]] const References& references() const { return references_; }

private:
    void mnuReferenceKeep_Click(std::size_t place, const std::string& trace);
    void mnuReferenceLoad_Click(std::size_t place);
    [[nodiscard]] std::optional<std::size_t> channel_to_keep(const std::string& file,
                                                             const ExportedSweep& sweep);
    void mnuReferenceSave_Click(std::size_t place);
    void mnuReferenceShow_Click(std::size_t place);
    void mnuReferenceClear_Click(std::size_t place);
    void show_controls();
    void show_all();

    const Sweeps& sweeps_;
    Host host_;
    Origin origin_;
    Show show_;
    AddComputed add_computed_;
    References references_;
    std::array<ReferenceControls, References::count> controls_;
};

} // namespace kv408
