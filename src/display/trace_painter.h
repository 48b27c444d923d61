#pragma once

#include "display/canvas.h"
#include "display/trace_look.h"

namespace kv408 {

/// Draws the trace of `view` onto `canvas`, a surface that was cleared to `background`: its history
/// from the oldest generation to the newest, then the current trace, then the gap. This is how a
/// trace is defined; it serves every trace, whatever its points.
void paint_trace(const Canvas& canvas, const TraceView& view, Pixel background);

} // namespace kv408
