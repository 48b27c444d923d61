#include "analysis/mask_file.h"

#include <array>
#include <cmath>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "state/rounding.h"
#include "state/text.h"
#include "state/units.h"

namespace kv408 {
namespace {

/// A line that is not empty, without remark.
struct FileLine {
    int number = 0;
    std::size_t indent = 0;
    std::string_view text; ///< without blanks around it and without a remark
};

/// Ends the reading; it never leaves mask_in().
struct Wrong {
    MaskFileError error;
};

[[noreturn]] void wrong(int line, std::string what) {
    throw Wrong{{line, std::move(what)}};
}

/// `text` up to a remark, which begins at a # at the start or behind a blank, outside quotes.
std::string_view without_remark(std::string_view text) {
    char quote = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char letter = text[place];
        if (quote != 0) {
            quote = letter == quote ? '\0' : quote;
        } else if ((letter == '"' || letter == '\'') && (place == 0 || text[place - 1] == ' ')) {
            quote = letter;
        } else if (letter == '#' && (place == 0 || text[place - 1] == ' ')) {
            return text.substr(0, place);
        }
    }
    return text;
}

std::vector<FileLine> lines_of(std::string_view text) {
    std::vector<FileLine> lines;
    int number = 0;
    while (!text.empty()) {
        ++number;
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        for (const char letter : line) {
            if (static_cast<unsigned char>(letter) < ' ') {
                wrong(number,
                      letter == '\t' ? "A tab: indent with blanks" : "A character that is no text");
            }
        }
        line = without_remark(line);
        const std::size_t indent = line.find_first_not_of(' ');
        if (indent != std::string_view::npos) {
            lines.push_back({number, indent, without_blanks(line)});
        }
    }
    return lines;
}

/// The key of `line`, and what stands behind its colon.
std::pair<std::string_view, std::string_view> key_and_value(const FileLine& line,
                                                            std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 ||
        (colon + 1 < text.size() && text[colon + 1] != ' ')) {
        wrong(line.number, "A key with a colon and a blank behind it is expected");
    }
    return {text.substr(0, colon), without_blanks(text.substr(colon + 1))};
}

/// A text as YAML writes it: plain, or in quotes without anything special between them.
std::string words(const FileLine& line, std::string_view value) {
    if (value.empty()) {
        wrong(line.number, "A text is missing behind the colon");
    }
    const char quote = value.front();
    if (quote == '"' || quote == '\'') {
        const std::string_view inner = value.size() > 1 ? value.substr(1, value.size() - 2) : "";
        if (value.size() < 2 || value.back() != quote ||
            inner.find(quote) != std::string_view::npos ||
            inner.find('\\') != std::string_view::npos) {
            wrong(line.number, "The quotes do not fit");
        }
        return std::string(inner);
    }
    if (std::string_view("[]{}&*!|>%@`,?-").find(quote) != std::string_view::npos ||
        value.find(": ") != std::string_view::npos) {
        wrong(line.number, "Such a text has to stand in quotes");
    }
    return std::string(value);
}

double number(const FileLine& line, std::string_view value) {
    const auto found = entire_number(value);
    if (!found || without_blanks(value).empty() || !std::isfinite(*found) ||
        std::fabs(*found) > largest_mask_value) {
        wrong(line.number, "A number from -1e9 to 1e9 is expected");
    }
    return *found;
}

/// A unit that a mask's text can name, and its size in the program's unit.
struct AxisUnit {
    std::string_view name;
    MaskUnits units;
    double worth;
};

constexpr std::array<AxisUnit, 4> x_units = {{{"ui", MaskUnits::interval_amplitude, 1.0},
                                              {"s", MaskUnits::time_level, picoseconds_per_second},
                                              {"ns", MaskUnits::time_level, 1e3},
                                              {"ps", MaskUnits::time_level, 1.0}}};
constexpr std::array<AxisUnit, 3> y_units = {{{"amplitude", MaskUnits::interval_amplitude, 1.0},
                                              {"V", MaskUnits::time_level, millivolts_per_volt},
                                              {"mV", MaskUnits::time_level, 1.0}}};

template <std::size_t Size>
const AxisUnit& unit_of(const std::array<AxisUnit, Size>& units, const FileLine& line,
                        std::string_view value, const char* expected) {
    for (const AxisUnit& unit : units) {
        if (unit.name == value) {
            return unit;
        }
    }
    wrong(line.number, expected);
}

/// Reads the lines one after the other.
class MaskReader {
public:
    explicit MaskReader(std::vector<FileLine> lines) : lines_(std::move(lines)) {}

    Mask read() {
        while (next_ < lines_.size()) {
            read_key();
        }
        const int last = lines_.empty() ? 1 : lines_.back().number;
        for (const char* const key : {"name", "x", "y", "polygons"}) {
            if (!seen_.contains(key)) {
                wrong(last, std::string("There is no \"") + key + "\"");
            }
        }
        return std::move(mask_);
    }

private:
    void read_key() {
        const FileLine& line = lines_[next_++];
        if (line.indent != 0) {
            wrong(line.number, "The indentation does not fit");
        }
        const auto [key, value] = key_and_value(line, line.text);
        if (!seen_.insert(key).second) {
            wrong(line.number, "This key stands there twice");
        }
        if (key == "polygons") {
            return read_polygons(line, value);
        }
        if (seen_.contains("polygons")) {
            wrong(line.number, "The polygons come last");
        }
        if (key == "name") {
            mask_.name = words(line, value);
        } else if (key == "source") {
            mask_.source = words(line, value);
        } else if (key == "x") {
            x_ = &unit_of(x_units, line, value, "x is ui, s, ns or ps");
        } else if (key == "y") {
            y_ = &unit_of(y_units, line, value, "y is amplitude, V or mV");
        } else if (key == "hit ratio") {
            mask_.hit_ratio = number(line, value);
            if (mask_.hit_ratio < 0.0 || mask_.hit_ratio > 1.0) {
                wrong(line.number, "The hit ratio is from 0 to 1");
            }
        } else {
            wrong(line.number, "There is no such key");
        }
    }

    void read_polygons(const FileLine& key, std::string_view value) {
        if (x_ == nullptr || y_ == nullptr) {
            wrong(key.number, "x and y stand before the polygons");
        }
        if (x_->units != y_->units) {
            wrong(key.number, "ui goes with amplitude, times go with V or mV");
        }
        mask_.units = x_->units;
        if (!value.empty() || next_ == lines_.size() || lines_[next_].indent == 0) {
            wrong(key.number, "The polygons follow in lines of their own");
        }
        const std::size_t indent = lines_[next_].indent;
        while (next_ < lines_.size() && lines_[next_].indent != 0) {
            if (mask_.polygons.size() == most_mask_polygons) {
                wrong(lines_[next_].number, "There are more than 64 polygons");
            }
            read_polygon(indent);
        }
    }

    void read_polygon(std::size_t indent) {
        const FileLine& first = lines_[next_];
        if (first.indent != indent || first.text.substr(0, 2) != "- ") {
            wrong(first.number, "A polygon begins with \"- \", each indented alike");
        }
        MaskPolygon polygon;
        const std::size_t inner = indent + first.text.find_first_not_of(' ', 1);
        std::string_view text = without_blanks(first.text.substr(1));
        while (true) {
            const FileLine& line = lines_[next_++];
            const auto [key, value] = key_and_value(line, text);
            if (key == "points" && value.empty()) {
                read_points(polygon, line, inner);
                break;
            }
            if (key != "name" || !polygon.name.empty()) {
                wrong(line.number, "A polygon has a name and points");
            }
            polygon.name = words(line, value);
            if (next_ == lines_.size() || lines_[next_].indent != inner) {
                wrong(line.number, "The polygon's points are missing");
            }
            text = lines_[next_].text;
        }
        mask_.polygons.push_back(std::move(polygon));
    }

    void read_points(MaskPolygon& polygon, const FileLine& key, std::size_t above) {
        std::optional<std::size_t> indent;
        while (next_ < lines_.size() && lines_[next_].indent >= above &&
               lines_[next_].text.substr(0, 2) == "- " &&
               without_blanks(lines_[next_].text.substr(1)).front() == '[') {
            const FileLine& line = lines_[next_++];
            if (line.indent != indent.value_or(line.indent)) {
                wrong(line.number, "The indentation does not fit");
            }
            indent = line.indent;
            if (polygon.points.size() == most_mask_points) {
                wrong(line.number, "The polygon has more than 256 points");
            }
            polygon.points.push_back(point_in(line));
        }
        if (polygon.points.size() < 3) {
            wrong(key.number, "A polygon has at least three points, each as - [x, y]");
        }
    }

    [[nodiscard]] MaskPoint point_in(const FileLine& line) const {
        const std::string_view pair = without_blanks(line.text.substr(1));
        const std::size_t comma = pair.find(',');
        if (pair.back() != ']' || comma == std::string_view::npos) {
            wrong(line.number, "A point is written [x, y]");
        }
        return {number(line, pair.substr(1, comma - 1)) * x_->worth,
                number(line, pair.substr(comma + 1, pair.size() - comma - 2)) * y_->worth};
    }

    std::vector<FileLine> lines_;
    std::size_t next_ = 0;
    std::set<std::string_view> seen_;
    const AxisUnit* x_ = nullptr;
    const AxisUnit* y_ = nullptr;
    Mask mask_;
};

} // namespace

std::variant<Mask, MaskFileError> mask_in(std::string_view text) {
    if (text.size() > most_mask_bytes) {
        return MaskFileError{1, "The file has more than 64 KiB"};
    }
    try {
        return MaskReader(lines_of(text)).read();
    } catch (const Wrong& found) {
        return found.error;
    }
}

} // namespace kv408
