#pragma once

#include <string>
#include <vector>

#include "display/picture.h"
#include "display/picture_coder.h"

namespace kv408 {

/// The plot box as a file of scalable vector graphics: graticule, references, traces with their
/// persistence, cursors and their numbers, marks, trigger line, markers, cursor read-outs and the
/// references' names, with `lines` of text
/// under them. With `inverted` every colour is its opposite.
[[nodiscard]] std::string svg_file(const Picture& picture, const FrontPanel& panel,
                                   const std::vector<TextLine>& lines, bool inverted);

} // namespace kv408
