#include "display/svg_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "display/box_geometry.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr int line_height = 20;
constexpr int text_gap = 12;
constexpr int letter_width = 8;  ///< about: no program's font is known here
constexpr int text_column = 170; ///< from text to text of the lines below the plot
constexpr int letters = 13;

/// `value` with at most two decimals.
std::string number(double value) {
    std::array<char, 32> text = {};
    std::snprintf(text.data(), text.size(), "%.2f", value);
    std::string result = text.data();
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') {
        result.pop_back();
    }
    return result;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        switch (letter) {
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '&':
            result += "&amp;";
            break;
        default:
            result += letter;
        }
    }
    return result;
}

/// Writes the elements one after the other. Coordinates are units of the plot, whose middles lie on
/// halves; texts have the plot box's.
class Writer {
public:
    explicit Writer(bool inverted) : flipped_(inverted ? 0xFFFFFFU : 0U) {}

    void raw(const std::string& text) { text_ += text + "\n"; }

    [[nodiscard]] std::string colour(Pixel pixel) const {
        std::array<char, 16> text = {};
        std::snprintf(text.data(), text.size(), "#%06x", (pixel ^ flipped_) & 0xFFFFFFU);
        return text.data();
    }

    void path(const std::string& data, Pixel stroke, std::string_view more = "") {
        raw(R"(<path d=")" + data + R"(" fill="none" stroke=")" + colour(stroke) + '"' +
            std::string(more) + "/>");
    }

    void line(int x, int y, int to_x, int to_y, Pixel stroke, bool dotted) {
        path(place("M", x, y) + place("L", to_x, to_y), stroke,
             dotted ? " stroke-dasharray=\"3\"" : "");
    }

    void text(double x, double y, Pixel fill, std::string_view caption,
              std::string_view more = "") {
        raw("<text x=\"" + number(x) + "\" y=\"" + number(y) + "\" fill=\"" + colour(fill) + '"' +
            std::string(more) + ">" + escaped(caption) + "</text>");
    }

    static std::string place(const char* command, double x, double y) {
        std::string text = command;
        text.append(number(x)).append(1, ',').append(number(y));
        return text;
    }

    [[nodiscard]] const std::string& written() const { return text_; }

private:
    Pixel flipped_;
    std::string text_;
};

/// Lines from place to place, cut off where they leave the columns that they may be in: not every
/// program that shows the file cuts off what sticks out of the plot.
class Polyline {
public:
    /// A line that stays within the columns `left` and `right`, and on them.
    Polyline(double left, double right) : left_(left), right_(right) {}

    void add(double x, double y) {
        if (drawn_to_) {
            add_segment(*drawn_to_, {x, y});
        }
        drawn_to_ = {x, y};
    }

    /// The next place begins another line.
    void lift() {
        drawn_to_.reset();
        at_end_ = false;
    }

    [[nodiscard]] const std::string& data() const { return data_; }

private:
    struct Place {
        double x;
        double y;
    };

    void add_segment(Place from, Place to) {
        const Place begin = cut(from, to);
        const Place end = cut(to, from);
        const bool outside = std::max(from.x, to.x) < left_ || std::min(from.x, to.x) > right_;
        const bool touches = begin.x == end.x && from.x != to.x; // an edge, with its end alone
        const bool inside = !outside && !touches;
        if (inside) {
            if (!at_end_) {
                data_ += Writer::place("M", begin.x, begin.y);
            }
            data_ += Writer::place("L", end.x, end.y);
        }
        at_end_ = inside && end.x == to.x;
    }

    /// `place`, or where the line from there to `other` comes into the columns.
    [[nodiscard]] Place cut(Place place, Place other) const {
        const double x = std::clamp(place.x, left_, right_);
        if (x == place.x || other.x == place.x) {
            return place;
        }
        return {x, place.y + (other.y - place.y) * (x - place.x) / (other.x - place.x)};
    }

    double left_;
    double right_;
    std::string data_;
    std::optional<Place> drawn_to_;
    bool at_end_ = false; ///< what is drawn ends there
};

Pixel fore_colour(const Control& control) {
    return pixel_of(control.fore_colour().value_or(rgb(255, 255, 255)));
}

void write_graticule(Writer& writer, const Picture::Drawn& drawn) {
    writer.raw(R"(<rect x="0" y="0" width="640" height="512" fill="none" stroke=")" +
               writer.colour(drawn.grid) + "\"/>");
    if (!drawn.dotted) {
        return;
    }
    constexpr double fifth = plot::division / 5.0;
    std::string data;
    const auto stroke = [&data](double x, double y, const char* way) {
        data += Writer::place("M", x, y) + way;
    };
    for (int along = 0; along <= 50; ++along) {
        const double x = round_to_int32(along * fifth);
        for (int y = plot::division; y < plot::height - 1; y += plot::division) {
            stroke(x - 0.5, y, "h1");
        }
        stroke(x, -0.5, "v4");
        stroke(x, plot::centre_y - 3.5, "v7");
        stroke(x, plot::height - 4.5, "v4");
    }
    for (int along = 0; along <= 40; ++along) {
        const double y = round_to_int32(along * fifth);
        for (int x = plot::division; x < plot::width - 1; x += plot::division) {
            stroke(x - 0.5, y, "h1");
        }
        stroke(-0.5, y, "h4");
        stroke(plot::centre_x - 3.5, y, "h7");
        stroke(plot::width - 4.5, y, "h4");
    }
    writer.path(data, drawn.grid);
}

void write_reference(Writer& writer, const ReferenceLook& look) {
    for (const std::span<const double> values : lines_of(*look.curve)) {
        Polyline line(1.0, plot::width - 2.0); // within the border
        for (const ReferencePoint& point : on_screen(*look.curve, values, look.screen)) {
            line.add(point.column, point.row);
        }
        writer.path(line.data(), look.colour, " stroke-linejoin=\"round\"");
    }
}

/// Writes each band of a density as lines along its rows.
void write_density(Writer& writer, const DensityView& view) {
    std::array<std::string, density_bands> bands;
    for (int y = 0; y < plot::height; ++y) {
        const auto hits = view.layer->row(y);
        const auto band_at = [&](int x) {
            const std::uint32_t here = hits[static_cast<std::size_t>(x)];
            return here == 0 ? -1 : density_band(here, view.layer->most());
        };
        for (int x = 0; x < plot::width;) {
            const int first = x;
            const int band = band_at(first);
            while (x < plot::width && band_at(x) == band) {
                ++x;
            }
            if (band >= 0) {
                std::string& data = bands.at(static_cast<std::size_t>(band));
                data += Writer::place("M", first - 0.5, y);
                data += 'h';
                data += std::to_string(x - first);
            }
        }
    }
    for (std::size_t band = 0; band < bands.size(); ++band) {
        if (!bands.at(band).empty()) {
            writer.path(bands.at(band), view.colours.at(band), " shape-rendering=\"crispEdges\"");
        }
    }
}

void write_generation(Writer& writer, const TraceView& view, int layer) {
    std::string dots;
    Polyline line(0.0, plot::width - 1.0);
    const Generation& generation = layer_of(view, layer);
    for (int index = plot::first_point; index <= plot::last_point; ++index) {
        const TracePoint point = generation.point(index);
        const bool blank = point.x >= view.gap.left && point.x < view.gap.right;
        if (blank) {
            line.lift();
        } else if (!view.look.dots) {
            line.add(point.x, point.y);
        } else if (point.x >= 0 && point.x < plot::width) {
            dots += Writer::place("M", point.x - 0.5, point.y) + "h1";
        }
    }
    writer.path(view.look.dots ? dots : line.data(), layer_colour(view.look, layer),
                " stroke-linejoin=\"round\"");
}

void write_histogram(Writer& writer, const HistogramMarks& marks) {
    if (!marks.shown) {
        return;
    }
    const auto path_around = [](int left, int top, int right, int bottom, double margin) {
        std::string data = Writer::place("M", left - margin, top - margin);
        data.append(1, 'H').append(number(right - 1 + margin)).append(1, 'V');
        data.append(number(bottom - 1 + margin)).append(1, 'H').append(number(left - margin));
        return data.append(1, 'z');
    };
    const PlotWindow& window = marks.shown->window;
    writer.path(path_around(window.left, window.top, window.right, window.bottom, 0.0),
                marks.colour, " stroke-dasharray=\"3\"");
    std::string bars;
    for (const Rectangle& bar : bars_of(*marks.shown)) {
        bars += path_around(bar.left, bar.top, bar.right, bar.bottom, 0.5);
    }
    writer.raw(R"(<path d=")" + bars + R"(" fill=")" + writer.colour(marks.colour) + "\"/>");
}

void write_overlays(Writer& writer, const Overlays& overlays) {
    for (const PlotMark& mark : overlays.marks.lines) {
        writer.path(Writer::place("M", mark.from_x, mark.from_y) +
                        Writer::place("L", mark.to_x, mark.to_y),
                    overlays.marks.colour, mark.dotted ? " stroke-dasharray=\"3\"" : "");
    }
    write_histogram(writer, overlays.histogram);
    constexpr int right = plot::width - 1;
    constexpr int bottom = plot::height - 1;
    const CursorLines& cursors = overlays.cursors;
    for (std::size_t cursor = 0; cursor < cursors.place.size(); ++cursor) {
        const int place = cursors.place.at(cursor);
        const bool dotted = !cursors.solid.at(cursor);
        if (cursors.kind == CursorLines::Kind::voltage) {
            writer.line(0, place, right, place, cursors.colour, dotted);
        } else if (cursors.kind == CursorLines::Kind::time) {
            writer.line(place, 0, place, bottom, cursors.colour, dotted);
        }
    }
    for (const Annotations::ChannelMarks& channel : overlays.annotations.channel) {
        for (const auto& [from, to] : channel.mark) {
            if (channel.kind == MarkKind::lines) {
                writer.line(from.x, from.y, to.x, to.y, overlays.annotations.colour, true);
            } else if (channel.kind == MarkKind::dots) {
                writer.raw("<circle cx=\"" + number((from.x + to.x - 1) / 2.0) + "\" cy=\"" +
                           number((from.y + to.y - 1) / 2.0) + "\" r=\"" +
                           number((to.x - from.x) / 2.0) + "\" fill=\"" +
                           writer.colour(overlays.annotations.colour) + "\"/>");
            }
        }
    }
    if (overlays.trigger.shown) {
        writer.line(0, overlays.trigger.row, right, overlays.trigger.row, overlays.trigger.colour,
                    true);
    }
}

constexpr int letters_base = 11; ///< below the top of a marker, of a number or of a read-out

void write_cursor_numbers(Writer& writer, const CursorLines& cursors, const FrontPanel& panel) {
    if (cursors.kind == CursorLines::Kind::none) {
        return;
    }
    for (std::size_t cursor = 0; cursor < cursors.place.size(); ++cursor) {
        const int place = cursors.place.at(cursor);
        const int index = static_cast<int>(cursor);
        const box::Corner corner = cursors.kind == CursorLines::Kind::voltage
                                       ? box::row_number(place, index)
                                       : box::column_number(place, index);
        writer.text(corner.left, corner.top + letters_base, fore_colour(panel.centerfr),
                    std::to_string(cursor + 1));
    }
}

/// Letters of `text`, UTF-8.
int letters_in(std::string_view text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), [](char byte) {
        constexpr unsigned kind_of_byte = 0xC0U;
        constexpr unsigned inside_letter = 0x80U;
        return (static_cast<unsigned char>(byte) & kind_of_byte) != inside_letter;
    }));
}

/// Names the references and the computed traces in the upper right corner of the plot.
void write_reference_names(Writer& writer, const std::vector<ShownReference>& references) {
    double y = box::top + line_height;
    for (const ShownReference& reference : references) {
        writer.text(box::left + plot::width - text_gap, y, pixel_of(reference.colour),
                    reference.caption, " text-anchor=\"end\"");
        y += line_height;
    }
}

void write_labels(Writer& writer, const FrontPanel& panel) {
    const MarkerLabel& inner = panel.channel[0].text;
    for (const MarkerLabel* const marker : {&panel.channel[1].text, &inner, &panel.trigertext}) {
        if (!marker->visible() || !marker->marked()) {
            continue;
        }
        const int row = *marker->marked();
        const box::Corner corner =
            marker == &panel.trigertext ? box::right_marker(row) : box::left_marker(row);
        // Where both channels' markers share a place, that of CH1 is nearer to the plot.
        const bool covered = marker == &panel.channel[1].text && inner.visible() &&
                             std::abs(row - inner.marked().value_or(row)) < letters;
        writer.text(corner.left + 3.0 - (covered ? box::marker_width : 0),
                    corner.top + letters_base, fore_colour(*marker), marker->caption());
    }
    if (panel.ltp2.visible()) {
        writer.path(Writer::place("M", box::upper_marker(panel.ltp2.marked().value_or(0)).left - 4,
                                  box::top - 8) +
                        "h9l-4.5,6z",
                    fore_colour(panel.ltp2));
    }
    double y = box::top + line_height;
    for (const Label* const read_out : {&panel.centerfr, &panel.lblc1, &panel.lblc2}) {
        if (read_out->visible()) {
            writer.text(box::left + text_gap, y, fore_colour(*read_out), read_out->caption());
            y += line_height;
        }
    }
}

} // namespace

std::string svg_file(const Picture& picture, const FrontPanel& panel,
                     const std::vector<TextLine>& lines, bool inverted) {
    const Picture::Drawn drawn = picture.drawn();
    const int height = box::height + line_height * static_cast<int>(lines.size());
    const std::string size =
        " width=\"" + std::to_string(box::width) + "\" height=\"" + std::to_string(height) + "\"";
    Writer writer(inverted);
    writer.raw(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    writer.raw(R"(<svg xmlns="http://www.w3.org/2000/svg")" + size + " viewBox=\"0 0 " +
               std::to_string(box::width) + " " + std::to_string(height) +
               R"(" font-family="sans-serif" font-size=")" + std::to_string(letters) + "\">");
    writer.raw("<rect" + size + " fill=\"" +
               writer.colour(pixel_of(panel.picture1.back_colour().value_or(Colour{}))) + "\"/>");
    writer.raw(R"(<svg x=")" + std::to_string(box::left) + "\" y=\"" + std::to_string(box::top) +
               R"(" width="641" height="513" viewBox="-0.5 -0.5 641 513">)");
    writer.raw(R"(<rect x="-0.5" y="-0.5" width="641" height="513" fill=")" +
               writer.colour(drawn.background) + "\"/>");
    write_graticule(writer, drawn);
    for (const ReferenceLook& reference : drawn.references) {
        write_reference(writer, reference);
    }
    for (const DensityView& density : drawn.densities) {
        write_density(writer, density);
    }
    for (const TraceView& view : drawn.traces) {
        for (int layer = layers_of(view.look) - 1; layer >= 0; --layer) {
            if (layer_colour(view.look, layer) != drawn.background) {
                write_generation(writer, view, layer);
            }
        }
    }
    for (const ReferenceLook& trace : drawn.maths) {
        write_reference(writer, trace);
    }
    write_overlays(writer, drawn.overlays);
    writer.raw("</svg>");
    write_labels(writer, panel);
    write_cursor_numbers(writer, drawn.overlays.cursors, panel);
    write_reference_names(writer, picture.captioned());
    double y = box::height + line_height * 0.7;
    for (const TextLine& line : lines) {
        double x = box::left;
        for (const PictureText& piece : line) {
            writer.text(x, y, pixel_of(piece.colour), piece.text);
            x += std::max(text_column, letters_in(piece.text) * letter_width + text_gap);
        }
        y += line_height;
    }
    writer.raw("</svg>");
    return writer.written();
}

} // namespace kv408
