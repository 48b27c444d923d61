#pragma once

#include <functional>

#include "endurance/soak_host.h"
#include "scope/random_user.h"
#include "simulator/simulation.h"

namespace kv408 {

struct CalibrationForm;
struct SettingsControls;

/// What holds for a while.
struct SoakWeather {
    bool stormy = true;     ///< what ends the program, or needs it started again, may happen
    int longest_wait = 600; ///< ticks that pass at most while nothing is done
};

/// Someone who does anything at all with the program, the instrument and its cables.
class SoakUser {
public:
    /// In front of `scope`, which runs on `simulation`. Everything outlives the user.
    SoakUser(Scope& scope, simulator::Simulation& simulation, Chance& chance,
             const SoakWeather& weather, const std::function<void(int)>& ticks);

    /// Does one thing, and tells which.
    const char* do_anything();

private:
    void act(const std::function<void()>& action) { scope_.act(action); }
    void press(Button& button);

    const char* on_the_panel();
    const char* on_the_rest_of_the_panel();
    const char* in_the_settings_dialog();
    const char* with_files();
    const char* on_the_calibration_form();
    const char* a_calibration();
    const char* a_linearity_run();
    const char* to_the_cables();
    const char* to_the_instrument();
    const char* nothing_for_a_while();

    void edit_a_setting(SettingsControls& dialog);
    void edit_a_colour(SettingsControls& dialog);
    void press_on_form(CalibrationForm& form);

    Scope& scope_;
    FrontPanel& panel_;
    simulator::Simulation& simulation_;
    Chance& chance_;
    const SoakWeather& weather_;
    const std::function<void(int)>& ticks_;
    RandomUser user_;
};

/// A fault of some kind but the loss of power; in a storm also one that ends the program.
[[nodiscard]] simulator::Faults any_faults(Chance& chance, bool stormy);

} // namespace kv408
