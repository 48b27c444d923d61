#include "link/commands.h"

#include <algorithm>
#include <cassert>

#include "state/rounding.h"
#include "state/samples.h"

namespace kv408 {
namespace {

std::int32_t legal_timeout(double microseconds) {
    return std::clamp(round_to_int32(microseconds), least_trigger_timeout,
                      greatest_trigger_timeout);
}

} // namespace

void splitlong(std::int32_t value, std::uint8_t& b3, std::uint8_t& b2, std::uint8_t& b1,
               std::uint8_t& b0) {
    const auto bits = static_cast<std::uint32_t>(value);
    b0 = static_cast<std::uint8_t>(bits);
    b1 = static_cast<std::uint8_t>(bits >> 8U);
    b2 = static_cast<std::uint8_t>(bits >> 16U);
    b3 = static_cast<std::uint8_t>(bits >> 24U);
}

void put_32_bits(CommandArguments& arguments, std::int32_t value) {
    std::uint8_t b3 = 0;
    std::uint8_t b2 = 0;
    std::uint8_t b1 = 0;
    std::uint8_t b0 = 0;
    splitlong(value, b3, b2, b1, b0);
    arguments[1] = b3;
    arguments[2] = b2;
    arguments[3] = b1;
    arguments[4] = b0;
}

void put_16_bits(CommandArguments& arguments, std::size_t first, std::int32_t value) {
    assert(first >= 1 && first + 1 < arguments.size());
    std::uint8_t b3 = 0;
    std::uint8_t b2 = 0;
    std::uint8_t b1 = 0;
    std::uint8_t b0 = 0;
    splitlong(value, b3, b2, b1, b0);
    arguments[first] = b1;
    arguments[first + 1] = b0;
}

void fill_trigger(CommandArguments& arguments, const TriggerSetup& trigger) {
    constexpr std::int16_t unused_hysteresis = 255;
    put_16_bits(arguments, 1, trigger.level);
    if (trigger.trig1) {
        arguments[3] = trigger.positive ? 1 : 2;
        arguments[4] = trigger.hysteresis;
        arguments[5] = unused_hysteresis;
    } else {
        arguments[3] = trigger.positive ? 21 : 22;
        arguments[4] = unused_hysteresis;
        arguments[5] = trigger.hysteresis;
    }
}

std::optional<std::int32_t> typed_trigger_timeout(std::string_view text) {
    const auto microseconds = quantity_in(text, microsecond_units);
    return microseconds ? std::optional(legal_timeout(*microseconds)) : std::nullopt;
}

std::int32_t trigger_timeout(std::string_view text) {
    return typed_trigger_timeout(text).value_or(legal_timeout(leading_number(text)));
}

void fill_trigger_timeout(CommandArguments& arguments, std::int32_t timeout) {
    put_16_bits(arguments, 1, timeout);
}

void fill_gain(CommandArguments& arguments, const std::array<std::int16_t, 2>& gain) {
    arguments = {0, gain[0], gain[1], 0, 0, 0};
}

void fill_resolution(CommandArguments& arguments, std::int32_t picoseconds) {
    put_32_bits(arguments, picoseconds == 0 ? 1 : picoseconds);
}

void fill_sweep(CommandArguments& arguments, const SweepRequest& request) {
    put_16_bits(arguments, 1, npoints);
    arguments[3] = request.average ? 1 : 0;
    arguments[4] = request.speed ? 1 : 0;
    arguments[5] = static_cast<std::int16_t>(number_of(request.channel));
}

void fill_flash_read(CommandArguments& arguments, std::uint16_t address) {
    put_16_bits(arguments, 1, address);
    arguments[3] = 0;
    arguments[4] = 0;
    arguments[5] = 0;
}

void fill_flash_write(CommandArguments& arguments, std::uint16_t address, std::uint16_t word) {
    put_16_bits(arguments, 1, address);
    put_16_bits(arguments, 3, word);
    arguments[5] = 0;
}

void fill_sample(CommandArguments& arguments, const PointDelay& delay, Channel channel) {
    constexpr std::int32_t second_channel = 32768;
    put_16_bits(arguments, 1, delay.coarse + (channel == ch2 ? second_channel : 0));
    put_16_bits(arguments, 3, delay.second);
    arguments[5] = delay.fine;
}

} // namespace kv408
