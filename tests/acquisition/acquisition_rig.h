#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "acquisition/acquisition_parts.h"
#include "acquisition/status.h"
#include "scope/start_up.h"
#include "support/fake_files.h"
#include "support/fake_machine.h"

namespace kv408 {

using Texts = std::vector<std::string>;

/// The acquisition with everything that it drives, connected as in the program, over a fake
/// bridge; nothing is listed or opened yet.
struct AcquisitionRig : FakeMachine, PanelState, SweepState, PanelParts, AcquisitionParts {
    AcquisitionRig()
        : PanelParts(static_cast<PanelState&>(*this), outside()),
          AcquisitionParts(static_cast<PanelParts&>(*this), *this) {}

    /// Makes the instrument acknowledge every set-up frame. The sweep and the single point have
    /// replies of their own.
    void acknowledge_set_up() {
        bridge.on_frame = [this](const FakeBridge::Frame& frame) {
            if (frame.at(1) != 26 && frame.at(1) != 32) {
                bridge.receive({6});
            }
        };
    }

    /// Brings the program up on a good instrument: "0.1V", "20ns/div", TRIG1, positive edge.
    void start() {
        acknowledge_set_up();
        start_up.Form_Load();
        forget();
    }

    /// Forgets what was sent, shown and drawn so far.
    void forget() {
        bridge.calls.clear();
        boxes.shown.clear();
        messages.repainted.clear();
        screen.calls.clear();
    }

    /// Sets which channels are on without running their handlers.
    void enable(bool first, bool second) {
        const std::array<bool, 2> on = {first, second};
        for (std::size_t index = 0; index < 2; ++index) {
            CheckBox& box = panel.channel[index].enable;
            box.on_click({});
            box.set_checked(on[index]);
        }
    }

    void tick() { state_machine.Timer1_Timer(false); }

    [[nodiscard]] const std::string& status() const { return panel.textstatus.text(); }

    CalibrationRecord calibration = {};
    Cursors cursors{panel, cursor_state, adjust, screen};
    FakeFiles files;
    FakeFileChoosers choosers;
    Places places = fake_places();
    ColourTable colours;
    ColourUpdate colour_update{panel, colours, screen};
    DisplaySettings settings;
    SettingsFile settings_file{
        {.panel = panel,
         .channels = channels,
         .trigger = trigger_state,
         .cursors = cursor_state,
         .colours = colours,
         .display = settings,
         .adjust = adjust},
        {.files = files,
         .choosers = choosers,
         .boxes = ending_boxes,
         .places = places,
         .clock = clock,
         .messages = ending_messages,
         .program = program},
        {.apply = [this] { start_up.apply_settings(); }, .cancel_edits = [] {}}};
    StartUp start_up{static_cast<PanelParts&>(*this),
                     {.program = program,
                      .samples = samples,
                      .calibration = calibration,
                      .cursors = cursors,
                      .colour_update = colour_update,
                      .settings = settings_file}};
};

} // namespace kv408
