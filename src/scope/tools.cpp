#include "scope/tools.h"

#include <utility>

namespace kv408 {
namespace {

DialogHost dialog_host(const Tools::Host& host) {
    return {
        .clock = host.clock, .boxes = host.boxes, .files = host.files, .choosers = host.choosers};
}

} // namespace

Tools::Tools(FrontPanel& panel, const Sweeps& sweeps, const Shown& shown, const Host& host)
    : panel_(panel), shown_(shown), places_(host.places),
      maths_(
          panel, sweeps, host.clock,
          [this](std::vector<ShownReference> traces) {
              shown_.picture.set_maths(std::move(traces));
          },
          [this] { shown_.picture.draw(draw_flags::all); }),
      export_dialog_(
          panel, sweeps, dialog_host(host), [this] { return origin(); }, add_computed()),
      record_dialog_(panel, dialog_host(host), [this] { return origin(); }),
      references_(
          sweeps, dialog_host(host), [this] { return origin(); },
          [this](std::vector<ShownReference> references) {
              shown_.picture.set_references(std::move(references));
              shown_.picture.draw(draw_flags::all);
          },
          add_computed()),
      statistics_(statistics_host(host)), density_(panel, dialog_host(host), density_plot()),
      histogram_(density_, host.clock, histogram_plot()), jitter_(density_, host.clock),
      eye_(density_, host.clock, marks_of(Picture::MarksOf::eye)),
      mask_(density_, eye_,
            {.machine = dialog_host(host),
             .program = host.places.program,
             .actions = limit_host(host)},
            marks_of(Picture::MarksOf::mask)),
      readouts_(shown.readouts, host.clock), spectrum_(panel, host.clock, find_computed()) {
    for (Button* const entry : {&panel.mnuexport, &panel.exportdata}) {
        entry->on_click([this] { export_dialog_.open(places_.documents); });
    }
    panel.mnurecord.on_click([this] { record_dialog_.open(places_.documents); });
    panel.mnustatistics.on_click([this] { statistics_.open(); });
    panel.mnudensity.on_click([this] { density_.open(); });
    histogram_.controls().mnuhistogram.on_click([this] { histogram_.open(); });
    jitter_.controls().mnujitter.on_click([this] { jitter_.open(); });
    eye_.controls().mnueye.on_click([this] { eye_.open(); });
    mask_.controls().mnumask.on_click([this] { mask_.open(); });
    maths_.controls().mnumaths.on_click([this] { maths_.open(); });
    maths_.on_changed([this] { maths_changed(); });
    spectrum_.controls().mnuspectrum.on_click(
        [this, &sweeps] { spectrum_.open(sweeps.last_complete()); });
}

ExportOrigin Tools::origin() const {
    return {.version = KV408_VERSION, .serial = panel_.device.text()};
}

AddComputed Tools::add_computed() const {
    return [this](const Sweep& sweep, ExportedSweep& exported) { maths_.add_to(sweep, exported); };
}

SpectrumDialog::FindComputed Tools::find_computed() const {
    return [this](std::size_t place) {
        const MathsTool& tool = maths_.tool(place);
        return SpectrumDialog::Computed{.trace = tool.trace(), .reason = tool.reason()};
    };
}

void Tools::maths_changed() {
    spectrum_.computed_changed();
    if (export_dialog_.is_open()) {
        export_dialog_.show_sweep();
    }
}

LimitActions::Host Tools::limit_host(const Host& host) {
    const auto take_snapshot = [this]() -> std::function<SavedFile()> {
        return [save = shown_.snapshot.taken()] {
            const FileResult result = save();
            return SavedFile{.status = result.status,
                             .message = "Snapshot wasn't saved!\nError:" + result.reason};
        };
    };
    return {.clock = host.clock,
            .beep =
                [beep = host.beep] {
                    if (beep) {
                        beep();
                    }
                },
            .stop = [this] { panel_.cmdstop.click(); },
            .snapshot = take_snapshot};
}

StatisticsDialog::Host Tools::statistics_host(const Host& host) {
    LimitActions::Host limits = limit_host(host);
    return {.clock = host.clock,
            .boxes = host.boxes,
            .files = host.files,
            .choosers = host.choosers,
            .origin = [this] { return origin(); },
            .beep = std::move(limits.beep),
            .stop = std::move(limits.stop),
            .snapshot = std::move(limits.snapshot)};
}

DensityDialog::Plot Tools::density_plot() {
    Picture& picture = shown_.picture;
    return {.show =
                [&picture](Channel channel, const Collected* collected) {
                    picture.densities().set(channel, collected);
                },
            .add = [&picture](
                       Channel channel, std::span<const std::int16_t> codes,
                       std::uint32_t weight) { picture.densities().add(channel, codes, weight); },
            .colour =
                [&picture](std::size_t palette) {
                    picture.densities().set_palette(static_cast<DensityPalette>(palette));
                },
            .draw = [&picture] { picture.draw(draw_flags::all); }};
}

HistogramDialog::Plot Tools::histogram_plot() {
    Picture& picture = shown_.picture;
    return {
        .find = [&picture](Channel channel,
                           const PlotWindow& window) -> std::optional<DensityWindow> {
            const DensityLayer* const layer = picture.densities().layer(channel);
            return layer == nullptr ? std::nullopt : std::optional(layer->within(window));
        },
        .show =
            [&picture](Channel channel, const std::optional<PlotWindow>& window, HistogramOf of) {
                const DensityLayer* const layer = picture.densities().layer(channel);
                const bool levels = of == HistogramOf::levels;
                if (window && layer != nullptr) {
                    picture.set_histogram(histogram_on(*layer, *window, levels));
                } else if (window) {
                    picture.set_histogram(
                        ShownHistogram{.window = *window, .levels = levels, .bars = {}});
                } else {
                    picture.set_histogram(std::nullopt);
                }
                picture.draw(draw_flags::all);
            }};
}

EyeDialog::ShowMarks Tools::marks_of(Picture::MarksOf tool) {
    return [&picture = shown_.picture, tool](std::optional<DensityMarks> marks) {
        picture.set_marks(tool, std::move(marks));
        picture.draw(draw_flags::all);
    };
}

void Tools::set_paused(bool paused) {
    if (std::exchange(paused_, paused) && !paused) {
        statistics_.sweeps_were_missed();
    }
}

void Tools::sweep_complete(const std::shared_ptr<const Sweep>& sweep) {
    if (!paused_) {
        maths_.take(*sweep); // first: others take what it computes
    }
    record_dialog_.take(*sweep);
    if (export_dialog_.is_open()) {
        export_dialog_.show_sweep();
    }
    if (paused_) {
        return;
    }
    spectrum_.take(sweep);
    statistics_.sweep_complete(*sweep, panel_.check1.checked() ? &shown_.measurements : nullptr);
}

} // namespace kv408
