#pragma once

#include <functional>

#include "export/exported_sweep.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"

namespace kv408 {

/// What a dialog that reads or writes sweeps needs of the machine.
struct DialogHost {
    Clock& clock;
    MessageBoxes& boxes;
    Files& files;
    FileChoosers& choosers;
};

/// Tells where a sweep comes from: version of the program and serial number of the instrument.
using TellOrigin = std::function<ExportOrigin()>;

} // namespace kv408
