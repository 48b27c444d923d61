#include "export/recording_text.h"

#include <algorithm>
#include <array>

#include "export/csv.h"
#include "export/number_text.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> names = {"CH1", "CH2"};

} // namespace

std::string recording_headings() {
    std::string text = "Sweep,Date";
    for (const std::string_view name : names) {
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
        // What is left behind a line has room for a comment, or there is nothing left.
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

std::string RecordingText::lines(const ExportedSweep& sweep) {
    std::string comments = set_up_comments(sweep);
    std::string text;
    if (comments != comments_) {
        text = comments;
        comments_ = std::move(comments);
    }
    std::size_t points = 0;
    for (const ExportedChannel& channel : sweep.channels) {
        points = std::max(points, channel.mv.size());
    }
    const std::string front = std::to_string(sweep.number) + ',' + sweep.date;
    for (std::size_t point = 0; point < points; ++point) {
        text += front;
        for (const std::string_view name : names) {
            const auto channel = std::find_if(
                sweep.channels.begin(), sweep.channels.end(),
                [name](const ExportedChannel& candidate) { return candidate.name == name; });
            const bool there = channel != sweep.channels.end() && point < channel->mv.size();
            text += ',';
            text += there ? number_text(channel->time(point)) : std::string();
            text += ',';
            text += there ? number_text(channel->volts(point)) : std::string();
        }
        text += '\n';
    }
    return text;
}

} // namespace kv408
