#include "export/csv_import.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "export/time_per_div.h"
#include "state/rounding.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::string_view comment_mark = "#";
constexpr std::string_view program_mark = "Kv408 ";
constexpr std::string_view per_division = "/div";

/// What the columns of our files are called.
constexpr std::array<std::string_view, 8> column_names = {
    "CH1", "CH2", "MATH1", "MATH1MAX", "MATH1MIN", "MATH2", "MATH2MAX", "MATH2MIN"};
constexpr std::size_t first_computed = 2;

/// What they are in; a channel is always in the first.
constexpr std::array<std::string_view, 4> column_units = {"V", "V^2", "V/s", "Vs"};

std::string_view without_white_space(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const auto end = std::min(text.find(separator, begin), text.size());
        parts.push_back(without_white_space(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return parts;
}

/// Reads the lines one by one.
class Reader {
public:
    CsvImport read(std::string_view text) {
        for (const std::string_view line : split(text, '\n')) {
            ++line_;
            if (!line.empty() && !take(line)) {
                return {.sweep = {}, .problem = "line " + std::to_string(line_) + ": " + problem_};
            }
        }
        if (values_.empty() || values_.front().empty()) {
            return {.sweep = {}, .problem = "there are no points in it"};
        }
        return finish();
    }

private:
    /// A comment about one channel, and that channel's number.
    struct Comment {
        std::string_view name;
        double ExportedChannel::*number;
        double factor; ///< to the unit of the member
    };

    bool take(std::string_view line) {
        if (line.starts_with(comment_mark)) {
            return take_comment(without_white_space(line.substr(comment_mark.size())));
        }
        return columns_.empty() ? take_headings(line) : take_point(line);
    }

    bool take_comment(std::string_view comment) {
        const auto colon = comment.find(':');
        if (colon == std::string_view::npos) {
            if (comment.starts_with(program_mark)) {
                sweep_.version = comment.substr(program_mark.size());
            }
            return true;
        }
        const std::string_view name = without_white_space(comment.substr(0, colon));
        const std::string value(without_white_space(comment.substr(colon + 1)));
        if (name == "serial") {
            sweep_.serial = value;
        } else if (name == "date") {
            sweep_.date = value;
        } else if (name == "mode") {
            sweep_.mode = value;
        } else if (name == "trigger") {
            sweep_.trigger = value;
        } else if (name == "averaging") {
            sweep_.averaged = value == "on";
        } else if (name == "sweep") {
            return take_number(value, [this](double number) {
                constexpr double most = 9e15; // beyond, a double skips whole numbers
                sweep_.number = static_cast<std::uint64_t>(std::clamp(number, 0.0, most));
            });
        } else if (name == "time/div") {
            const auto time = time_per_div_in(value);
            problem_ = "no time per division";
            sweep_.time_per_div = time.value_or(0.0);
            return time.has_value();
        } else {
            return take_channel_comment(name, value);
        }
        return true;
    }

    bool take_channel_comment(std::string_view name, const std::string& value) {
        static constexpr std::array<Comment, 2> comments = {{
            {"position (div)", &ExportedChannel::position, 1.0},
            {"delay (s)", &ExportedChannel::delay, picoseconds_per_second},
        }};
        for (std::size_t channel = 0; channel < commented_.size(); ++channel) {
            const std::string prefix = channel_name(channel) + ' ';
            ExportedChannel& told = commented_.at(channel);
            if (channel >= first_computed && name == channel_name(channel)) {
                told.formula = value;
            } else if (name == prefix + "follows") {
                told.follows = value == "CH2" ? ch2 : ch1;
            } else if (name.starts_with(prefix) && name.ends_with(per_division)) {
                return take_number(value, [&](double number) { told.v_per_div = number; });
            }
            for (const Comment& comment : comments) {
                if (name.starts_with(prefix) && name.substr(prefix.size()) == comment.name) {
                    return take_number(value, [&](double number) {
                        told.*comment.number = number * comment.factor;
                    });
                }
            }
        }
        return true;
    }

    template <typename Take>
    bool take_number(std::string_view text, const Take& take) {
        const auto number = entire_number(text);
        problem_ = "not a number: " + std::string(text.substr(0, longest_shown));
        if (!number) {
            return false;
        }
        take(*number);
        return true;
    }

    /// What a column holds: the times from this one on, or a channel's voltages.
    struct Column {
        bool times;
        std::size_t channel; ///< of voltages
    };

    bool take_headings(std::string_view line) {
        problem_ = "no headings of ours: " + std::string(line.substr(0, longest_shown));
        for (const std::string_view heading : split(line, ',')) {
            if (heading.starts_with("Time")) {
                columns_.push_back({.times = true, .channel = 0});
                continue;
            }
            const std::size_t channel = headed(heading);
            const bool again =
                std::any_of(columns_.begin(), columns_.end(), [&](const Column& other) {
                    return !other.times && other.channel == channel;
                });
            if (channel == commented_.size() || columns_.empty() || again) {
                return false;
            }
            columns_.push_back({.times = false, .channel = channel});
        }
        values_.resize(columns_.size());
        return columns_.size() > 1 && columns_.front().times && !columns_.back().times;
    }

    /// The channel that a column with this heading is of, and notes its unit; as many as there are
    /// for none of ours.
    std::size_t headed(std::string_view heading) {
        for (std::size_t channel = 0; channel < commented_.size(); ++channel) {
            for (const std::string_view unit : column_units) {
                const bool may_be = channel >= first_computed || unit == column_units.front();
                if (may_be && heading == channel_name(channel) + " (" + std::string(unit) + ")") {
                    commented_.at(channel).unit = unit;
                    return channel;
                }
            }
        }
        return commented_.size();
    }

    bool take_point(std::string_view line) {
        const std::vector<std::string_view> cells = split(line, ',');
        problem_ = "not " + std::to_string(columns_.size()) + " values";
        if (cells.size() != columns_.size()) {
            return false;
        }
        for (std::size_t column = 0; column < cells.size(); ++column) {
            // Of channels with times of their own one may have fewer points.
            if (!cells[column].empty() && !take_number(cells[column], [&](double number) {
                    values_[column].push_back(number);
                })) {
                return false;
            }
        }
        return true;
    }

    CsvImport finish() {
        const std::vector<double>* times = nullptr;
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            if (columns_[column].times) {
                times = &values_[column];
                continue;
            }
            ExportedChannel channel = commented_.at(columns_[column].channel);
            channel.name = channel_name(columns_[column].channel);
            if (columns_[column].channel >= first_computed && channel.formula.empty()) {
                channel.formula = channel.name; // whoever wrote the file left its comments out
            }
            if (!take_times(*times, channel) || values_[column].size() != times->size()) {
                return {.sweep = {}, .problem = channel.name + ": the times are not evenly spaced"};
            }
            for (const double volts : values_[column]) {
                channel.mv.push_back(volts * millivolts_per_volt);
            }
            sweep_.channels.push_back(std::move(channel));
        }
        return {.sweep = std::move(sweep_), .problem = {}};
    }

    /// Takes first time and interval; the instrument's are whole picoseconds.
    static bool take_times(const std::vector<double>& seconds, ExportedChannel& channel) {
        constexpr double half_a_picosecond = 0.5;
        if (seconds.empty()) {
            return false;
        }
        channel.first_time = round_half_even(seconds.front() * picoseconds_per_second);
        const auto steps = static_cast<double>(seconds.size() - 1);
        channel.interval = steps > 0.0 ? round_half_even((seconds.back() - seconds.front()) *
                                                         picoseconds_per_second / steps)
                                       : 0.0;
        for (std::size_t point = 0; point < seconds.size(); ++point) {
            if (!(std::fabs(channel.time(point) - seconds[point]) * picoseconds_per_second <=
                  half_a_picosecond)) {
                return false;
            }
        }
        return true;
    }

    static std::string channel_name(std::size_t channel) {
        return std::string(column_names.at(channel));
    }

    static constexpr std::size_t longest_shown = 40; ///< bytes of the file in a message

    ExportedSweep sweep_;
    std::array<ExportedChannel, column_names.size()> commented_;
    std::vector<Column> columns_;
    std::vector<std::vector<double>> values_; ///< by column
    std::size_t line_ = 0;
    std::string problem_;
};

} // namespace

CsvImport csv_import(std::string_view text) {
    return Reader().read(text);
}

} // namespace kv408
