#include "demo/test_bench_window.h"

#include <optional>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "demo/fault_switches.h"
#include "demo/source_editor.h"
#include "simulator/test_connections.h"
#include "ui/frame_grid.h"
#include "ui/lengths.h"
#include "ui/panel_frame.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

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

QWidget* make_cables(simulator::TestBench& bench) {
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
                       {u"Nothing"_s, u"Signal 1"_s, u"Signal 2"_s, u"Clock 1"_s, u"Clock 2"_s},
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

TestBenchWindow::TestBenchWindow(simulator::TestBench& bench, const std::function<void()>& notice)
    : bench_(bench) {
    setObjectName(u"benchWindow"_s);
    setWindowTitle(u"Simulated bench"_s);
    // The main window alone decides when the program ends.
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(window_gap, window_gap, window_gap, window_gap);
    layout->setSpacing(window_gap);
    layout->addWidget(make_connections());
    layout->addWidget(make_fault_switches(bench.faults, notice));
    show_bench();
}

QWidget* TestBenchWindow::make_connections() {
    using simulator::TestConnection;
    auto* const frame = new PanelFrame(u"Connect"_s);
    QGridLayout* const grid = make_frame_grid(frame, 1);
    auto* const list = new QComboBox(frame);
    connections_ = list;
    list->setObjectName(u"connection"_s);
    list->setPlaceholderText(u"Your own signals and cables"_s);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    describe(*list,
             {u"Connect"_s, u"Sets signals and cables as a calibration asks for, or for an eye"_s});
    // In the order of the connections.
    list->addItems({u"As delivered"_s, u"200 mVpp, 10 MHz sine; CH1 to trigger output"_s,
                    u"200 mVpp, 10 MHz sine; CH2 to trigger output"_s,
                    u"1 Vpp, 10 MHz sine; CH1 to trigger output"_s,
                    u"1 Vpp, 10 MHz sine; CH2 to trigger output"_s,
                    u"1 Vpp, 10 MHz sine; CH1 and CH2 open"_s, u"Eye, clean"_s,
                    u"Eye, with jitter and noise"_s, u"Eye, closing"_s});
    QObject::connect(list, &QComboBox::activated, list, [this](int index) {
        simulator::connect(bench_, static_cast<TestConnection>(index));
        show_bench();
    });
    grid->addWidget(list, 0, 0);
    return frame;
}

void TestBenchWindow::show_bench() {
    auto* const content = new QWidget;
    auto* const rows = new QVBoxLayout(content);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(window_gap);
    auto* const signals_row = new QHBoxLayout;
    signals_row->setSpacing(window_gap);
    signals_row->addWidget(make_source_editor(u"Signal 1"_s, bench_.sources[0]));
    signals_row->addWidget(make_source_editor(u"Signal 2"_s, bench_.sources[1]));
    rows->addLayout(signals_row);
    rows->addWidget(make_cables(bench_));
    delete shown_;
    shown_ = content;
    static_cast<QVBoxLayout*>(layout())->insertWidget(1, content);
    // After the editors' own slots: what they have set is in the bench.
    for (QComboBox* const list : content->findChildren<QComboBox*>()) {
        connect(list, &QComboBox::currentIndexChanged, this, [this] { show_connection(); });
    }
    for (QDoubleSpinBox* const box : content->findChildren<QDoubleSpinBox*>()) {
        connect(box, &QDoubleSpinBox::valueChanged, this, [this] { show_connection(); });
    }
    show_connection();
}

void TestBenchWindow::show_connection() {
    const std::optional<simulator::TestConnection> made = simulator::connected(bench_);
    connections_->setCurrentIndex(made ? static_cast<int>(*made) : -1);
}

} // namespace kv408::ui
