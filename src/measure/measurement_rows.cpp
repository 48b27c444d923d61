#include "measure/measurement_rows.h"

#include <algorithm>
#include <array>

#include "state/measurement_state.h"

namespace kv408 {
namespace {

constexpr MeasurementRow level(std::string_view name, std::string_view label, std::size_t field) {
    return {name, label, field, field, false};
}

constexpr MeasurementRow time(std::string_view name, std::string_view label, std::size_t field,
                              std::size_t mark_field) {
    return {name, label, field, mark_field, true};
}

constexpr std::array<MeasurementRow, 14> rows = {
    {level("VMax", "Vmax", meas::vmax), level("VMin", "Vmin", meas::vmin),
     level("Vpp", "Vpp", meas::vpp), level("VAmpl+", "Ampl+", meas::top),
     level("VAmpl-", "Ampl-", meas::base), level("VAmplPP", "Ampl", meas::amplitude),
     level("VRMS", "Vrms", meas::vrms), level("VMean", "Vmean", meas::vmean),
     // One period is what there is to see of a frequency.
     time("Frequency", "f", meas::frequency, meas::period),
     time("Period", "T", meas::period, meas::period), time("tRise", "tr", meas::rise, meas::rise),
     time("tFall", "tf", meas::fall, meas::fall),
     time("tPuls+", "tp+", meas::pulse_high, meas::pulse_high),
     time("tPuls-", "tp-", meas::pulse_low, meas::pulse_low)}};

} // namespace

const MeasurementRow* measurement_row(std::string_view name) {
    const auto* const found = std::find_if(
        rows.begin(), rows.end(), [name](const MeasurementRow& row) { return row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

} // namespace kv408
