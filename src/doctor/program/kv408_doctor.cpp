// Tells in a terminal why the instrument cannot be reached.

#include <iostream>
#include <span>

#include "doctor/diagnosis.h"
#include "doctor/doctor.h"
#include "host/system_clock.h"
#include "link/make_bridge.h"
#ifdef _WIN32
#include <windows.h>
#endif

int main(int argc, char** argv) {
#ifdef _WIN32
    SetConsoleOutputCP(CP_UTF8);
#endif
    if (argc > 1) {
        const std::span<const char* const> arguments(argv + 1, static_cast<std::size_t>(argc - 1));
        return static_cast<int>(kv408::answer_arguments(arguments, std::cout, std::cerr));
    }
    kv408::SystemClock clock;
    const auto choice = kv408::make_bridge(clock, std::cerr);
    const auto diagnose = [&choice] { return kv408::diagnosis(choice); };
    return static_cast<int>(kv408::examine(*choice.bridge, diagnose, clock, std::cout));
}
