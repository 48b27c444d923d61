#pragma once

#include <chrono>
#include <cstdint>

/// How long Autoset waits and how close it looks. Where a number is said to be chosen, as many of
/// the signals of bench/autoset_table are found with others around it.
namespace kv408::autoset_limit {

/// So long it looks for a trigger at most. What remains of its six seconds, less `to_put_back`, is
/// what fast signals take to be looked at and set up, 0.4 to 1.3 s. Chosen.
inline constexpr std::chrono::milliseconds search{4400};

/// So long it waits for a sweep that is on its way: that has 650 points of each channel, a trigger
/// each. Of triggers 0.5 ms apart it comes in time, of those 1 ms apart it does not.
inline constexpr std::chrono::milliseconds wait{1500};

/// What giving up takes of the longest time: the tick that is under way, and to put everything
/// back.
inline constexpr std::chrono::milliseconds to_put_back{500};

/// A sweep of fast triggers comes on the third tick of 100 ms at the latest: one or two for sending
/// the set-up, one for the block. One that takes a tick more has triggers a tenth of a millisecond
/// or more apart. With 250 ms or 600 ms fewer are found in bench/autoset_table.
inline constexpr std::chrono::milliseconds fast_sweep{350};

/// Long enough for triggers a few milliseconds apart, microseconds.
inline constexpr std::int32_t search_timeout = 10000;

/// What is lower is looked at again in the fine range, millivolts: that has a third of the noise,
/// which is 0.5 mV in the coarse one. Chosen.
inline constexpr double faint = 30.0;

/// What stays nearer to 0 V is looked at in the fine range, millivolts. That ends at 341 mV, and a
/// short sweep may have shown no more than half of how far the signal goes.
inline constexpr double small = 150.0;

/// How often a plan is pressed at most (each takes 0.3 s), and how often where what is measured
/// lies between two choices and the last one is confirmed.
inline constexpr int most_settlings = 8;
inline constexpr int enough_settlings = 2;

/// Two looks at a period agree to that share of it. The first one may have had few points a period.
inline constexpr double alike = 0.1;

/// So do two at the first edge of data, which lies anywhere within the time of an edge.
inline constexpr double alike_edges = 0.3;

} // namespace kv408::autoset_limit
