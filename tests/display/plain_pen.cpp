#include "plain_pen.h"

#include <cmath>

namespace kv408::test {

PlainPen::PlainPen(Surface& surface, double factor)
    : surface_(&surface), factor_(factor), width_(static_cast<int>(std::floor(factor + 0.5))) {
    const double middle = width_ / 2.0;
    for (int down = 0; down < width_; ++down) {
        for (int across = 0; across < width_; ++across) {
            if (std::hypot(across + 0.5 - middle, down + 0.5 - middle) <= middle) {
                disc_.push_back({across - width_ / 2, down - width_ / 2});
            }
        }
    }
}

int PlainPen::place(double unit) const {
    if (factor_ == 1.0) {
        return static_cast<int>(std::nearbyint(unit));
    }
    return static_cast<int>(std::floor((unit + 0.5) * factor_));
}

void PlainPen::fill(Rectangle area, Pixel colour) const {
    for (int y = std::max(area.top, 0); y < std::min(area.bottom, surface_->height()); ++y) {
        for (int x = std::max(area.left, 0); x < std::min(area.right, surface_->width()); ++x) {
            surface_->at(x, y) = colour;
        }
    }
}

void PlainPen::disc(Point at, Pixel colour) const {
    for (const Point& place : disc_) {
        const int x = at.x + place.x;
        const int y = at.y + place.y;
        if (x >= 0 && x < surface_->width() && y >= 0 && y < surface_->height()) {
            surface_->at(x, y) = colour;
        }
    }
}

void PlainPen::line(Point from, Point to, Pixel colour) const {
    const int wide = std::abs(to.x - from.x);
    const int high = std::abs(to.y - from.y);
    // Half a pixel between two goes to the upper or left one.
    const auto nearest = [](int first, int last, int step, int steps) {
        return static_cast<int>(
            std::ceil(first + static_cast<double>(last - first) * step / steps - 0.5));
    };
    const int steps = std::max(wide, high);
    for (int step = 0; step < steps; ++step) {
        if (wide >= high) {
            disc({from.x + (to.x < from.x ? -step : step), nearest(from.y, to.y, step, steps)},
                 colour);
        } else {
            disc({nearest(from.x, to.x, step, steps), from.y + (to.y < from.y ? -step : step)},
                 colour);
        }
    }
}

/// The first pixel of a unit's line; a unit of the plot lies wholly on the surface.
int PlainPen::start(double unit, bool across) const {
    const int pixels = across ? surface_->width() : surface_->height();
    const int first = place(unit) - width_ / 2;
    const bool inside = unit >= 0 && unit <= (across ? 640 : 512);
    return inside ? std::min(std::max(first, 0), pixels - width_) : first;
}

std::vector<Columns> PlainPen::pieces(int from, int to, bool across, bool dotted) const {
    const int end = start(to, across);
    if (!dotted) {
        return {{start(from, across), end}};
    }
    std::vector<Columns> result;
    for (int unit = from; unit < to; unit += 6) {
        const int left = start(unit, across);
        result.push_back(
            {left, std::min(left + static_cast<int>(std::floor(3.0 * factor_ + 0.5)), end)});
    }
    return result;
}

void PlainPen::row(int unit, int from, int to, Pixel colour, bool dotted) const {
    const int top = start(unit, false);
    for (const Columns piece : pieces(from, to, true, dotted)) {
        fill({piece.left, top, piece.right, top + width_}, colour);
    }
}

void PlainPen::column(int unit, int from, int to, Pixel colour, bool dotted) const {
    const int left = start(unit, true);
    for (const Columns piece : pieces(from, to, false, dotted)) {
        fill({left, piece.left, left + width_, piece.right}, colour);
    }
}

/// The pixel edge nearest to the beginning of a unit.
int PlainPen::edge(int unit) const {
    return static_cast<int>(std::floor(unit * factor_ + 0.5));
}

void PlainPen::unit(int x, int y, Pixel colour) const {
    fill({edge(x), edge(y), edge(x + 1), edge(y + 1)}, colour);
}

void PlainPen::slant(double from_x, double from_y, double to_x, double to_y, Pixel colour) const {
    const bool steep = std::abs(to_y - from_y) > std::abs(to_x - from_x);
    const int above = width_ / 2; // of a line of even width one pixel more lies ahead of its middle
    const auto [first, last] = steep ? std::minmax(from_y, to_y) : std::minmax(from_x, to_x);
    for (int at = start(first, !steep); at < start(last + 1, !steep); ++at) {
        const double unit = std::clamp((at + above + 0.5) / factor_ - 0.5, first, last);
        if (steep) {
            const double x = from_x + (to_x - from_x) * (unit - from_y) / (to_y - from_y);
            fill({start(x, true), at, start(x, true) + width_, at + 1}, colour);
        } else {
            const double y = from_y + (to_y - from_y) * (unit - from_x) / (to_x - from_x);
            fill({at, start(y, false), at + 1, start(y, false) + width_}, colour);
        }
    }
}

void PlainPen::circle(int left, int top, int size, Pixel colour) const {
    const int pixels = static_cast<int>(std::floor(size * factor_ + 0.5));
    const double middle = pixels / 2.0;
    for (int down = 0; down < pixels; ++down) {
        for (int across = 0; across < pixels; ++across) {
            if (std::hypot(across + 0.5 - middle, down + 0.5 - middle) <= middle) {
                const int x = edge(left) + across;
                const int y = edge(top) + down;
                fill({x, y, x + 1, y + 1}, colour);
            }
        }
    }
}

void PlainPen::graticule(Pixel background, Pixel colour, bool dotted) const {
    fill({0, 0, surface_->width(), surface_->height()}, background);
    for (const int edge : {0, 1}) {
        row(512 * edge, 0, 641, colour, false);
        column(640 * edge, 0, 513, colour, false);
    }
    const auto fifth = [](int number) { return static_cast<int>(std::nearbyint(number * 12.8)); };
    for (int along = 0; dotted && along <= 50; ++along) {
        for (int line = 64; line < 512; line += 64) {
            fill({start(fifth(along), true), start(line, false), start(fifth(along), true) + width_,
                  start(line, false) + width_},
                 colour);
        }
        for (const int line : {0, 256, 512}) {
            column(fifth(along), line - 3, line + 4, colour, false);
        }
    }
    for (int along = 0; dotted && along <= 40; ++along) {
        for (int line = 64; line < 640; line += 64) {
            fill({start(line, true), start(fifth(along), false), start(line, true) + width_,
                  start(fifth(along), false) + width_},
                 colour);
        }
        for (const int line : {0, 320, 640}) {
            row(fifth(along), line - 3, line + 4, colour, false);
        }
    }
}

} // namespace kv408::test
