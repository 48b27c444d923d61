#include "export/sigrok_session.h"

#include <vector>

#include "export/little_endian.h"
#include "export/number_text.h"
#include "export/stored_zip.h"
#include "state/rounding.h"
#include "state/units.h"

namespace kv408 {
namespace {

std::string metadata(const ExportedSweep& sweep) {
    std::string text = "[global]\nsigrok version=0.5.2\n\n[device 1]\nsamplerate=" +
                       std::to_string(sigrok_sample_rate(sweep)) +
                       " Hz\ntotal analog=" + std::to_string(sweep.channels.size()) + '\n';
    for (std::size_t index = 0; index < sweep.channels.size(); ++index) {
        text += "analog" + std::to_string(index + 1) + '=' + sweep.channels[index].name + '\n';
    }
    return text;
}

} // namespace

std::uint64_t sigrok_sample_rate(const ExportedSweep& sweep) {
    if (sweep.channels.empty() || !(sweep.channels.front().interval > 0.0)) {
        return 0;
    }
    return static_cast<std::uint64_t>(
        round_half_even(picoseconds_per_second / sweep.channels.front().interval));
}

ExportRemark sigrok_remark(const ExportedSweep& sweep) {
    if (!sweep.same_times()) {
        return {.possible = false,
                .text = "A sigrok session has one time for all channels; the delays of CH1 and CH2 "
                        "differ."};
    }
    const auto rate = static_cast<double>(sigrok_sample_rate(sweep));
    if (sweep.channels.empty() ||
        rate * sweep.channels.front().interval == picoseconds_per_second) {
        return {};
    }
    return {.possible = true,
            .text = "The sample rate is rounded to " + std::to_string(sigrok_sample_rate(sweep)) +
                    " Hz; the points are " + number_text(sweep.channels.front().interval) +
                    " ps apart."};
}

std::string sigrok_session(const ExportedSweep& sweep) {
    const std::string described = metadata(sweep);
    std::vector<std::string> names;
    std::vector<std::string> samples;
    for (std::size_t index = 0; index < sweep.channels.size(); ++index) {
        names.push_back("analog-1-" + std::to_string(index + 1) + "-1");
        samples.emplace_back();
        for (std::size_t point = 0; point < sweep.channels[index].mv.size(); ++point) {
            put_float32(samples.back(), static_cast<float>(sweep.channels[index].volts(point)));
        }
    }
    std::vector<ZipEntry> entries = {{"version", "2"}, {"metadata", described}};
    for (std::size_t index = 0; index < names.size(); ++index) {
        entries.push_back({names[index], samples[index]});
    }
    return stored_zip(entries);
}

} // namespace kv408
