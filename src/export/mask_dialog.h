#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/mask.h"
#include "analysis/shipped_masks.h"
#include "export/density_watch.h"
#include "export/dialog_host.h"
#include "export/eye_dialog.h"
#include "export/limit_actions.h"
#include "export/told_values.h"
#include "panel/controls.h"

namespace kv408 {

/// The controls of the mask window.
struct MaskControls {
    Button mnumask{"mnumask"};                ///< Tools: opens it
    ListBox cmbMaskChannel{"cmbMaskChannel"}; ///< whose density
    ListBox cmbMask{"cmbMask"};               ///< the shipped masks, then the one that was loaded
    Button cmdMaskLoad{"cmdMaskLoad"};        ///< asks for a file and takes its mask
    TextBox txtMaskRatio{"txtMaskRatio"};     ///< hit ratio that is let pass; empty: the mask's
    ListBox cmbMaskAction{"cmbMaskAction"};   ///< what the first hit brings about
    Button cmdMaskCopy{"cmdMaskCopy"};        ///< copies the table
    Label lblMaskVerdict{"lblMaskVerdict"};   ///< PASS, FAIL, NO RESULT
    Label lblMaskState{"lblMaskState"};       ///< how many sweeps, since when
    Label lblMaskFound{"lblMaskFound"};       ///< what was tested, or why nothing can be
    Label lblMaskNames{"lblMaskNames"};
    Label lblMaskValues{"lblMaskValues"}; ///< line by line what the names say
    Label lblMaskRemark{"lblMaskRemark"}; ///< what falsifies them
};

/// What the shipped masks are called, in the order of `shipped_masks`.
inline constexpr std::array<std::string_view, shipped_masks.size()> shipped_mask_names = {
    "Hexagon, 40 %", "Hexagon, 60 %, with bounds", "Diamond, 50 %", "STM-1",
    "10GBASE-LR",    "Pulse of 20 ns, 300 mV"};

/// Whether a trace keeps out of a mask.
enum class MaskVerdict { pass, fail, none };

/// What a test has found.
struct MaskTest {
    MaskVerdict verdict = MaskVerdict::none;
    std::string found; ///< what was tested, or why nothing can be: a sentence without its full stop
    /// Hits, samples, hit ratio, allowed ratio, margin, then the hits of each polygon; no line
    /// where nothing can be tested.
    std::vector<ToldValue> values;
    PlacedMask placed; ///< where it lies, without polygons where nothing can be tested
};

/// The mask window `frmMask`: whether a trace keeps out of polygons, and by how much. Opening it
/// switches the density on; while it is open the plot shows the polygons.
class MaskDialog {
public:
    /// What it needs of the machine and of the program.
    struct Host {
        DialogHost machine;
        std::filesystem::path program; ///< the folder that the program lies in
        LimitActions::Host actions;
    };

    /// Works on what `density` collects, at the eye that `eye` finds; all outlive it.
    MaskDialog(DensityDialog& density, const EyeDialog& eye, Host host,
               EyeDialog::ShowMarks show_marks);
    MaskDialog(const MaskDialog&) = delete;
    MaskDialog& operator=(const MaskDialog&) = delete;

    [[nodiscard]] MaskControls& controls() { return controls_; }
    [[nodiscard]] const MaskControls& controls() const { return controls_; }

    /// Opens the window; one that is open already is only brought to the front.
    void open();
    [[nodiscard]] bool is_open() const { return watch_.is_open(); }
    void close();

    /// The mask in use; none where its file is not there or has an error.
    [[nodiscard]] const std::optional<Mask>& mask() const { return mask_; }

    /// Takes the mask of the file at `path`; what is wrong with that is told in a message.
    void load(const std::filesystem::path& path);
    [[nodiscard]] bool has_loaded() const { return loaded_.has_value(); }

    /// The hit ratio that is typed; none: the mask's own.
    [[nodiscard]] const std::optional<double>& ratio() const { return ratio_; }

    /// Tests what is collected now, whether the window is open or not.
    [[nodiscard]] MaskTest test();
    /// The numbers of that.
    [[nodiscard]] std::vector<ToldValue> values() { return test().values; }

    /// The numbers of the window as a table for the clipboard.
    [[nodiscard]] std::string table() const;

    void refresh() { watch_.refresh(); }

    /// The same when it is time. With an action chosen what has come is looked at each time.
    void tick_over();

    /// Waits until all snapshots are written.
    void wait_until_written() { actions_.wait_until_written(); }

    /// Sets what shows the window and brings it to the front.
    void on_show(std::function<void()> listener) { watch_.on_show(std::move(listener)); }

private:
    void choose();
    void take_shipped(std::size_t index);
    void show_test();
    void look_for_first_hit();
    [[nodiscard]] bool place(MaskTest& test, const Collected& collected) const;

    DensityDialog& density_;
    const EyeDialog& eye_;
    Host host_;
    EyeDialog::ShowMarks show_marks_;
    MaskControls controls_;
    DensityWatch watch_;
    LimitActions actions_;
    std::optional<Mask> mask_;
    std::string problem_;        ///< why there is none
    std::optional<Mask> loaded_; ///< from a file
    std::optional<double> ratio_;
    MaskTest shown_;              ///< what was found last, while the window is open
    MeasuredWith placed_with_;    ///< where that was placed
    std::uint64_t looked_at_ = 0; ///< changes of the density when a first hit was looked for last
    bool hit_ = false;            ///< the first hit has come
};

} // namespace kv408
