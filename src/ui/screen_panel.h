#pragma once

#include <optional>
#include <vector>

#include <QBoxLayout>
#include <QLabel>
#include <QWidget>

#include "panel/front_panel.h"
#include "ui/clipping_marks.h"
#include "ui/cursor_numbers.h"
#include "ui/plot_widget.h"
#include "ui/reference_plates.h"
#include "ui/screen_header.h"

namespace kv408::ui {

/// The left half of the window: the plot on a surround of its colour with the read-outs above and
/// below it and the results of the measurements. The plot is as large as its room lets it be; the
/// texts around it grow with it by quarters up to twice their size. All of it stays in the middle.
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

    /// Room for everything with a pixel of the picture as large as a unit of the window.
    [[nodiscard]] QSize sizeHint() const override;

    /// Room for everything with a pixel of the picture as large as one of the screen and the texts
    /// close to it.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// Heights of the rows around the plot, units of the window.
    struct RowHeights {
        int line;   ///< of a line of read-outs
        int result; ///< of a row of the results
    };

    /// As high as the rows are where there is room, and as low as they may become.
    [[nodiscard]] RowHeights usual_heights(double growth) const;
    [[nodiscard]] RowHeights least_heights() const;

    /// How much larger than the desktop's the texts are beside a plot of `scale` on a screen of
    /// `ratio` pixels for each unit of the window.
    [[nodiscard]] static double growth_at(const PlotScale& scale, qreal ratio);

    /// Lines of read-outs above and below a plot of `scale` on such a screen.
    [[nodiscard]] int lines_around(const PlotScale& scale, qreal ratio) const;

    /// What the plot's size grows by with `lines` lines of read-outs and the results around it.
    [[nodiscard]] static QSize size_of_rows(int lines, const RowHeights& heights);

    /// The size of all of it around a plot of `scale` on such a screen.
    [[nodiscard]] QSize size_around(const PlotScale& scale, qreal ratio,
                                    const RowHeights& heights) const;
    [[nodiscard]] bool fits(const PlotScale& scale) const;
    [[nodiscard]] PlotScale largest_scale() const;
    /// The largest scale with which there is room for `lines` lines of texts `growth` times as
    /// large as the desktop's, and which has texts no larger than that; natural size where there is
    /// none.
    [[nodiscard]] PlotScale largest_with(double growth, int lines) const;
    /// Lines of the read-outs below a plot of `columns` units of the window: 1, or 2 where the
    /// channels' names stand above their values.
    [[nodiscard]] int footer_lines(int columns, double growth) const;
    void stack_footer(int lines);
    void grow_texts(double growth);
    void fit();
    void place_parts(const RowHeights& heights);
    [[nodiscard]] QWidget* make_footer(FrontPanel& panel);
    void make_markers(FrontPanel& panel);
    [[nodiscard]] QWidget* make_cursor_read_outs(FrontPanel& panel);

    PlotWidget* plot_;
    ScreenHeader* header_;
    std::vector<QBoxLayout*> footer_halves_;
    QWidget* footer_;
    QWidget* results_;
    QWidget* cursor_read_outs_;
    ReferencePlates* references_ = nullptr; ///< once they have been added
    std::vector<ClippingMarks*> clipping_marks_;
    std::optional<CursorNumbers> cursor_numbers_;
    double growth_ = 1.0; ///< of the texts, 1 to 2
    qreal ratio_ = 0.0;   ///< device pixels per unit that the plot was last fitted for
};

} // namespace kv408::ui
