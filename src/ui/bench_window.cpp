#include "ui/bench_window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>

#include "ui/fault_switches.h"
#include "ui/frame_grid.h"
#include "ui/panel_frame.h"
#include "ui/source_editor.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int gap = 8;

/// A list that sets `route` to the entry chosen.
template <typename Route>
QWidget* make_route(QWidget* frame, Route& route, const QStringList& entries, const Words& words) {
    auto* const list = new QComboBox(frame);
    list->setObjectName(words.name);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    describe(*list, words);
    list->addItems(entries);
    list->setCurrentIndex(static_cast<int>(route));
    QObject::connect(list, &QComboBox::currentIndexChanged, list,
                     [&route](int index) { route = static_cast<Route>(index); });
    return list;
}

QWidget* make_cables(simulator::Bench& bench) {
    auto* const frame = new PanelFrame(u"Cables"_s);
    QGridLayout* const grid = make_frame_grid(frame, 2);
    for (int input = 0; input < 2; ++input) {
        const QString number = QString::number(input + 1);
        QWidget* const sampler =
            make_route(frame, bench.samplers.at(static_cast<std::size_t>(input)),
                       {u"Nothing"_s, u"Signal "_s + number, u"Trigger output"_s, u"Via trigger"_s},
                       {u"CH"_s + number, u"What is connected to the input of CH"_s + number});
        QWidget* const trigger =
            make_route(frame, bench.triggers.at(static_cast<std::size_t>(input)),
                       {u"Nothing"_s, u"Signal 1"_s, u"Signal 2"_s},
                       {u"TRIG"_s + number, u"What is connected to the input TRIG"_s + number});
        grid->addWidget(make_caption(u"CH"_s + number, sampler), input, 0);
        grid->addWidget(sampler, input, 1);
        grid->addWidget(make_caption(u"TRIG"_s + number, trigger), input, 2);
        grid->addWidget(trigger, input, 3);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return frame;
}

} // namespace

BenchWindow::BenchWindow(simulator::Bench& bench) {
    setObjectName(u"benchWindow"_s);
    setWindowTitle(u"Simulated bench"_s);
    // The main window alone decides when the program ends.
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(gap, gap, gap, gap);
    layout->setSpacing(gap);
    auto* const signals_row = new QHBoxLayout;
    signals_row->setSpacing(gap);
    signals_row->addWidget(make_source_editor(u"Signal 1"_s, bench.sources[0]));
    signals_row->addWidget(make_source_editor(u"Signal 2"_s, bench.sources[1]));
    layout->addLayout(signals_row);
    layout->addWidget(make_cables(bench));
    layout->addWidget(make_fault_switches(bench.faults));
}

bool BenchWindow::place_beside(const QWidget& window) {
    const QRect room = window.screen()->availableGeometry();
    const QRect taken = window.frameGeometry();
    const QSize size = sizeHint();
    for (const QPoint& corner : {QPoint(taken.right() + gap, taken.top()),
                                 QPoint(taken.left() - gap - size.width(), taken.top()),
                                 QPoint(taken.left(), taken.bottom() + gap)}) {
        if (room.contains(QRect(corner, size))) {
            move(corner);
            return true;
        }
    }
    move(room.right() - size.width(), room.bottom() - size.height());
    return false;
}

} // namespace kv408::ui
