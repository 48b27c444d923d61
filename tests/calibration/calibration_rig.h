#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"
#include "calibration/calibration.h"
#include "support/fake_files.h"

namespace kv408 {

/// The calibration with everything that it drives, over a fake instrument that acknowledges every
/// set-up frame and has a flash memory.
struct CalibrationRig : AcquisitionRig {
    CalibrationRig() {
        for (int index = 0; index < 11; ++index) {
            flash[0xA400 + index] = 100 + index;
        }
        flash[0xA43D] = 408;
        flash[0xA43E] = 16;
        start();
        bridge.on_frame = [this](const FakeBridge::Frame& frame) { answer(frame); };
        clock.set_local_time(
            {.year = 2026, .month = 11, .day = 21, .hour = 9, .minute = 7, .second = 5});
    }

    /// Lets the instrument sweep until every channel that is on has had its block.
    void sweep() {
        for (int count = 0; count < 5; ++count) {
            if (acquisition.scopestate.starts_with("scopech")) {
                bridge.receive(std::vector<int>(1300, 8));
            }
            tick();
        }
    }

    /// The frames that read (33) or write (34) flash words, without start byte, code and checksum.
    [[nodiscard]] std::vector<FakeBridge::Frame> flash_frames(int code) const {
        std::vector<FakeBridge::Frame> result;
        for (const FakeBridge::Frame& frame : bridge.frames()) {
            if (frame.at(1) == code) {
                result.emplace_back(frame.begin() + 2, frame.end() - 1);
            }
        }
        return result;
    }

    /// The texts of the boxes.
    [[nodiscard]] Texts box_texts() const {
        Texts texts;
        for (const TextBox& box : form.cald) {
            texts.push_back(box.text());
        }
        return texts;
    }

    /// The files that records were kept in, oldest first.
    [[nodiscard]] Texts kept() const {
        Texts paths;
        for (const std::string& path : files.written) {
            if (path.find("/calibration-") != std::string::npos) {
                paths.push_back(path);
            }
        }
        return paths;
    }

    /// Sets field `field` of channel index `channel` of the measurements.
    void measure(std::size_t channel, std::size_t field, double value) {
        measurements.measresults.at(channel).at(field) = value;
    }

    /// Sets what the measurements hold after a sweep of CH1 at 100 ns a division, 64 columns each,
    /// with `hertz` in it; 0: a sweep without a whole period, which leaves the frequency and the
    /// period of the one before.
    void see_frequency(double hertz) {
        constexpr double columns_a_second = 0.64e9;
        const double period = hertz > 0.0 ? columns_a_second / hertz : 0.0;
        measure(0, meas::pulse_high, 0.5 * period);
        measure(0, meas::pulse_low, 0.5 * period);
        if (hertz > 0.0) {
            measure(0, meas::period, period);
            measure(0, meas::frequency, 1.0 / period);
        }
    }

    [[nodiscard]] const std::string& calstatus() const { return form.calstatus.caption(); }
    [[nodiscard]] const std::string& note() const { return form.calnote.caption(); }

    FakeFiles files;
    FakeFileChoosers choosers;
    Places places = fake_places();
    MeasurementState measurements;
    std::map<int, int> flash;    ///< words by address
    std::map<int, int> stubborn; ///< words that stay as they are whatever is written
    int words_that_come = 1000;  ///< read words that are answered from now on
    Calibration calibrating{around,
                            {.in_use = calibration,
                             .measurements = measurements,
                             .samples = samples,
                             .state_machine = state_machine,
                             .files = files,
                             .choosers = choosers,
                             .places = places}};
    CalibrationForm& form = calibrating.form();

private:
    void answer(const FakeBridge::Frame& frame) {
        const auto address = static_cast<int>(frame.at(2) * 256 + frame.at(3));
        switch (frame.at(1)) {
        case 33:
            if (words_that_come-- > 0) {
                const int word = stubborn.contains(address) ? stubborn[address] : flash[address];
                bridge.receive({word / 256, word % 256});
            }
            break;
        case 34:
            flash[address] = static_cast<int>(frame.at(4) * 256 + frame.at(5));
            break;
        case 26:
        case 32:
            break;
        default:
            bridge.receive({6});
        }
    }
};

} // namespace kv408
