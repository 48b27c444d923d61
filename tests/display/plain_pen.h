#pragma once

#include "display/canvas.h"

namespace kv408::test {

/// Draws on a surface that shows the plot at `factor` as plainly as it can be said, pixel by pixel.
class PlainPen {
public:
    PlainPen(Surface& surface, double factor);

    [[nodiscard]] int line_width() const { return width_; }

    /// The pixel of the middle of unit `unit`; natural size rounds, halves to even.
    [[nodiscard]] int place(double unit) const;

    /// Fills the pixels of `area`.
    void fill(Rectangle area, Pixel colour) const;

    /// A disc of the line's width on a pixel.
    void disc(Point at, Pixel colour) const;

    /// A line between two pixels without the last one, each pixel of it a disc.
    void line(Point from, Point to, Pixel colour) const;

    /// Row or column `unit` from unit `from` to, not including, unit `to`; dotted in threes.
    void row(int unit, int from, int to, Pixel colour, bool dotted) const;
    void column(int unit, int from, int to, Pixel colour, bool dotted) const;

    /// A line that is neither a row nor a column from unit (`from_x`, `from_y`) to unit (`to_x`,
    /// `to_y`): along the axis on which it goes further, each pixel as far across as the line is
    /// there.
    void slant(double from_x, double from_y, double to_x, double to_y, Pixel colour) const;

    /// The pixels that unit (`x`, `y`) has to itself.
    void unit(int x, int y, Pixel colour) const;

    /// A filled circle of `size` units from unit (`left`, `top`) on.
    void circle(int left, int top, int size, Pixel colour) const;

    /// The graticule on its background.
    void graticule(Pixel background, Pixel colour, bool dotted) const;

private:
    [[nodiscard]] int start(double unit, bool across) const;
    [[nodiscard]] int edge(int unit) const;
    [[nodiscard]] std::vector<Columns> pieces(int from, int to, bool across, bool dotted) const;

    Surface* surface_;
    double factor_;
    int width_;
    std::vector<Point> disc_; ///< its pixels, from the one that it is put to
};

} // namespace kv408::test
