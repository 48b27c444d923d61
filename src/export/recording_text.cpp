#include "export/recording_text.h"

#include <algorithm>
#include <array>
#include <bit>

#include "export/csv.h"
#include "export/number_text.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> channel_names = {"CH1", "CH2"};

} // namespace

std::string recording_headings() {
    std::string text = "Sweep,Date";
    for (const std::string_view name : channel_names) {
        text.append(",Time ").append(name).append(" (s),").append(name).append(" (V)");
    }
    return text + '\n';
}

std::string fill_pages(std::string_view lines, std::uintmax_t at) {
    constexpr std::uintmax_t page = 4096;
    constexpr std::uintmax_t shortest_comment = 2;
    std::string text;
    text.reserve(lines.size() + lines.size() / 16);
    while (!lines.empty()) {
        const std::size_t length = std::min(lines.find('\n'), lines.size() - 1) + 1;
        const std::uintmax_t room = page - (at + text.size()) % page;
        // A comment must fit into the rest of the page after the line, unless nothing of
        // the page is left.
        const bool fits = length == room || length + shortest_comment <= room;
        if (!fits && room >= shortest_comment && length <= page - shortest_comment) {
            text += '#';
            text.append(room - shortest_comment, ' ');
            text += '\n';
        }
        text += lines.substr(0, length);
        lines.remove_prefix(length);
    }
    return text;
}

std::string_view NumberTexts::of(double value) {
    constexpr std::uint64_t spreading = 0x9E3779B97F4A7C15U;
    constexpr unsigned bits = 64;
    const auto key = std::bit_cast<std::uint64_t>(value);
    Kept& kept = kept_[(key * spreading) >> (bits - index_bits)];
    if (kept.text.empty() || kept.value != key) {
        kept = {.value = key, .text = number_text(value)};
    }
    return kept.text;
}

void RecordingText::follow(const ExportedChannel& channel, Times& times) {
    if (times.first_time != channel.first_time || times.interval != channel.interval) {
        times = {.first_time = channel.first_time, .interval = channel.interval, .texts = {}};
    }
    while (times.texts.size() < channel.mv.size()) {
        times.texts.push_back(',' + number_text(channel.time(times.texts.size())));
    }
}

std::string RecordingText::lines(const ExportedSweep& sweep) {
    std::string comments = set_up_comments(sweep);
    std::string text;
    if (comments != comments_) {
        text = comments;
        comments_ = std::move(comments);
    }
    std::array<const ExportedChannel*, channel_names.size()> channels = {};
    std::size_t points = 0;
    for (const ExportedChannel& channel : sweep.channels) {
        const auto* const place =
            std::find(channel_names.begin(), channel_names.end(), channel.name);
        if (place != channel_names.end()) {
            const auto index = static_cast<std::size_t>(place - channel_names.begin());
            channels.at(index) = &channel;
            follow(channel, times_.at(index));
        }
        points = std::max(points, channel.mv.size());
    }
    const std::string front = std::to_string(sweep.number) + ',' + sweep.date;
    constexpr std::size_t usual_numbers = 48;
    text.reserve(text.size() + points * (front.size() + usual_numbers));
    for (std::size_t point = 0; point < points; ++point) {
        text += front;
        for (std::size_t index = 0; index < channels.size(); ++index) {
            const ExportedChannel* const channel = channels.at(index);
            if (channel == nullptr || point >= channel->mv.size()) {
                text += ",,";
                continue;
            }
            text.append(times_.at(index).texts[point]);
            text.append(1, ',').append(voltages_.of(channel->volts(point)));
        }
        text += '\n';
    }
    return text;
}

} // namespace kv408
