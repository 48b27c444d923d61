#pragma once

#include <optional>
#include <vector>

#include <QBoxLayout>
#include <QLabel>
#include <QWidget>

#include "panel/front_panel.h"
#include "ui/clipping_marks.h"
#include "ui/cursor_numbers.h"
#include "ui/panel_frame.h"
#include "ui/plot_widget.h"
#include "ui/reference_plates.h"
#include "ui/screen_header.h"
#include "ui/screen_sizes.h"

namespace kv408::ui {

/// The left half of the window: the plot on a surround of its colour with the read-outs above and
/// below it and the results of the measurements. The plot is as large as its room lets it be; the
/// texts around it grow with it by quarters up to twice their size. All of it stays in the middle.
/// What stands below the plot may stand in a column to its right instead.
class ScreenPanel : public QWidget {
public:
    /// Shows `picture` and the controls of `panel` that lie on the screen.
    ScreenPanel(ScaledPicture picture, FrontPanel& panel, QWidget* parent = nullptr);

    /// The plot.
    [[nodiscard]] PlotWidget& plot() { return *plot_; }

    /// Shows on the plot what `references` are there.
    void add_references(ReferenceMenu& references, MathsDialog& maths, ScopeDriver& driver);

    /// Shows at the plot's edges what leaves the instrument's scale there.
    void add_clipping_marks(ReadoutsControls& controls);

    /// Puts the numbers of the cursors to the lines that `cursors` shows.
    void show_cursors(const CursorState& cursors) { cursor_numbers_->show(cursors); }

    /// Puts the read-outs below the plot and the results into a column to its right, and under them
    /// `status`, which becomes a child; null puts them below the plot again, and leaves the frame
    /// that was there to the caller. The size hint stays what it is with them below the plot.
    void set_beside(PanelFrame* status);

    /// The scale that the plot has in `size` with `beside` in the column to its right, or without a
    /// column where that is null; none where not even natural size fits.
    [[nodiscard]] std::optional<PlotScale> scale_in(QSize size, const PanelFrame* beside) const;

    /// Room for everything with a pixel of the picture as large as one of the screen and the texts
    /// close to it, with `beside` in the column, or without one.
    [[nodiscard]] QSize least_size(const PanelFrame* beside) const;

    /// The least width with a pixel of the picture as large as a unit of the window and no column
    /// beside the plot.
    [[nodiscard]] int whole_width() const;

    /// Room for everything with a pixel of the picture as large as a unit of the window.
    [[nodiscard]] QSize sizeHint() const override;

    /// The least size with what is beside the plot now.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// The room that there is now.
    [[nodiscard]] PlotRoom present_room() const;

    void stack_footer(int lines);
    void grow_texts(double growth);
    void fit();
    void place_parts(const RowHeights& heights);
    /// Puts what stands in the column into `place`, from its top down.
    void place_column(const QRect& place, const RowHeights& heights);
    [[nodiscard]] QWidget* make_footer(FrontPanel& panel);
    void make_markers(FrontPanel& panel);
    [[nodiscard]] QWidget* make_cursor_read_outs(FrontPanel& panel);

    PlotWidget* plot_;
    ScreenHeader* header_;
    ScreenSizes sizes_{*this, *header_};
    std::vector<QBoxLayout*> footer_halves_;
    QWidget* footer_;
    QWidget* results_;
    PanelFrame* beside_ = nullptr; ///< in the column right of the plot, while there is one
    QWidget* cursor_read_outs_;
    ReferencePlates* references_ = nullptr; ///< once they have been added
    std::vector<ClippingMarks*> clipping_marks_;
    std::optional<CursorNumbers> cursor_numbers_;
    double growth_ = 1.0;       ///< of the texts, 1 to 2
    bool font_changed_ = false; ///< and the texts have not grown from the new one yet
    qreal ratio_ = 0.0;         ///< device pixels per unit that the plot was last fitted for
};

} // namespace kv408::ui
