#pragma once

#include "export/background_writer.h"
#include "export/exported_sweep.h"

namespace kv408 {

/// Where recorded sweeps go.
class RecordingTarget : public WriterTarget<ExportedSweep> {};

/// Writes sweeps on a thread of its own.
class Recorder : public BackgroundWriter<ExportedSweep> {
public:
    using BackgroundWriter::BackgroundWriter;
};

} // namespace kv408
