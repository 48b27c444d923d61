#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "analysis/shipped_masks.h"
#include "host/system_files.h"
#include "remote/remote_program.h"
#include "simulator/test_connections.h"

namespace kv408 {

/// The program with the masks that come with it, swept over one of the bench's connections.
struct WithMasks : RemoteProgram {
    explicit WithMasks(simulator::TestConnection connection) {
        simulator::connect(simulation.bench(), connection);
        SystemFiles disk;
        for (const std::string_view file : shipped_masks) {
            std::string text;
            disk.read(std::filesystem::path(KV408_SOURCE_ROOT) / "packaging" / "masks" / file,
                      text);
            files.files["/program/masks/" + std::string(file)] = text;
        }
        start();
    }
};

} // namespace kv408
