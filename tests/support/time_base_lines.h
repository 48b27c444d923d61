#pragma once

#include <array>
#include <string_view>

namespace kv408 {

/// A time base as the tests know it, whatever the program's own table says.
struct TimeBaseLine {
    int index;                    ///< in the list
    std::string_view text;        ///< of the list's entry
    std::string_view short_label; ///< the same without "/div"
    double division;              ///< picoseconds
    double tbresolution;          ///< picoseconds per point
    double samplerate;            ///< display columns per second
    double hstretch;
    bool pointmode;
    int wheel_step;            ///< of the delay, picoseconds
    std::string_view read_out; ///< a division with three digits, as cursors show it
};

/// All time bases, the fastest first.
inline constexpr std::array<TimeBaseLine, 21> time_base_lines{{
    {20, "25ps/div", "25ps", 25, 1, 2560e9, 2.56, false, 4, "25.0ps"},
    {19, "50ps/div", "50ps", 50, 1, 1280e9, 1.28, false, 4, "50.0ps"},
    {18, "100ps/div", "100ps", 1e2, 2, 640e9, 1.28, false, 8, "100ps"},
    {17, "200ps/div", "200ps", 2e2, 4, 320e9, 1.28, false, 8, "200ps"},
    {16, "500ps/div", "500ps", 5e2, 8, 128e9, 1.024, false, 8, "500ps"},
    {15, "1ns/div", "1ns", 1e3, 16, 64e9, 1.024, false, 16, "1.00ns"},
    {14, "2ns/div", "2ns", 2e3, 32, 32e9, 1.024, false, 16, "2.00ns"},
    {13, "5ns/div", "5ns", 5e3, 79, 12.8e9, 1.0112, false, 16, "5.00ns"},
    {12, "10ns/div", "10ns", 1e4, 157, 6.4e9, 1.0048, false, 64, "10.0ns"},
    {11, "20ns/div", "20ns", 2e4, 313, 3.2e9, 1.0016, false, 64, "20.0ns"},
    {10, "50ns/div", "50ns", 5e4, 781, 1.28e9, 1.00032010243278, false, 64, "50.0ns"},
    {9, "100ns/div", "100ns", 1e5, 1562, 0.64e9, 1.0, false, 256, "100ns"},
    {8, "200ns/div", "200ns", 2e5, 3125, 0.32e9, 1.0, false, 256, "200ns"},
    {7, "500ns/div", "500ns", 5e5, 7812, 128e6, 1.0, true, 256, "500ns"},
    {6, "1us/div", "1us", 1e6, 15625, 64e6, 1.0, true, 256, "1.00us"},
    {5, "2us/div", "2us", 2e6, 31250, 32e6, 1.0, true, 256, "2.00us"},
    {4, "5us/div", "5us", 5e6, 78125, 12.8e6, 1.0, true, 256, "5.00us"},
    {3, "10us/div", "10us", 1e7, 156250, 6.4e6, 1.0, true, 256, "10.0us"},
    {2, "20us/div", "20us", 2e7, 312500, 3.2e6, 1.0, true, 256, "20.0us"},
    {1, "50us/div", "50us", 5e7, 780125, 1.28e6, 1.0, true, 256, "50.0us"},
    {0, "100us/div", "100us", 1e8, 1562500, 0.64e6, 1.0, true, 256, "100us"},
}};

} // namespace kv408
