// Any bytes at all as a settings file. Built with a fuzzer it looks for bytes that break a promise;
// built with replay.cpp it tries those that were found worth keeping.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz/promise.h"
#include "support/settings_rig.h"

namespace {

using kv408::demand;

constexpr const char* bad_line = "Error while reading configuration file in line ";

/// At most one message about a bad line, and that line is in the file.
void check_messages(const kv408::SettingsRig& rig, const std::string& bytes) {
    const auto lines = 1 + std::count(bytes.begin(), bytes.end(), '\n');
    int bad_lines = 0;
    for (const std::string& text : rig.boxes.texts()) {
        const bool about_line = text.rfind(bad_line, 0) == 0;
        demand(about_line, "no other message while every frame is acknowledged");
        const long number = std::strtol(text.c_str() + std::string(bad_line).size(), nullptr, 10);
        demand(number >= 1 && number <= lines, "the line is one of the file");
        ++bad_lines;
    }
    demand(bad_lines <= 1, "a malformed file is told once");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    kv408::SettingsRig rig;
    rig.load(bytes);
    check_messages(rig, bytes);
    demand(is_settable(rig), "nothing stands where a user could not have put it");

    const std::string saved = rig.save();
    kv408::SettingsRig fresh;
    fresh.load(saved);
    demand(fresh.boxes.shown.empty(), "what was saved can be read");
    demand(is_settable(fresh), "what was saved is settable");
    demand(fresh.save() == saved, "what was saved is what is restored");
    return 0;
}
