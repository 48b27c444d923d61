#pragma once

// The command tree over the panel. How to add a command: put its row into the list of the function
// below that it belongs to, with a header as `HeaderPattern` reads them, and give it its line in
// docs/manual/automation.md.

#include <vector>

#include "remote/command_table.h"
#include "remote/instrument.h"

namespace kv408 {

/// Running, stopping, single sweeps, and what is being acquired; *RST, *TRG, *IDN and *TST.
[[nodiscard]] std::vector<Command> acquisition_commands(Instrument& instrument);

/// Time base, channels and trigger.
[[nodiscard]] std::vector<Command> panel_commands(Instrument& instrument);

/// Display, measurements as they are shown, and cursors.
[[nodiscard]] std::vector<Command> display_commands(Instrument& instrument);
[[nodiscard]] std::vector<Command> cursor_commands(Instrument& instrument);

/// The results of the automatic measurements.
[[nodiscard]] std::vector<Command> measurement_commands(Instrument& instrument);

/// The points of finished sweeps.
[[nodiscard]] std::vector<Command> waveform_commands(Instrument& instrument);

/// What is collected of many sweeps: the density.
[[nodiscard]] std::vector<Command> density_commands(Instrument& instrument);

/// The histogram of a part of that.
[[nodiscard]] std::vector<Command> histogram_commands(Instrument& instrument);

/// The traces that are computed from the channels.
[[nodiscard]] std::vector<Command> maths_commands(Instrument& instrument);

/// The spectrum of a channel.
[[nodiscard]] std::vector<Command> spectrum_commands(Instrument& instrument);

/// The jitter of an edge.
[[nodiscard]] std::vector<Command> jitter_commands(Instrument& instrument);

/// The eye of random data.
[[nodiscard]] std::vector<Command> eye_commands(Instrument& instrument);

/// The test of a mask.
[[nodiscard]] std::vector<Command> mask_commands(Instrument& instrument);

/// The statistics of the measurements over many sweeps.
[[nodiscard]] std::vector<Command> statistics_commands(Instrument& instrument);

/// Autoset.
[[nodiscard]] std::vector<Command> autoset_commands(Instrument& instrument);

/// The set-up as a whole, the lock of the panel, the snapshot, the calibration record.
[[nodiscard]] std::vector<Command> system_commands(Instrument& instrument);

} // namespace kv408
