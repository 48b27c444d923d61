#include "endurance/soak_user.h"

#include <array>
#include <string>

#include "calibration/calibration_form.h"
#include "calibration/guide.h"
#include "config/undo.h"
#include "display/settings_dialog.h"
#include "simulator/test_connections.h"

namespace kv408 {
namespace {

using simulator::TestConnection;

/// Unlike anything a user would type into a box, and like it.
std::string any_text(Chance& chance) {
    static const std::array<std::string, 8> texts = {"",      "0", "-1",  "12",
                                                     "70000", "x", "1e9", " 7 "};
    return chance.in(50) ? std::to_string(chance.number(-70000, 70000))
                         : texts.at(static_cast<std::size_t>(chance.number(0, 7)));
}

TestConnection any_connection(Chance& chance) {
    return static_cast<TestConnection>(
        chance.number(0, static_cast<int>(TestConnection::inputs_open)));
}

/// What `guide` says is to be connected.
TestConnection connection_for(const Guide& guide) {
    const bool second = guide.channels[1] && !guide.channels[0];
    if (guide.what == Calibrates::offset) {
        return TestConnection::inputs_open;
    }
    if (guide.what == Calibrates::gain && guide.expected_mvpp < 500.0) {
        return second ? TestConnection::sine_200mv_ch2 : TestConnection::sine_200mv_ch1;
    }
    return second ? TestConnection::sine_1v_ch2 : TestConnection::sine_1v_ch1;
}

} // namespace

simulator::Faults any_faults(Chance& chance, bool stormy) {
    simulator::Faults faults;
    switch (chance.number(stormy ? 1 : 3, 9)) {
    case 1:
        faults.unplugged = true;
        break;
    case 2:
        faults.operations[static_cast<simulator::Operation>(chance.number(0, 9))] = {
            .status = 1, .after = chance.number(0, 50), .times = chance.number(1, 5)};
        break;
    case 3:
        faults.operations[chance.in(50) ? simulator::Operation::read
                                        : simulator::Operation::check_rx_queue] = {
            .status = 1, .after = chance.number(0, 50), .times = chance.number(1, 5)};
        break;
    case 4:
        faults.acknowledge = simulator::AcknowledgeFault::lost;
        break;
    case 5:
        faults.acknowledge = simulator::AcknowledgeFault::wrong;
        break;
    case 6:
        faults.lose_every = chance.number(1, 1000);
        break;
    case 7:
        faults.flipped_bits = static_cast<Byte>(chance.number(1, 255));
        break;
    case 8:
        faults.block_bytes = static_cast<std::size_t>(chance.number(0, 1300));
        faults.extra_bytes = {static_cast<Byte>(chance.number(0, 255))};
        break;
    default:
        faults.no_trigger = true;
        break;
    }
    return faults;
}

SoakUser::SoakUser(Scope& scope, simulator::Simulation& simulation, Chance& chance,
                   const SoakWeather& weather, const std::function<void(int)>& ticks)
    : scope_(scope), panel_(scope.panel()), simulation_(simulation), chance_(chance),
      weather_(weather), ticks_(ticks), user_(scope, chance.generator(), [this] { ticks_(1); }) {}

void SoakUser::press(Button& button) {
    if (button.enabled()) {
        act([&] { button.click(); });
    }
}

const char* SoakUser::do_anything() {
    struct Doing {
        int often; // parts of the whole
        const char* (SoakUser::*what)();
    };
    static constexpr std::array doings = {
        Doing{40, &SoakUser::on_the_panel},           Doing{6, &SoakUser::on_the_rest_of_the_panel},
        Doing{10, &SoakUser::in_the_settings_dialog}, Doing{5, &SoakUser::with_files},
        Doing{6, &SoakUser::on_the_calibration_form}, Doing{2, &SoakUser::a_calibration},
        Doing{1, &SoakUser::a_linearity_run},         Doing{2, &SoakUser::to_the_cables},
        Doing{4, &SoakUser::to_the_instrument},       Doing{24, &SoakUser::nothing_for_a_while}};
    int drawn = chance_.number(1, 100);
    for (const Doing& doing : doings) {
        drawn -= doing.often;
        if (drawn <= 0) {
            return (this->*doing.what)();
        }
    }
    return "nothing";
}

const char* SoakUser::on_the_panel() {
    return user_.do_anything();
}

const char* SoakUser::on_the_rest_of_the_panel() {
    switch (chance_.number(0, 5)) {
    case 5:
        press(chance_.in(60) ? scope_.undo().controls().mnuundo : scope_.undo().controls().mnuredo);
        return "Undo or Redo";
    case 0: {
        const bool fast = chance_.in(50);
        act([&] { panel_.adcspeed.press(fast); });
        return "Speed opt.";
    }
    case 1: {
        const std::string text = any_text(chance_);
        act([&] { panel_.delaytrttdis.set_text(text); });
        act([&] { panel_.delaytrttdis.leave(); });
        return "Additional Delay";
    }
    case 2: {
        const bool correct = !panel_.cmdcaloofset.checked();
        act([&] { panel_.cmdcaloofset.set_checked(correct); });
        return "Software Calibrate Offset";
    }
    case 3:
        press(panel_.cmdstop);
        return "Stop";
    default:
        press(panel_.cmdstartsweep);
        return "Start";
    }
}

const char* SoakUser::in_the_settings_dialog() {
    SettingsDialog& dialog = scope_.settings_dialog();
    if (!dialog.is_open()) {
        press(panel_.mnusettings);
        return "settings dialog opened";
    }
    SettingsControls& controls = dialog.controls();
    switch (chance_.number(0, 9)) {
    case 0:
        press(controls.cmdok);
        return "settings dialog: OK";
    case 1:
        press(controls.cmdcancel);
        return "settings dialog: Cancel";
    case 2:
        press(controls.cmdsetdefault);
        return "settings dialog: default colours";
    case 3:
    case 4:
    case 5:
        edit_a_colour(controls);
        return "settings dialog: a colour";
    default:
        edit_a_setting(controls);
        return "settings dialog: a setting";
    }
}

void SoakUser::edit_a_setting(SettingsControls& dialog) {
    const bool checked = chance_.in(50);
    const int number = chance_.number(1, 9);
    switch (chance_.number(0, 5)) {
    case 0:
        act([&] { dialog.tabstrip1.select((number - 1) / 3 + 1); });
        break;
    case 1:
        act([&] { dialog.txtsnapshotpath.set_text("/pictures/" + std::to_string(number)); });
        break;
    case 2:
        press(dialog.browse);
        break;
    case 3:
        act([&] { dialog.chksnapshotdialog.press(checked); });
        break;
    case 4:
        act([&] { dialog.chksnapshotinvert.press(checked); });
        break;
    default:
        act([&] { dialog.persist.set_value(number); });
        break;
    }
}

void SoakUser::edit_a_colour(SettingsControls& dialog) {
    const auto item = static_cast<std::size_t>(chance_.number(0, 6));
    const auto component = static_cast<std::size_t>(chance_.number(0, 2));
    const int number = chance_.number(0, 255);
    const bool checked = chance_.in(50);
    switch (chance_.number(0, 3)) {
    case 0:
        act([&] { dialog.optcolor.at(item).choose(); });
        break;
    case 1:
        act([&] { dialog.slrgb.at(component).set_value(number); });
        break;
    case 2: {
        const std::string text = any_text(chance_);
        act([&] { dialog.txtrgb.at(component).set_text(text); });
        break;
    }
    default:
        act([&] { dialog.chkautoupd.press(checked); });
        break;
    }
}

const char* SoakUser::with_files() {
    switch (chance_.number(0, 2)) {
    case 0:
        press(panel_.saveconfig);
        return "Save Setup";
    case 1:
        press(panel_.loadconfig);
        return "Load Setup";
    default:
        press(panel_.snapshot);
        return "Snapshot";
    }
}

const char* SoakUser::on_the_calibration_form() {
    CalibrationForm& form = scope_.calibration_form();
    if (!form.window.is_open()) {
        press(panel_.mnucalibration);
        return "calibration form opened";
    }
    switch (chance_.number(0, 9)) {
    case 0:
        act([&] { form.window.close(); });
        return "calibration form closed";
    case 1: {
        const auto index = static_cast<std::size_t>(chance_.number(0, 10));
        const std::string text = any_text(chance_);
        act([&] { form.cald.at(index).set_text(text); });
        return "calibration form: a value";
    }
    default:
        press_on_form(form);
        return "calibration form: a button";
    }
}

void SoakUser::press_on_form(CalibrationForm& form) {
    const auto all = guides();
    const int last = static_cast<int>(all.size()) - 1;
    const Guide& guide = all[static_cast<std::size_t>(chance_.number(0, last))];
    switch (chance_.number(0, 6)) {
    case 0:
        press(form.cmdreadcald);
        break;
    case 1:
        press(form.cmdwritecal);
        break;
    case 2:
        press(form.cmdsetalltodefault);
        break;
    case 3:
        press(form.cmdrestorecal);
        break;
    case 4:
        press(form.cmdcalstop);
        break;
    case 5:
        press(form.*guide.set_up);
        break;
    default:
        press(form.*guide.compute);
        break;
    }
}

const char* SoakUser::a_calibration() {
    CalibrationForm& form = scope_.calibration_form();
    const auto all = guides();
    // All but the linearity, which comes last.
    const int last = static_cast<int>(all.size()) - 2;
    const Guide& guide = all[static_cast<std::size_t>(chance_.number(0, last))];
    press(panel_.mnucalibration);
    connect(simulation_.bench(), connection_for(guide));
    press(form.*guide.set_up);
    ticks_(10);
    press(form.*guide.compute);
    if (chance_.in(50)) {
        press(form.cmdwritecal);
    }
    return "a guided calibration";
}

const char* SoakUser::a_linearity_run() {
    CalibrationForm& form = scope_.calibration_form();
    press(panel_.mnucalibration);
    press(form.cmdsetforlinearitycal);
    press(form.cmdcalint);
    // What is broken off goes on from there with the next run, so some come to their end.
    ticks_(chance_.number(10, chance_.in(10) ? weather_.longest_wait : 200));
    return "a linearity calibration";
}

const char* SoakUser::to_the_cables() {
    connect(simulation_.bench(),
            chance_.in(50) ? TestConnection::delivery : any_connection(chance_));
    return "cables";
}

const char* SoakUser::to_the_instrument() {
    simulator::TestBench& bench = simulation_.bench();
    if (chance_.in(10)) {
        // Nobody switches it on again in less than two seconds.
        bench.faults = {.no_power = true};
        bench.planned_faults.reset();
        simulation_.notice_faults();
        ticks_(chance_.number(20, 60));
        return "power off";
    }
    if (bench.faults.operations.empty() && chance_.in(40)) {
        bench.planned_faults = {.after_operations = chance_.number(0, 300),
                                .lasting_operations = chance_.number(1, 300),
                                .faults = any_faults(chance_, weather_.stormy)};
        return "a fault to come";
    }
    bench.faults = any_faults(chance_, weather_.stormy);
    return "a fault";
}

const char* SoakUser::nothing_for_a_while() {
    ticks_(chance_.number(1, 60));
    return "nothing for a while";
}

} // namespace kv408
