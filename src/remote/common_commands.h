#pragma once

#include <vector>

#include "remote/command_table.h"

namespace kv408 {

/// The commands that concern the client alone: its registers and errors, what holds it back
/// (IEEE 488.2, chapter 10; SCPI-99, volume 2, chapters 20 and 21), and the headers of `table`.
[[nodiscard]] std::vector<Command> common_commands(const CommandTable& table);

} // namespace kv408
