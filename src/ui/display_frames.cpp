#include "ui/frame_grid.h"
#include "ui/frames.h"
#include "ui/panel_frame.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

} // namespace

PanelFrame* make_display_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Display"_s);
    WidgetMaker make(frame, driver);
    FrontPanel& panel = driver.panel();
    QGridLayout* const grid = make_frame_grid(frame, 3);
    grid->addWidget(make.check(panel.gridenable, u"&Grid On"_s,
                               {u"Grid on"_s, u"Shows the grid of 10 by 8 divisions"_s}),
                    0, 0);
    grid->addWidget(make.check(panel.eyeon, u"Dra&w Dot"_s,
                               {u"Draw dots"_s, u"Draws each point as a dot instead of a line"_s}),
                    1, 0);
    grid->addWidget(
        make.check(panel.persist, u"Persiste&nce"_s,
                   {u"Persistence"_s, u"Lets earlier sweeps fade behind the present one"_s}),
        2, 0);
    grid->addWidget(make.check(panel.average, u"&Filter Avg."_s,
                               {u"Filter by averaging"_s,
                                u"The instrument averages its samples: less noise"_s}),
                    0, 1);
    grid->addWidget(make.check(panel.adcspeed, u"Sp&eed opt."_s,
                               {u"Speed optimisation"_s,
                                u"The instrument samples faster: more sweeps, more noise"_s}),
                    1, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    return frame;
}

PanelFrame* make_measurement_frame(ScopeDriver& driver) {
    auto* const frame = new PanelFrame(u"Measurement"_s);
    WidgetMaker make(frame, driver);
    FrontPanel& panel = driver.panel();
    QGridLayout* const grid = make_frame_grid(frame, 4);
    grid->addWidget(make.check(panel.check1, u"&Measure"_s,
                               {u"Measure"_s, u"Measures the traces and shows the results"_s}),
                    0, 0);
    for (int row = 0; row < 3; ++row) {
        MeasurementControls& slot = panel.measurement[static_cast<std::size_t>(row)];
        const QString number = QString::number(row + 1);
        grid->addWidget(
            make.list(slot.selector, {u"Measurement "_s + number,
                                      u"What row "_s + number + u" of the results measures"_s}),
            row + 1, 0);
        QWidget* const annotate =
            make.check(slot.annotate, {},
                       {u"Annotation of measurement "_s + number,
                        u"Marks measurement "_s + number + u" on the trace"_s});
        grid->addWidget(annotate, row + 1, 1, Qt::AlignCenter);
        if (row == 0) {
            grid->addWidget(make_caption(u"Annotation"_s, annotate), 0, 1);
        }
    }
    grid->setColumnStretch(0, 1);
    return frame;
}

} // namespace kv408::ui
