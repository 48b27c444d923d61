#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "analysis/density_marks.h"
#include "analysis/eye.h"
#include "export/density_watch.h"
#include "export/told_values.h"
#include "panel/controls.h"

namespace kv408 {

/// The controls of the eye window.
struct EyeControls {
    Button mnueye{"mnueye"};                  ///< Tools: opens it
    ListBox cmbEyeChannel{"cmbEyeChannel"};   ///< whose density
    TextBox txtEyeInterval{"txtEyeInterval"}; ///< unit interval; empty: found
    TextBox txtEyeCrossing{"txtEyeCrossing"}; ///< time of a crossing; empty: found
    Button cmdEyeCopy{"cmdEyeCopy"};          ///< copies the table
    Label lblEyeState{"lblEyeState"};         ///< how many sweeps, since when
    Label lblEyeFound{"lblEyeFound"};         ///< whether it is open, or why there is none
    Label lblEyeNames{"lblEyeNames"};
    Label lblEyeValues{"lblEyeValues"}; ///< line by line what the names say
    Label lblEyeRemark{"lblEyeRemark"}; ///< what falsifies them
};

/// The numbers of `eye` in the order of the window; each without one where there is none.
[[nodiscard]] std::vector<ToldValue> eye_values(const Told<Eye>& eye);

/// The eye window `frmEye`: how far apart the levels and edges of random data stay. Opening it
/// switches the density on; while it is open the plot shows what is measured.
class EyeDialog {
public:
    /// Shows marks over the density, or none.
    using ShowMarks = std::function<void(std::optional<DensityMarks>)>;

    /// Works on what `density` collects; both outlive it.
    EyeDialog(DensityDialog& density, const Clock& clock, ShowMarks show_marks);
    EyeDialog(const EyeDialog&) = delete;
    EyeDialog& operator=(const EyeDialog&) = delete;

    [[nodiscard]] EyeControls& controls() { return controls_; }
    [[nodiscard]] const EyeControls& controls() const { return controls_; }

    /// Opens the window; one that is open already is only brought to the front.
    void open() { watch_.open(); }
    [[nodiscard]] bool is_open() const { return watch_.is_open(); }
    void close();

    /// What the boxes say.
    [[nodiscard]] const EyeSetup& setup() const { return setup_; }

    /// The eye of what is collected now, whether the window is open or not, and its numbers.
    [[nodiscard]] Told<Eye> eye() const;
    [[nodiscard]] std::vector<ToldValue> values() const { return eye_values(eye()); }

    /// The numbers of the window as a table for the clipboard.
    [[nodiscard]] std::string table() const;

    void refresh() { watch_.refresh(); }
    void tick_over() { watch_.tick_over(); }

    /// Sets what shows the window and brings it to the front.
    void on_show(std::function<void()> listener) { watch_.on_show(std::move(listener)); }

private:
    void take_setup();
    void show_values();

    ShowMarks show_marks_;
    EyeControls controls_;
    EyeSetup setup_;
    DensityWatch watch_;
    std::vector<ToldValue> values_;
};

} // namespace kv408
