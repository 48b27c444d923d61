#include "display/picture.h"

#include <utility>

#include "display/copies.h"
#include "display/cursors.h"
#include "display/graticule.h"
#include "display/shapes.h"
#include "display/trace_painter.h"

namespace kv408 {
namespace {

/// The gap ahead of the newest point starts one unit right of it and is 19 units wide.
constexpr std::int64_t gap_start = 1;
constexpr std::int64_t gap_end = 20;

Surface surface_of(const PlotScale& scale) {
    return {scale.width(), scale.height()};
}

Tiles all_tiles_of(const PlotScale& scale) {
    Tiles tiles(scale.width(), scale.height());
    tiles.add_all();
    return tiles;
}

} // namespace

Picture::Picture(const PictureInputs& inputs)
    : inputs_(inputs), grid_(surface_of(scale_)), display_(surface_of(scale_)),
      backdrop_(all_tiles_of(scale_)), inked_(backdrop_), changed_(backdrop_),
      raster_(scale_.height()), due_(scale_.width()) {
    // CH1 comes to lie on top.
    for (const Channel channel : {ch2, ch1}) {
        traces_.push_back({channel, {}, {}, {}, DirtyColumns(scale_.width())});
    }
    drawn_.traces.resize(traces_.size());
    calcPersistColors();
}

Picture::~Picture() = default;

Picture::ChannelTrace& Picture::trace_of(Channel channel) {
    return *std::find_if(traces_.begin(), traces_.end(),
                         [channel](const ChannelTrace& trace) { return trace.channel == channel; });
}

void Picture::keep_drawn(ChannelTrace& trace) const {
    if (!trace.drawn && (!inputs_.acquisition.pointmode || !may_draw())) {
        trace.drawn = trace.trace;
    }
}

const Trace& Picture::drawn_trace(const ChannelTrace& trace) {
    return trace.drawn ? *trace.drawn : trace.trace;
}

void Picture::refresh(Channel channel, int index) {
    ChannelTrace& trace = trace_of(channel);
    keep_drawn(trace);
    const Columns changed =
        trace.trace.map(inputs_.channels[channel], inputs_.samples[channel], index);
    if (!changed.empty()) {
        const int before = scale_.line_width() / 2;
        trace.changed.add({scale_.place(changed.left) - before,
                           scale_.place(changed.right - 1) - before + scale_.line_width()});
    }
}

void Picture::makegrid() {
    grid_background_ = pixel_of(inputs_.colours.background);
    grid_colour_ = pixel_of(inputs_.colours.grid);
    grid_dotted_ = inputs_.panel.gridenable.checked();
    draw_backdrop();
    everything_changed_ = true;
}

void Picture::draw_backdrop() {
    backdrop_.clear();
    draw_graticule(UnitPainter(Canvas(grid_), scale_, &backdrop_), grid_background_, grid_colour_,
                   grid_dotted_);
    if (!drawn_.references.empty()) {
        backdrop_.add_all();
    }
    for (const ReferenceLook& reference : drawn_.references) {
        draw_reference(Canvas(grid_), scale_, placed(reference, scale_));
    }
    densities_.change_all();
    paint_densities();
    inked_.add_all(); // what is shown has the grid of before
}

void Picture::place_maths() {
    placed_maths_.clear();
    for (const ReferenceLook& trace : drawn_.maths) {
        placed_maths_.push_back(placed(trace, scale_));
    }
}

/// Paints what has changed of the densities onto the grid. Hits only become more until all is drawn
/// anew, so what is painted covers what was there. Returns columns that hold all of it.
Columns Picture::paint_densities() {
    Columns columns{scale_.width(), 0};
    densities_.paint_changed(drawn_.densities, grid_, scale_, [&](const Rectangle& pixels) {
        backdrop_.add(pixels);
        inked_.add(pixels);
        columns = {std::min(columns.left, pixels.left), std::max(columns.right, pixels.right)};
    });
    return columns;
}

void Picture::ClearTrace(Channel channel) {
    // The columns that are composed begin with the background.
    trace_of(channel).changed.add({0, scale_.width()});
}

void Picture::movepersistance() {
    for (ChannelTrace& trace : traces_) {
        keep_drawn(trace);
        trace.trace.shift();
    }
    history_changed_ = true;
}

void Picture::set_references(std::vector<ShownReference> references) {
    references_ = std::move(references);
}

std::vector<ShownReference> Picture::captioned() const {
    std::vector<ShownReference> curves = references_;
    curves.insert(curves.end(), maths_.begin(), maths_.end());
    return curves;
}

void Picture::rescale(const PlotScale& scale) {
    scale_ = scale;
    grid_ = surface_of(scale);
    display_ = surface_of(scale);
    backdrop_ = all_tiles_of(scale);
    inked_ = backdrop_;
    changed_ = backdrop_;
    trace_surface_.reset();
    raster_ = TraceRaster(scale.height());
    for (ChannelTrace& trace : traces_) {
        trace.trace.rescale(scale);
        trace.changed = DirtyColumns(scale.width());
        if (trace.drawn) {
            trace.drawn->rescale(scale);
            trace.changed.add({0, scale.width()}); // what has changed since was in other columns
        }
    }
    draw_backdrop();
    place_maths();
    due_ = DirtyColumns(scale.width());
    due_.add({0, scale.width()});
}

void Picture::set_scale(const PlotScale& scale) {
    if (scale == scale_) {
        return;
    }
    rescale(scale);
    if (listener_) {
        compose_what_is_due();
        listener_({0, scale.width()});
    }
}

Surface Picture::at_natural_size() {
    const PlotScale shown = scale_;
    if (shown == PlotScale()) {
        return surface();
    }
    rescale(PlotScale());
    Surface natural = surface();
    rescale(shown);
    compose_what_is_due();
    return natural;
}

void Picture::calccursors() {
    show_cursor_readouts(inputs_.panel, inputs_.channels, inputs_.cursors);
}

void Picture::show_labels() {
    if (!inputs_.program.loaded) {
        // There is nothing to show yet, and the markers have no place.
        return;
    }
    kv408::show_labels(inputs_.panel, inputs_.channels, inputs_.trigger);
}

void Picture::set_newest_point(int index) {
    newest_point_ = index;
}

void Picture::calcPersistColors() {
    const int depth = std::clamp<int>(inputs_.settings.persisttime, 0, deepest_persistence);
    for (ChannelTrace& trace : traces_) {
        trace.ramp = persistence_colours(inputs_.colours.channel(trace.channel),
                                         inputs_.colours.background, depth);
    }
}

const Surface& Picture::surface() {
    compose_what_is_due();
    return display_;
}

Picture::Drawn Picture::drawn() const {
    Drawn result{.background = drawn_.background,
                 .grid = grid_colour_,
                 .dotted = grid_dotted_,
                 .references = drawn_.references,
                 .densities = densities_.views(drawn_.densities),
                 .traces = {},
                 .maths = drawn_.maths,
                 .overlays = drawn_.overlays};
    for (std::size_t index = 0; index < traces_.size(); ++index) {
        const TraceContent& trace = drawn_.traces[index];
        result.traces.push_back({&drawn_trace(traces_[index]), trace.look, trace.gap});
    }
    return result;
}

void Picture::on_drawn(std::function<void(Columns)> listener) {
    compose_what_is_due();
    listener_ = std::move(listener);
}

std::vector<Rectangle> Picture::take_changed() {
    compose_what_is_due();
    std::vector<Rectangle> changed = changed_.rectangles();
    changed_.clear();
    return changed;
}

void Picture::draw(unsigned flags) {
    if (!may_draw()) {
        owes_drawing_ = true;
        return;
    }
    owes_drawing_ = owes_drawing_ && flags != draw_flags::all;
    if ((flags & draw_flags::labels) != 0) {
        show_labels();
    }
    const Content next = content(flags);
    add_columns_to_compose(next);
    const bool backdrop_changed =
        next.references != drawn_.references || next.densities != drawn_.densities;
    const bool maths_changed = next.maths != drawn_.maths;
    drawn_ = next;
    if (maths_changed) {
        place_maths();
    }
    densities_.show(drawn_.densities);
    if (backdrop_changed) {
        draw_backdrop();
    } else {
        due_.add(paint_densities());
    }
    everything_changed_ = false;
    history_changed_ = false;
    for (ChannelTrace& trace : traces_) {
        trace.changed.clear();
        trace.drawn.reset();
    }
    const Columns due = due_.hull();
    if (listener_ && !due.empty()) {
        compose_what_is_due();
        listener_(due);
    }
}

bool Picture::may_draw() const {
    const std::string& state = inputs_.acquisition.scopestate;
    return inputs_.program.loaded && state != state_word::changes1 &&
           state != state_word::changes && state != state_word::set_up;
}

TraceLook Picture::look_of(const ChannelTrace& trace, unsigned flags) const {
    const FrontPanel& panel = inputs_.panel;
    const Channel channel = trace.channel;
    const unsigned flag = channel == ch1 ? draw_flags::ch1 : draw_flags::ch2;
    // Only CH2 waits for a whole sweep; CH1 is redrawn while its sweep is incomplete.
    const bool held = channel == ch1 || inputs_.acquisition.ready[ch2];
    if ((flags & flag) == 0 || !held || !panel.channel[channel].enable.checked() ||
        inputs_.acquisition.traces_withheld()) {
        return {};
    }
    TraceLook look{.shown = true,
                   .dots = panel.eyeon.checked(),
                   .history = panel.persist.checked(),
                   .colour = pixel_of(inputs_.colours.channel(channel)),
                   .faded = {}};
    if (look.history) {
        std::transform(trace.ramp.begin(), trace.ramp.end(), look.faded.begin(), pixel_of);
    }
    return look;
}

Columns Picture::gap_of(const Trace& trace) const {
    if (!inputs_.acquisition.pointmode) {
        return {};
    }
    const std::int64_t x = trace.current().point(newest_point_).x;
    const auto column = [x](std::int64_t ahead) {
        return static_cast<int>(std::clamp<std::int64_t>(x + ahead, 0, plot::width));
    };
    return {column(gap_start), column(gap_end)};
}

Columns Picture::pixels_of(Columns units) const {
    return {scale_.edge(units.left), scale_.edge(units.right)};
}

PlotMarks Picture::shown_marks() const {
    PlotMarks shown;
    for (const auto& marks : marks_) {
        if (!marks || !inputs_.panel.channel.at(marks->channel).enable.checked()) {
            continue;
        }
        if (const auto screen = density_screen(inputs_.panel, inputs_.channels, inputs_.acquisition,
                                               marks->channel, marks->with)) {
            add_marks(*marks, *screen, shown.lines);
            shown.colour = pixel_of(inputs_.colours.annotations);
        }
    }
    return shown;
}

Overlays Picture::overlays_of(unsigned flags) const {
    if ((flags & draw_flags::overlays) == 0) {
        return {};
    }
    Overlays overlays;
    if (histogram_) {
        overlays.histogram = {histogram_, pixel_of(inputs_.colours.annotations)};
    }
    overlays.marks = shown_marks();
    overlays.cursors = cursor_lines(inputs_.cursors, inputs_.colours);
    overlays.annotations =
        annotations(inputs_.panel, inputs_.marks, inputs_.colours, inputs_.acquisition);
    const std::optional<Channel> source = inputs_.panel.selected_source();
    if (inputs_.acquisition.holdoff && source) {
        overlays.trigger = {.shown = true,
                            .row = trigger_row(*source, inputs_.trigger, inputs_.channels),
                            .colour = pixel_of(inputs_.colours.normal_text)};
    }
    return overlays;
}

std::vector<ReferenceLook> Picture::looks_of(const std::vector<ShownReference>& curves) const {
    std::vector<ReferenceLook> looks;
    for (const ShownReference& shown : curves) {
        if (const auto screen = curve_screen(inputs_.panel, inputs_.channels, *shown.curve)) {
            looks.push_back({shown.curve, *screen, pixel_of(shown.colour)});
        }
    }
    return looks;
}

Picture::Content Picture::content(unsigned flags) const {
    Content next;
    next.background = pixel_of(inputs_.colours.background);
    next.references = looks_of(references_);
    if (!inputs_.acquisition.traces_withheld()) {
        next.maths = looks_of(maths_);
    }
    next.densities = densities_.looks(
        {inputs_.panel, inputs_.channels, inputs_.acquisition, inputs_.colours}, flags);
    next.overlays = overlays_of(flags);
    for (const ChannelTrace& trace : traces_) {
        const TraceLook look = look_of(trace, flags);
        next.traces.push_back({look, look.shown ? gap_of(trace.trace) : Columns{}});
    }
    return next;
}

void Picture::add_columns_to_compose(const Content& next) {
    bool everything = everything_changed_ || next.background != drawn_.background ||
                      next.references != drawn_.references || next.densities != drawn_.densities ||
                      next.maths != drawn_.maths || next.overlays != drawn_.overlays;
    for (std::size_t index = 0; index < traces_.size(); ++index) {
        const TraceContent& now = next.traces[index];
        const TraceContent& before = drawn_.traces[index];
        everything |= now.look != before.look;
        everything |= now.look.history && history_changed_;
        if (now.look.shown) {
            due_.add_difference(pixels_of(now.gap), pixels_of(before.gap));
            traces_[index].changed.for_each_range([this](Columns columns) { due_.add(columns); });
        }
    }
    if (everything) {
        due_.add({0, scale_.width()});
    }
}

void Picture::compose_what_is_due() {
    for (ChannelTrace& trace : traces_) {
        trace.trace.settle();
        if (trace.drawn) {
            trace.drawn->settle();
        }
    }
    due_.for_each_range([this](Columns columns) { compose(columns); });
    due_.clear();
}

} // namespace kv408
