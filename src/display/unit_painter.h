#pragma once

#include "display/canvas.h"
#include "display/plot_scale.h"
#include "display/tiles.h"

namespace kv408 {

/// How a line of the graticule, a cursor, a mark or the trigger level is drawn.
enum class PenStyle {
    solid,  ///< all of it
    dotted, ///< three units drawn and three left as they are, counted from the line's start
};

/// A place in units of the plot.
struct UnitPlace {
    double x = 0.0;
    double y = 0.0;
};

/// Draws what stands at whole units of the plot, crisp at any scale: rows and columns of units as
/// lines of the scale's width, centred on their units' places; those of the plot lie wholly in it.
class UnitPainter {
public:
    /// Draws on `canvas`, whose surface shows the whole plot at `scale`. What it may have changed
    /// is added to `touched`, where there is one.
    UnitPainter(const Canvas& canvas, const PlotScale& scale, Tiles* touched = nullptr)
        : canvas_(canvas), scale_(scale), touched_(touched) {}

    /// Fills everything with `colour`, the ground for what is drawn: `touched` does not note it.
    void fill(Pixel colour) const;

    /// Draws row `y` from unit `from` to, not including, unit `to`.
    void draw_row(int y, int from, int to, Pixel colour, PenStyle style = PenStyle::solid) const;

    /// Draws column `x` from unit `from` to, not including, unit `to`.
    void draw_column(int x, int from, int to, Pixel colour, PenStyle style = PenStyle::solid) const;

    /// Draws a line between the middles of two units, or of fractions of units, of the plot that is
    /// neither a row nor a column: in each row of pixels, or column of them where it is flat, as
    /// many as a line is wide, so that neighbours touch at any scale.
    void draw_slant(UnitPlace from, UnitPlace to, Pixel colour) const;

    /// Draws the unit (`x`, `y`) as a square of a line's width.
    void draw_dot(int x, int y, Pixel colour) const;

    /// Draws the ellipse inscribed in `units`, filled.
    void draw_ellipse(Rectangle units, Pixel colour) const;

private:
    void paint(Rectangle pixels, Pixel colour) const;
    void touch(Rectangle pixels) const;
    [[nodiscard]] std::int32_t start(double unit, int units, int pixels) const;
    [[nodiscard]] std::int32_t column(double x) const;
    [[nodiscard]] std::int32_t row(double y) const;
    template <typename Draw>
    void draw_dashes(std::int32_t from, std::int32_t to, int first_unit, PenStyle style,
                     std::int32_t (UnitPainter::*start_of)(double) const, const Draw& draw) const;

    Canvas canvas_;
    PlotScale scale_;
    Tiles* touched_;
};

} // namespace kv408
