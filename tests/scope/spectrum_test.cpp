// The spectrum of what the simulated instrument sends.

#include <cmath>

#include "panel/time_base.h"
#include "program.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

// 400 mVpp are 141.42 mV rms, -16.99 dBV.
TEST(SpectrumOfTheProgram, ASineIsRightWithinATenthOfADecibelAtEveryTimeBase) {
    constexpr double periods = 15.37; // across the screen, between two lines
    Program program(false);
    simulator::Source& sine = program.simulation.bench().sources[0];
    sine.kind = simulator::SignalKind::sine;
    sine.jitter_ps = 0.0;
    ASSERT_TRUE(program.scope.start());
    program.scope.act([&] { program.channel(1).enable.set_checked(false); });
    SpectrumDialog& dialog = program.scope.tools().spectrum();
    program.scope.act([&] {
        dialog.controls().mnuspectrum.click();
        dialog.controls().cmbSpectrumWindow.set_index(static_cast<int>(SpectrumWindow::flat_top));
    });
    const auto rows = time_base_rows();
    for (std::size_t row = 0; row < rows.size(); row += series_stride) {
        program.choose(program.scope.panel().seltimediv, std::string(rows[row].text));
        sine.frequency_hz = periods * rows[row].samplerate / 640.0;
        program.ticks(rows[row].pointmode ? 4 : 12);
        ASSERT_FALSE(dialog.peaks().empty()) << rows[row].text;
        const SpectralPeak& peak = dialog.peaks().front();
        EXPECT_NEAR(dbv(peak.power), -16.99, 0.1) << rows[row].text;
        EXPECT_NEAR(peak.frequency, sine.frequency_hz, 0.1 * dialog.spectrum().step)
            << rows[row].text;
    }
}

} // namespace
} // namespace kv408
