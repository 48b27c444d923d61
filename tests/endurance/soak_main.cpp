// soak [--hours <n>] [--minutes <n>] [--seed <n>] [--until-step <n>]: runs the whole program on the
// simulated instrument for hours of virtual time. Ends with 0 when nothing failed.

#include <cstdlib>
#include <iostream>
#include <span>
#include <string_view>

#include "endurance/soak.h"

namespace {

/// Sets in `options` what the argument `name` with `value` says; false for any other argument.
bool take(kv408::SoakOptions& options, std::string_view name, long value) {
    if (name == "--hours") {
        options.length = std::chrono::hours(value);
    } else if (name == "--minutes") {
        options.length = std::chrono::minutes(value);
    } else if (name == "--seed") {
        options.seed = static_cast<unsigned>(value);
    } else if (name == "--until-step") {
        options.until_step = value;
    } else {
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    kv408::SoakOptions options;
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    for (std::size_t index = 1; index < arguments.size(); index += 2) {
        if (index + 1 == arguments.size() ||
            !take(options, arguments[index], std::strtol(arguments[index + 1], nullptr, 10))) {
            std::cerr << "soak [--hours <n>] [--minutes <n>] [--seed <n>] [--until-step <n>]\n";
            return EXIT_FAILURE;
        }
    }
    if (options.length <= std::chrono::minutes(0)) {
        std::cerr << "A soak takes a minute at least.\n";
        return EXIT_FAILURE;
    }
    return kv408::Soak(options).run() ? EXIT_SUCCESS : EXIT_FAILURE;
}
