#include "export/export_type.h"

#include <algorithm>
#include <cstdio>

#include "export/csv.h"
#include "export/numpy_file.h"
#include "export/sigrok_session.h"
#include "host/path_text.h"

namespace kv408 {
namespace {

constexpr std::array<ExportType, 3> types = {{
    {"Comma-separated values (*.csv)", ".csv", csv_text},
    {"sigrok session (*.sr)", ".sr", sigrok_session},
    {"NumPy array (*.npy)", ".npy", numpy_file},
}};

} // namespace

const std::array<ExportType, 3>& export_types() {
    return types;
}

std::optional<std::size_t> export_type_of(const std::filesystem::path& path) {
    std::string ending = text_of_path(path.extension());
    std::transform(ending.begin(), ending.end(), ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    for (std::size_t type = 0; type < types.size(); ++type) {
        if (types.at(type).ending == ending) {
            return type;
        }
    }
    return std::nullopt;
}

ExportRemark export_remark(const ExportType& type, const ExportedSweep& sweep) {
    if (sweep.channels.empty()) {
        return {.possible = false, .text = "There is no whole sweep of a channel that is on."};
    }
    return type.bytes == sigrok_session ? sigrok_remark(sweep) : ExportRemark{};
}

std::string export_name(const ExportType& type, const LocalTime& time) {
    constexpr int century = 100;
    std::array<char, 64> name = {};
    std::snprintf(name.data(), name.size(), "Kv408_%02d%02d%02d_%02d%02d%02d", time.year % century,
                  time.month, time.day, time.hour, time.minute, time.second);
    return name.data() + std::string(type.ending);
}

} // namespace kv408
