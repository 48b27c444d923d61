#pragma once

// The scenes of the manual's pictures, by chapter. Each starts the program, brings it to where the
// chapter tells of it, and adds what is seen to the gallery.

#include "steady_program.h"

namespace kv408::ui {

void show_first_picture(Gallery& gallery);
void show_window(Gallery& gallery);
void show_sizes(Gallery& gallery);
void show_menus(Gallery& gallery);
void show_steps(Gallery& gallery);
void show_display(Gallery& gallery);
void show_trigger(Gallery& gallery);
void show_delays(Gallery& gallery);
void show_cursors(Gallery& gallery);
void show_measurements(Gallery& gallery);
void show_each_measurement(Gallery& gallery);
void show_references(Gallery& gallery);
void show_statistics(Gallery& gallery);
void show_density(Gallery& gallery);
void show_jitter(Gallery& gallery);
void show_eye(Gallery& gallery);
void show_mask(Gallery& gallery);
void show_calibration(Gallery& gallery);
void show_linearity(Gallery& gallery);
void show_settings(Gallery& gallery);
void show_snapshots(Gallery& gallery);
void show_messages(Gallery& gallery);
void show_export(Gallery& gallery);
void show_recording(Gallery& gallery);
void show_remote(Gallery& gallery);
void show_autoset(Gallery& gallery);
void show_readouts(Gallery& gallery);
void show_maths(Gallery& gallery);
void show_spectrum(Gallery& gallery);

} // namespace kv408::ui
