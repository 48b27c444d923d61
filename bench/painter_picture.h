#pragma once

#include <QImage>
#include <QPen>
#include <QPolygon>
#include <array>
#include <vector>

#include "scope_scene.h"

namespace kv408::bench {

/// The picture of a scene drawn call by call with QPainter: the grid copied, and for each channel
/// its trace image cleared, nine generations and the current trace drawn as polylines, and the
/// image copied over with its background transparent.
class PainterPicture {
public:
    /// Takes over the last sweeps and the colours of `scene`; nothing is drawn yet.
    explicit PainterPicture(ScopeScene& scene);

    /// Composes the whole picture.
    void draw();

    /// Composes `count` columns from column `first` on, as after a new point.
    void draw_columns(int first, int count);

    [[nodiscard]] const QImage& image() const { return display_; }

private:
    struct Line {
        QPolygon points;
        QPen pen;
    };

    void draw_trace(const std::vector<Line>& lines);
    void draw_trace_columns(const std::vector<Line>& lines, const QRect& columns);

    QImage grid_;
    QImage display_;
    QImage trace_;
    std::array<std::vector<Line>, 2> lines_; ///< of each channel, the oldest generation first
};

} // namespace kv408::bench
