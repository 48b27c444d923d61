#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "display/density_layers.h"
#include "display/dirty_columns.h"
#include "display/overlays.h"
#include "display/persistence_colours.h"
#include "display/reference_lines.h"
#include "display/surface.h"
#include "display/tiles.h"
#include "display/trace.h"
#include "display/trace_look.h"
#include "display/trace_raster.h"
#include "panel/front_panel.h"
#include "panel/screen.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/colour.h"
#include "state/cursor_state.h"
#include "state/display_settings.h"
#include "state/measurement_state.h"
#include "state/program_state.h"
#include "state/reference_curve.h"
#include "state/samples.h"
#include "state/trigger_state.h"

namespace kv408 {

/// What the picture is made from; all of it belongs to others and outlives the picture.
struct PictureInputs {
    FrontPanel& panel;
    const Samples& samples;
    const Channels& channels;
    const AcquisitionState& acquisition;
    const ProgramState& program;
    const ColourTable& colours;
    const CursorState& cursors;
    const TriggerState& trigger;
    const DisplaySettings& settings;
    const AnnotationMarks& marks;
};

/// The picture of the plot area: 641 by 513 pixels at natural size, more at a larger scale.
///
/// It is composed in layers, each of which draws over the ones before: the grid with the references
/// and the densities on it, the traces with CH1's on top, those computed of them, the cursor lines,
/// the marks of the annotated measurement, the trigger-level line. A layer draws onto a canvas that
/// may be limited to some columns, and what it draws from is part of the `Content` or of the
/// traces' points; so a draw composes only the columns whose pixels can have changed since the draw
/// before, with the same pixels as composing all of them.
class Picture : public Screen {
public:
    /// A picture of `inputs` with an empty grid and no points.
    explicit Picture(const PictureInputs& inputs);
    ~Picture() override;
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    void refresh(Channel channel, int index) override;
    void makegrid() override;
    void ClearTrace(Channel channel) override;
    void movepersistance() override;
    void calccursors() override;
    void show_labels() override;
    void set_newest_point(int index) override;
    void draw(unsigned flags) override;
    [[nodiscard]] bool owes_drawing() const override { return owes_drawing_; }

    /// Recomputes both persistence colour ramps from the colours and the persistence depth of the
    /// settings, which is held within 0..9 generations.
    void calcPersistColors() override;

    /// The composed picture, as it was drawn last. While nobody listens nothing is composed before
    /// it is asked for here.
    [[nodiscard]] const Surface& surface();

    /// Composes the picture from now on at `scale`. Traces and history stay what they are.
    void set_scale(const PlotScale& scale);
    [[nodiscard]] const PlotScale& scale() const { return scale_; }

    /// The picture as it is at natural size, 641 by 513.
    [[nodiscard]] Surface at_natural_size();

    /// Shows `references` under the traces from the next draw on, the last on top.
    void set_references(std::vector<ShownReference> references);

    /// Shows `traces`, which were computed, over those of the channels from the next draw on, the
    /// last on top.
    void set_maths(std::vector<ShownReference> traces) { maths_ = std::move(traces); }

    /// What is shown of both, in this order, for those who write what each is.
    [[nodiscard]] std::vector<ShownReference> captioned() const;

    /// What was collected of each channel, under the traces from the next draw on.
    [[nodiscard]] DensityLayers& densities() { return densities_; }

    /// Shows `histogram` over the traces from the next draw on, or none.
    void set_histogram(std::optional<ShownHistogram> histogram) {
        histogram_ = std::move(histogram);
    }

    /// Whose marks are shown over the traces.
    enum class MarksOf : std::size_t { eye, mask };

    /// Shows `marks`, in the place of others of theirs, from the next draw on, or none.
    void set_marks(MarksOf of, std::optional<DensityMarks> marks) {
        marks_.at(static_cast<std::size_t>(of)) = std::move(marks);
    }

    /// What the picture shows, in units of the plot, for those who draw it in their own way.
    struct Drawn {
        Pixel background = 0;
        Pixel grid = 0;
        bool dotted = false;                   ///< the graticule has its dots and ticks
        std::vector<ReferenceLook> references; ///< the one that lies on top last
        std::vector<DensityView> densities;    ///< the one that lies on top last
        std::vector<TraceView> traces;         ///< the one that lies on top last; gaps in units
        std::vector<ReferenceLook> maths;      ///< the one that lies on top last
        Overlays overlays;
    };

    /// What was drawn last. It may be used until the next change of the picture.
    [[nodiscard]] Drawn drawn() const;

    /// Sets the one listener that is told after the picture has changed, with the columns of pixels
    /// that did. While there is one, the picture is composed with each draw.
    void on_drawn(std::function<void(Columns)> listener);

    /// Rectangles of pixels that hold all that has changed on the composed picture since this was
    /// asked last, by compositions or because its size has changed.
    [[nodiscard]] std::vector<Rectangle> take_changed();

private:
    /// How a trace is drawn, besides its points.
    struct TraceContent {
        TraceLook look;
        Columns gap; ///< units of the plot left blank in a trace that is shown

        friend bool operator==(const TraceContent&, const TraceContent&) = default;
    };

    /// What the pixels depend on, besides the points of the traces.
    struct Content {
        std::vector<TraceContent> traces; ///< as `traces_`
        Pixel background = 0;
        std::vector<ReferenceLook> references; ///< as `references_`, those that have a place
        DensityLayers::Looks densities;
        std::vector<ReferenceLook> maths; ///< as `maths_`, those that are drawn
        Overlays overlays;

        friend bool operator==(const Content&, const Content&) = default;
    };

    /// One channel's trace, and what of it has changed since the last composition.
    struct ChannelTrace {
        Channel channel = ch1;
        Trace trace;
        /// What was drawn last, where `trace` may have gone on since: a change of the size composes
        /// that. A point-by-point pass draws each point that it gets and needs none.
        std::optional<Trace> drawn = {};
        PersistenceColours ramp = {};
        DirtyColumns changed;
    };

    using TraceViews = std::vector<TraceView>;

    [[nodiscard]] bool may_draw() const;
    [[nodiscard]] ChannelTrace& trace_of(Channel channel);
    void keep_drawn(ChannelTrace& trace) const;
    [[nodiscard]] static const Trace& drawn_trace(const ChannelTrace& trace);
    [[nodiscard]] TraceLook look_of(const ChannelTrace& trace, unsigned flags) const;
    [[nodiscard]] Columns gap_of(const Trace& trace) const;
    [[nodiscard]] Columns pixels_of(Columns units) const;
    [[nodiscard]] Overlays overlays_of(unsigned flags) const;
    [[nodiscard]] PlotMarks shown_marks() const;
    [[nodiscard]] std::vector<ReferenceLook>
    looks_of(const std::vector<ShownReference>& curves) const;
    [[nodiscard]] Content content(unsigned flags) const;
    void rescale(const PlotScale& scale);
    void draw_backdrop();
    void place_maths();
    Columns paint_densities();
    void add_columns_to_compose(const Content& next);
    void compose_what_is_due();
    void compose(Columns columns);
    void take_off(const Canvas& canvas, int top);
    void compose_by_runs(const Canvas& canvas, const TraceViews& views);
    void compose_block(const Canvas& canvas, const TraceViews& views);
    void compose_by_painting(const Canvas& canvas, const TraceViews& views);

    PictureInputs inputs_;
    PlotScale scale_;
    std::vector<ChannelTrace> traces_; ///< the one that lies on top last
    int newest_point_ = 0;
    Pixel grid_background_ = pixel_of(Colour{}); ///< what the grid was drawn with last
    Pixel grid_colour_ = pixel_of(Colour{});
    bool grid_dotted_ = false;
    std::vector<ShownReference> references_;
    std::vector<ShownReference> maths_;
    std::vector<PlacedReference> placed_maths_; ///< those that were drawn last
    DensityLayers densities_;
    std::optional<ShownHistogram> histogram_;
    std::array<std::optional<DensityMarks>, 2> marks_; ///< by `MarksOf`
    Surface grid_; ///< with the references and densities that were drawn last
    Surface display_;
    Tiles backdrop_; ///< all of `grid_` but for what has its ground alone, and maybe more
    Tiles inked_;    ///< all that differs on `display_` from the grid, and maybe more
    Tiles changed_;  ///< all that may have changed there since it was asked for
    std::optional<Surface> trace_surface_; ///< for traces that the raster cannot draw, once needed
    TraceRaster raster_;
    Content drawn_;                  ///< what the last composition was made from
    bool everything_changed_ = true; ///< since the last composition
    bool history_changed_ = false;
    DirtyColumns due_; ///< columns that the surface does not show as they were last drawn
    bool owes_drawing_ = false;
    std::function<void(Columns)> listener_;
};

} // namespace kv408
