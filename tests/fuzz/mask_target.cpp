// Any bytes at all as a mask's text. Built with a fuzzer it looks for bytes that break a promise;
// built with replay.cpp it tries those that were found worth keeping.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

#include "analysis/mask_file.h"
#include "fuzz/promise.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using kv408::demand;
    const std::string bytes(data, data + size);
    const auto found = kv408::mask_in(bytes);
    if (const auto* const error = std::get_if<kv408::MaskFileError>(&found)) {
        const auto lines = 1 + std::count(bytes.begin(), bytes.end(), '\n');
        demand(error->line >= 1 && error->line <= lines, "the line is one of the text");
        demand(!error->what.empty(), "it is told what is wrong");
        return 0;
    }
    const kv408::Mask& mask = std::get<kv408::Mask>(found);
    demand(mask.hit_ratio >= 0.0 && mask.hit_ratio <= 1.0, "the ratio is a share");
    demand(!mask.polygons.empty() && mask.polygons.size() <= kv408::most_mask_polygons,
           "there are polygons, and no more than are told");
    for (const kv408::MaskPolygon& polygon : mask.polygons) {
        demand(polygon.points.size() >= 3 && polygon.points.size() <= kv408::most_mask_points,
               "a polygon is one");
        for (const kv408::MaskPoint& point : polygon.points) {
            demand(std::isfinite(point.x) && std::isfinite(point.y), "a corner is somewhere");
        }
    }
    return 0;
}
