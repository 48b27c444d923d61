#pragma once

#include <QImage>
#include <QPainter>

namespace kv408::ui {

/// Draws the pixels of `part` of `picture` through `painter`, whose units are pixels, with the
/// first one at `place`.
///
/// Where `painter` draws on an image in memory whose pixels are like the picture's, as it does in a
/// window, they are copied there at once: the painter would look up its clip for every row and
/// share the rows out to threads, which takes longer than the copying. So all of `part` must be
/// allowed to be painted on.
void draw_pixels(QPainter& painter, QPoint place, const QImage& picture, QRect part);

} // namespace kv408::ui
