#include "export/density_file.h"

#include <bit>

#include "export/little_endian.h"
#include "export/numpy_file.h"
#include "state/units.h"

namespace kv408 {

std::string density_file(const Collected& collected) {
    const Density& counts = collected.counts;
    const auto points = static_cast<std::size_t>(counts.points());
    std::string bytes = numpy_header("'<u4'", {points, scale_codes});
    bytes.reserve(bytes.size() + points * scale_codes * sizeof(std::uint32_t));
    for (int point = 0; point < counts.points(); ++point) {
        for (const std::uint32_t count : counts.at(point)) {
            put_little_endian(bytes, count);
        }
    }
    return bytes;
}

std::string density_axes_file(const Collected& collected) {
    std::string bytes = numpy_header("[('first_time', '<f8'), ('time_per_point', '<f8'), "
                                     "('sweeps', '<u8'), ('averaged', '<u8'), ('weight', '<f8'), "
                                     "('levels', '<f8', (4096,))]",
                                     {});
    static_assert(scale_codes == 4096);
    put_float64(bytes, collected.with.first_time / picoseconds_per_second);
    put_float64(bytes, collected.with.time_per_point / picoseconds_per_second);
    put_little_endian(bytes, collected.sweeps);
    put_little_endian(bytes, collected.averaged);
    put_float64(bytes, collected.weight);
    for (int code = 0; code < scale_codes; ++code) {
        put_float64(bytes, level_of(collected.with, code) / millivolts_per_volt);
    }
    return bytes;
}

std::filesystem::path density_axes_path(const std::filesystem::path& path) {
    std::filesystem::path axes = path.parent_path() / path.stem();
    axes += "_axes";
    axes += path.extension();
    return axes;
}

} // namespace kv408
