#include "export/numpy_file.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "export/little_endian.h"

namespace kv408 {
namespace {

constexpr std::string_view magic_and_version{"\x93NUMPY\x01\x00", 8};

/// "CH1" gives "ch1".
std::string column_of(const ExportedChannel& channel) {
    std::string name = channel.name;
    std::transform(name.begin(), name.end(), name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return name;
}

/// The column of its times, where it has its own: "time1", "time_math1".
std::string time_column_of(const ExportedChannel& channel) {
    return channel.computed() ? "time_" + column_of(channel)
                              : "time" + channel.name.substr(channel.name.size() - 1);
}

std::string columns_of(const ExportedSweep& sweep) {
    std::string columns = "[";
    const auto add = [&columns](const std::string& name) {
        columns += "('" + name + "', '<f8'), ";
    };
    if (sweep.same_times()) {
        add("time");
    }
    for (const ExportedChannel& channel : sweep.channels) {
        if (!sweep.same_times()) {
            add(time_column_of(channel));
        }
        add(column_of(channel));
    }
    return columns += "]";
}

} // namespace

std::string numpy_header(std::string_view type, std::initializer_list<std::size_t> shape) {
    // The data begin at a multiple of 64 bytes, after a line feed.
    constexpr std::size_t alignment = 64;
    std::string header = "{'descr': ";
    header.append(type).append(", 'fortran_order': False, 'shape': (");
    for (const std::size_t length : shape) {
        header.append(std::to_string(length)).append(",");
    }
    header += "), }";
    const std::size_t before = magic_and_version.size() + sizeof(std::uint16_t);
    while ((before + header.size() + 1) % alignment != 0) {
        header += ' ';
    }
    header += '\n';
    std::string bytes(magic_and_version);
    put_little_endian(bytes, static_cast<std::uint16_t>(header.size()));
    return bytes += header;
}

std::string numpy_file(const ExportedSweep& sweep) {
    std::size_t points = 0;
    for (const ExportedChannel& channel : sweep.channels) {
        points = std::max(points, channel.mv.size());
    }
    std::string bytes = numpy_header(columns_of(sweep), {points});
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t point = 0; point < points; ++point) {
        for (const ExportedChannel& channel : sweep.channels) {
            const bool there = point < channel.mv.size();
            if (!sweep.same_times() || &channel == &sweep.channels.front()) {
                put_float64(bytes, there ? channel.time(point) : none);
            }
            put_float64(bytes, there ? channel.volts(point) : none);
        }
    }
    return bytes;
}

} // namespace kv408
