#include "display/picture.h"

#include <utility>

#include "display/copies.h"
#include "display/cursors.h"
#include "display/graticule.h"
#include "display/shapes.h"
#include "display/trace_painter.h"
#include "panel/withheld_traces.h"

namespace kv408 {
namespace {

/// The gap ahead of the newest point starts one column right of it and is 19 columns wide.
constexpr std::int64_t gap_start = 1;
constexpr std::int64_t gap_end = 20;

Surface plot_surface() {
    return {plot::width, plot::height};
}

/// Channel indices in the order of drawing: CH1 comes to lie on top.
constexpr std::array drawing_order{ch2, ch1};

std::size_t slot(int channel) {
    return static_cast<std::size_t>(channel);
}

} // namespace

Picture::Picture(const PictureInputs& inputs)
    : inputs_(inputs), grid_(plot_surface()),
      display_(plot_surface()), trace_surfaces_{plot_surface(), plot_surface()} {
    calcPersistColors();
}

Picture::~Picture() = default;

void Picture::refresh(int channel, int index) {
    const Columns changed = traces_[slot(channel)].map(inputs_.channels[slot(channel)],
                                                       inputs_.samples[slot(channel)], index);
    changes_.points[slot(channel)].add(changed);
}

void Picture::makegrid() {
    draw_graticule(Canvas(grid_), pixel_of(inputs_.colours.background),
                   pixel_of(inputs_.colours.grid), inputs_.panel.gridenable.checked());
    changes_.everything = true;
}

void Picture::ClearTrace(int channel) {
    Surface& surface = trace_surfaces_[slot(channel - 1)];
    fill_rectangle(Canvas(surface), whole(surface), pixel_of(inputs_.colours.background));
}

void Picture::movepersistance() {
    for (Trace& trace : traces_) {
        trace.shift();
    }
    changes_.history = true;
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
    for (const int channel : drawing_order) {
        ramps_[slot(channel)] = persistence_colours(inputs_.colours.channel(channel),
                                                    inputs_.colours.background, depth);
    }
}

const Surface& Picture::surface() {
    compose_what_is_due();
    return display_;
}

void Picture::on_drawn(std::function<void(Columns)> listener) {
    compose_what_is_due();
    listener_ = std::move(listener);
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
    drawn_ = next;
    changes_ = Changes{.everything = false, .history = false, .points = {}};
    const Columns due = due_.hull();
    if (listener_ && !due.empty()) {
        compose_what_is_due();
        listener_(due);
    }
}

bool Picture::may_draw() const {
    const std::string& state = inputs_.acquisition.scopestate;
    return inputs_.program.loaded && state != "changes1" && state != "changes" &&
           state != "startscope";
}

TraceLook Picture::look_of(int channel, unsigned flags) const {
    const FrontPanel& panel = inputs_.panel;
    const unsigned flag = channel == ch1 ? draw_flags::ch1 : draw_flags::ch2;
    // Only CH2 waits for a whole sweep; CH1 is redrawn while its sweep is incomplete.
    const bool held = channel == ch1 || inputs_.acquisition.ready[slot(ch2)];
    if ((flags & flag) == 0 || !held || !panel.channel[slot(channel)].enable.checked() ||
        traces_withheld(panel, inputs_.acquisition)) {
        return {};
    }
    TraceLook look{.shown = true,
                   .dots = panel.eyeon.checked(),
                   .history = panel.persist.checked(),
                   .colour = pixel_of(inputs_.colours.channel(channel)),
                   .faded = {}};
    if (look.history) {
        std::transform(ramps_[slot(channel)].begin(), ramps_[slot(channel)].end(),
                       look.faded.begin(), pixel_of);
    }
    return look;
}

Columns Picture::gap_of(int channel) const {
    if (!inputs_.acquisition.pointmode) {
        return {};
    }
    const std::int64_t x = traces_[slot(channel)].current().point(newest_point_).x;
    const auto column = [x](std::int64_t ahead) {
        return static_cast<int>(std::clamp<std::int64_t>(x + ahead, 0, plot::width));
    };
    return {column(gap_start), column(gap_end)};
}

Overlays Picture::overlays_of(unsigned flags) const {
    if ((flags & draw_flags::overlays) == 0) {
        return {};
    }
    Overlays overlays;
    overlays.cursors = cursor_lines(inputs_.cursors, inputs_.colours);
    overlays.annotations =
        annotations(inputs_.panel, inputs_.marks, inputs_.colours, inputs_.acquisition);
    const std::string source = inputs_.panel.trigsource.text();
    if (inputs_.acquisition.holdoff && (source == "TRIG1" || source == "TRIG2")) {
        overlays.trigger = {
            .shown = true,
            .row = trigger_row(source == "TRIG1" ? 0 : 1, inputs_.trigger, inputs_.channels),
            .colour = pixel_of(inputs_.colours.normal_text)};
    }
    return overlays;
}

Picture::Content Picture::content(unsigned flags) const {
    Content next;
    next.background = pixel_of(inputs_.colours.background);
    next.overlays = overlays_of(flags);
    for (const int channel : drawing_order) {
        next.looks[slot(channel)] = look_of(channel, flags);
        if (next.looks[slot(channel)].shown) {
            next.gaps[slot(channel)] = gap_of(channel);
        }
    }
    return next;
}

void Picture::add_columns_to_compose(const Content& next) {
    bool everything = changes_.everything || next.background != drawn_.background ||
                      next.overlays != drawn_.overlays;
    for (const int channel : drawing_order) {
        const TraceLook& look = next.looks[slot(channel)];
        everything |= look != drawn_.looks[slot(channel)];
        everything |= look.history && changes_.history;
        if (look.shown) {
            due_.add_difference(next.gaps[slot(channel)], drawn_.gaps[slot(channel)]);
            changes_.points[slot(channel)].for_each_range(
                [this](Columns columns) { due_.add(columns); });
        }
    }
    if (everything) {
        due_.add(all_columns);
    }
}

void Picture::compose_what_is_due() {
    due_.for_each_range([this](Columns columns) { compose(columns); });
    due_.clear();
}

void Picture::compose(Columns columns) {
    TraceViews views;
    for (const int channel : drawing_order) {
        views[slot(channel)] = {&traces_[slot(channel)], drawn_.looks[slot(channel)],
                                drawn_.gaps[slot(channel)]};
    }
    const Canvas canvas(display_, columns);
    if (std::all_of(views.begin(), views.end(), TraceRaster::can_draw)) {
        compose_by_runs(canvas, views);
    } else {
        compose_by_painting(canvas, views);
    }
    draw_overlays(canvas, drawn_.overlays);
}

void Picture::compose_by_runs(const Canvas& canvas, const TraceViews& views) {
    raster_.paint(canvas.columns(), views, drawn_.background);
    // The grid is copied band by band too, so that each band is written while it is in the cache.
    for (int top = 0; top < plot::height; top += TraceRaster::band_rows) {
        const Rectangle band{0, top, plot::width, top + TraceRaster::band_rows};
        copy_block(canvas, Point{0, top}, grid_, band);
        raster_.write_band(canvas, top);
    }
}

void Picture::compose_by_painting(const Canvas& canvas, const TraceViews& views) {
    copy_block(canvas, Point{}, grid_, whole(grid_));
    for (const int channel : drawing_order) {
        if (!views[slot(channel)].look.shown) {
            continue;
        }
        ClearTrace(channel + 1);
        Surface& surface = trace_surfaces_[slot(channel)];
        paint_trace(Canvas(surface), views[slot(channel)], drawn_.background);
        copy_transparent(canvas, Point{}, surface, whole(surface), drawn_.background);
    }
}

} // namespace kv408
