#pragma once

#include <string>
#include <vector>

#include "display/picture.h"
#include "display/picture_coder.h"

namespace kv408 {

/// The plot box as a file of scalable vector graphics: graticule, references, traces with their
/// persistence, cursors, marks, trigger line, markers and cursor read-outs, with `lines` of text
/// under them. With `inverted` every colour is its opposite.
[[nodiscard]] std::string svg_file(const Picture& picture, const FrontPanel& panel,
                                   const std::vector<TextLine>& lines, bool inverted);

} // namespace kv408
