#include "bench_driver.h"

#include <algorithm>
#include <cmath>

namespace kv408::simulator {
namespace {

/// The errors of delivery, measured and corrected as the calibration procedures do it.
class Calibration : public BenchDriver {
protected:
    Calibration() {
        bench().sampler_noise_codes = 0.0;
        for (Source& source : bench().sources) {
            source.noise_mv = 0.0;
            source.jitter_ps = 0.0;
        }
        set_trigger(0, 1);
        set_resolution(313);
    }

    int record(int index) {
        send(33, {0xA4, index, 0, 0, 0});
        return words(read(2)).at(0);
    }

    void set_record(int index, int value) { send(34, {0xA4, index, value >> 8, value & 0xFF, 0}); }

    static double mean_code(const std::vector<int>& codes) {
        double sum = 0.0;
        for (const int code : codes) {
            sum += code;
        }
        return sum / static_cast<double>(codes.size());
    }

    /// Vpp in millivolts as the program sees it.
    double vpp(int channel, double codes_per_mv) {
        const auto codes = sweep(channel);
        const auto [least, most] = std::minmax_element(codes.begin(), codes.end());
        return (*most - *least) / codes_per_mv;
    }

    /// Frequency on CH1, hertz, from the rising crossings of a block of nominal resolution.
    double frequency(double resolution_ps) {
        const auto codes = sweep(1);
        const double middle = mean_code(codes);
        std::vector<double> crossings;
        for (std::size_t k = 1; k < codes.size(); ++k) {
            if (codes[k - 1] < middle && codes[k] >= middle) {
                crossings.push_back(static_cast<double>(k - 1) +
                                    (middle - codes[k - 1]) / (codes[k] - codes[k - 1]));
            }
        }
        const auto periods = static_cast<double>(crossings.size() - 1);
        return periods / ((crossings.back() - crossings.front()) * resolution_ps * 1e-12);
    }
};

struct Place {
    int channel;
    int range;           // 1 high, 2 low, as the gain command codes them
    int index;           // of the offset in the record; the gain is four further
    double codes_per_mv; // 6 high, 2 low
};

constexpr std::array<Place, 4> places = {Place{1, 2, 0, 2.0}, Place{1, 1, 1, 6.0},
                                         Place{2, 2, 2, 2.0}, Place{2, 1, 3, 6.0}};

TEST_F(Calibration, OffsetsOfDeliveryAreTwentyCodesAndAreRemoved) {
    bench().samplers = {SamplerRoute::disconnected, SamplerRoute::disconnected};
    for (const Place& place : places) {
        set_gain(place.range, place.range);
        const double mean_mv = (mean_code(sweep(place.channel)) - 2048.0) / place.codes_per_mv;
        EXPECT_NEAR(std::abs(mean_mv * place.codes_per_mv), 20.0, 0.5) << place.index;
        const int correction = static_cast<int>(std::nearbyint(mean_mv * place.codes_per_mv));
        set_record(place.index, record(place.index) - correction);
        EXPECT_EQ(sweep(place.channel), std::vector<int>(650, 2048)) << place.index;
    }
}

TEST_F(Calibration, GainsOfDeliveryAreThreePercentOffAndAreRemoved) {
    bench().samplers = {SamplerRoute::trigger_output, SamplerRoute::trigger_output};
    for (const Place& place : places) {
        const double expected = place.range == 1 ? 200.0 : 1000.0;
        bench().sources[0].amplitude_mvpp = expected;
        set_gain(place.range, place.range);
        const double measured = std::nearbyint(vpp(place.channel, place.codes_per_mv));
        EXPECT_NEAR(std::abs(measured / expected - 1.0), 0.03, 0.004) << place.index;
        const double ratio = expected / measured;
        const int index = place.index + 4;
        set_record(index, static_cast<int>(std::nearbyint(record(index) * ratio)));
        EXPECT_NEAR(vpp(place.channel, place.codes_per_mv), expected, 0.003 * expected)
            << place.index;
    }
}

TEST_F(Calibration, TheTimeScaleOfDeliveryIsTwoPercentOffAndIsRemoved) {
    bench().sources[0].amplitude_mvpp = 1000.0;
    bench().samplers[0] = SamplerRoute::trigger_output;
    set_gain(2, 2);
    set_resolution(1562);
    EXPECT_NEAR(frequency(1562.0), 10.2e6, 0.02e6);
    // One run leaves the square of the error, 0.04 %; a second one nothing that counts.
    for (const double left : {0.0005, 0.0001}) {
        const double error = (1e7 - std::floor(frequency(1562.0))) / 1e7;
        set_record(8, static_cast<int>(std::nearbyint(record(8) * error + record(8))));
        EXPECT_NEAR(frequency(1562.0), 10.0e6, left * 10.0e6);
    }
}

TEST_F(Calibration, TheTimeScaleAppliesToOffsetsAndSinglePointsAsWell) {
    simulation_.set_calibrated();
    set_gain(2, 2);
    set_record(8, 12500); // 1.25 times
    set_offset(1, 20000); // a quarter of 100 ns
    EXPECT_NEAR(sweep(1)[0], 2048 + 400, 1);
    send(26, {0x1A, 0x0B, 0, 1, 239}); // 6667 * 3 = 20001 ps
    EXPECT_NEAR(words(read(2)).at(0), 2048 + 400, 1);
}

TEST_F(Calibration, RangesAndChannelsAreCorrectedByThemselves) {
    simulation_.set_calibrated();
    bench().samplers = {SamplerRoute::disconnected, SamplerRoute::disconnected};
    for (const Place& place : places) {
        set_record(place.index, 2048 + 100 + place.index);
    }
    for (const Place& place : places) {
        set_gain(place.range, place.range);
        EXPECT_EQ(sweep(place.channel), std::vector<int>(650, 2048 + 100 + place.index));
    }
}

TEST_F(Calibration, AGainOfTheRecordIsAFactorOfTenThousand) {
    simulation_.set_calibrated();
    set_gain(2, 2);
    EXPECT_NEAR(vpp(1, 2.0), 400.0, 1.5);
    set_record(4, 11000);
    EXPECT_NEAR(vpp(1, 2.0), 440.0, 1.5);
    set_record(5, 5000); // the other range
    EXPECT_NEAR(vpp(1, 2.0), 440.0, 1.5);
    set_record(0, 2148); // an offset is no matter of gain
    EXPECT_NEAR(vpp(1, 2.0), 440.0, 1.5);
}

TEST_F(Calibration, TheTriggerLevelIsExact) {
    bench().errors.offset = {{{0.0, 0.0}, {0.0, 0.0}}};
    bench().errors.gain = {{{1.0, 1.0}, {1.0, 1.0}}};
    for (int index = 0; index < 8; ++index) {
        set_record(index, index < 4 ? 2048 : 10000);
    }
    // The time scale is still off, yet time 0 is the level.
    set_gain(2, 2);
    set_trigger(120, 1);
    EXPECT_NEAR(sweep(1)[0], 2048 + 240, 0.5 + 1e-6);
    // An error of the sampler shifts the code but not the moment.
    bench().errors.offset[0][low_range] = 50.0;
    EXPECT_NEAR(sweep(1)[0], 2048 + 240 + 50, 0.5 + 1e-6);
}

TEST_F(Calibration, CalibratedLeavesNoError) {
    simulation_.set_calibrated();
    bench().samplers = {SamplerRoute::disconnected, SamplerRoute::disconnected};
    const std::array<int, 11> neutral = {2048,  2048,  2048,  2048, 10000, 10000,
                                         10000, 10000, 10000, 100,  70};
    for (int index = 0; index < 11; ++index) {
        EXPECT_EQ(record(index), neutral.at(static_cast<std::size_t>(index))) << index;
    }
    for (const Place& place : places) {
        set_gain(place.range, place.range);
        EXPECT_EQ(sweep(place.channel), std::vector<int>(650, 2048));
    }
    simulation_.set_factory_state();
    EXPECT_NE(sweep(1), std::vector<int>(650, 2048));
}

} // namespace
} // namespace kv408::simulator
