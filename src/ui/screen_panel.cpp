#include "ui/screen_panel.h"

#include <array>

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "state/plot_geometry.h"
#include "ui/bind.h"
#include "ui/colours.h"
#include "ui/marker.h"
#include "ui/results_panel.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int row_height = 24;
constexpr int padding = 4;
/// The texts above and below the plot need this width, also where the plot is smaller.
constexpr int rows_width = plot::box_width;
constexpr double corner = 5.0;

/// A row as wide as the plot, with its contents over the picture's columns.
QWidget* make_row(QWidget* parent) {
    auto* const row = new QWidget(parent);
    row->setFixedHeight(row_height);
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(plot::left, 0, plot::left, 0);
    layout->setSpacing(16);
    return row;
}

/// A label of the screen that keeps its place while it is hidden.
QLabel* make_label(QWidget* parent, Label& control, const Words& words) {
    auto* const label = new QLabel(parent);
    QSizePolicy policy = label->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    label->setSizePolicy(policy);
    describe(*label, words);
    bind(label, control);
    return label;
}

/// A caption in the colours of `read_out`.
QLabel* make_heading(QWidget* parent, const QString& text, QWidget& read_out) {
    auto* const caption = new QLabel(text, parent);
    follow_colours(*caption, read_out);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    return caption;
}

/// A read-out on a plate that lets the picture shine through.
class Plate : public QLabel {
public:
    explicit Plate(QWidget* parent) : QLabel(parent) {
        let_paint_itself(*this);
        setContentsMargins(6, 1, 6, 1);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        constexpr int plate_alpha = 190;
        QColor plate = palette().color(QPalette::Window);
        plate.setAlpha(plate_alpha);
        QPainter(this).fillRect(rect(), plate);
        QLabel::paintEvent(event);
    }
};

} // namespace

ScreenPanel::ScreenPanel(const Surface& surface, FrontPanel& panel, QWidget* parent)
    : QWidget(parent), plot_(new PlotWidget(surface, this)), header_(make_header(panel)),
      footer_(make_footer(panel)), results_(make_results_panel(panel, this)),
      cursor_read_outs_(make_cursor_read_outs(panel)) {
    describe(*plot_, {u"Plot"_s, u"The traces of both channels, 10 by 8 divisions"_s});
    bind_appearance(plot_, panel.picture1, [this](bool dimmed) { plot_->set_dimmed(dimmed); });
    plot_->installEventFilter(this);
    make_markers(panel);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QWidget* ScreenPanel::make_header(FrontPanel& panel) {
    QWidget* const row = make_row(this);
    auto* const layout = static_cast<QHBoxLayout*>(row->layout());
    QLabel* const time =
        make_label(row, panel.tdivtext, {u"Time per division"_s, u"Time per division"_s});
    QFont bold = time->font();
    bold.setBold(true);
    time->setFont(bold);
    layout->addWidget(time);
    for (std::size_t index = 0; index < panel.channel.size(); ++index) {
        const QString number = QString::number(index + 1);
        layout->addWidget(make_label(row, panel.channel[index].hor_delay,
                                     {u"Delay of CH"_s + number,
                                      u"Horizontal delay of CH"_s + number + u", picoseconds"_s}));
    }
    layout->addStretch();
    layout->addWidget(
        make_label(row, panel.avglabel,
                   {u"Averaging"_s, u"Shown while the instrument averages its samples"_s}));
    layout->addWidget(make_label(row, panel.lbldate, {u"Time and date"_s, u"Time and date"_s}));
    return row;
}

QWidget* ScreenPanel::make_footer(FrontPanel& panel) {
    QWidget* const row = make_row(this);
    auto* const layout = static_cast<QHBoxLayout*>(row->layout());
    layout->setSpacing(0);
    for (std::size_t index = 0; index < panel.channel.size(); ++index) {
        const QString channel = u"CH"_s + QString::number(index + 1);
        auto* const half = new QWidget(row);
        half->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        auto* const half_layout = new QHBoxLayout(half);
        half_layout->setContentsMargins(0, 0, 0, 0);
        half_layout->setSpacing(12);
        QLabel* const volts =
            make_label(half, panel.channel[index].vdivtext,
                       {u"Volts per division of "_s + channel,
                        u"Volts per division of "_s + channel +
                            u"; (VT): by way of the trigger input; (inv): upside down"_s});
        half_layout->addWidget(make_heading(half, channel, *volts));
        half_layout->addWidget(volts, 1);
        layout->addWidget(half);
    }
    return row;
}

void ScreenPanel::make_markers(FrontPanel& panel) {
    const auto make = [this](Label& control, Marker::Direction direction, const Words& words) {
        auto* const marker = new Marker(plot_, direction);
        describe(*marker, words);
        bind(marker, control);
        return marker;
    };
    // CH1 comes to lie on top, as its trace does.
    std::array<Marker*, 2> channels{};
    for (const std::size_t index : {1U, 0U}) {
        const QString channel = u"CH"_s + QString::number(index + 1);
        channels.at(index) =
            make(panel.channel[index].text, Marker::Direction::right,
                 {u"Zero line of "_s + channel, u"Where 0 V of "_s + channel + u" lies"_s});
    }
    Marker::keep_apart(*channels[0], *channels[1]);
    make(panel.trigertext, Marker::Direction::left,
         {u"Trigger level"_s, u"Where the trigger level lies"_s});
    make(panel.ltp2, Marker::Direction::down,
         {u"Trigger time"_s, u"Where the moment of the trigger lies"_s});
}

QWidget* ScreenPanel::make_cursor_read_outs(FrontPanel& panel) {
    auto* const column = new QWidget(plot_);
    column->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    const auto make = [&](Label& control, const Words& words) {
        auto* const label = new Plate(column);
        describe(*label, words);
        layout->addWidget(label);
        bind(label, control);
    };
    make(panel.centerfr,
         {u"Cursor difference"_s, u"Distance of the two cursors, volts or seconds"_s});
    make(panel.lblc1, {u"Cursor 1"_s, u"Place of cursor 1, volts or seconds"_s});
    make(panel.lblc2, {u"Cursor 2"_s, u"Place of cursor 2, volts or seconds"_s});
    return column;
}

QSize ScreenPanel::size_around(int plot_height) const {
    return {rows_width + 2 * padding,
            plot_height + 2 * row_height + results_->sizeHint().height() + 3 * padding};
}

QSize ScreenPanel::sizeHint() const {
    return size_around(PlotWidget::size_at(1, 1.0).height());
}

QSize ScreenPanel::minimumSizeHint() const {
    return size_around(PlotWidget::size_at(1, std::max(1.0, devicePixelRatioF())).height());
}

void ScreenPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    fit();
}

void ScreenPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fit();
}

void ScreenPanel::fit() {
    ratio_ = devicePixelRatioF();
    const int results_height = results_->sizeHint().height();
    const int others = 2 * row_height + results_height;
    plot_->set_scale(PlotWidget::scale_for(
        QSizeF(width() - 2 * padding, height() - others - 3 * padding), ratio_));
    int top = (height() - plot_->height() - others - padding) / 2;
    const auto place = [&](QWidget* widget, QSize size) {
        widget->setGeometry((width() - size.width()) / 2, top, size.width(), size.height());
        top += size.height();
    };
    const int across = std::max(rows_width, plot_->width());
    place(header_, {across, row_height});
    place(plot_, plot_->size());
    place(footer_, {across, row_height});
    place(results_, {across, results_height});
    constexpr int from_edge = 8;
    cursor_read_outs_->move(
        plot_->place_of(plot::left + from_edge, plot::top + from_edge).toPoint());
    // Over the picture's columns, where these are not narrower than the texts.
    const int margin =
        across > plot_->width() ? plot::left : static_cast<int>(plot_->place_of(plot::left, 0).x());
    for (const QWidget* row : {header_, footer_, results_}) {
        row->layout()->setContentsMargins(margin, 0, margin, 0);
    }
}

bool ScreenPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == plot_ && event->type() == QEvent::PaletteChange) {
        // The surround has the colour of the plot box.
        update();
    }
    return QWidget::eventFilter(watched, event);
}

void ScreenPanel::paintEvent(QPaintEvent* /*event*/) {
    if (ratio_ != devicePixelRatioF()) {
        // The window has come to a screen of another density.
        QMetaObject::invokeMethod(
            this,
            [this] {
                updateGeometry();
                fit();
            },
            Qt::QueuedConnection);
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(plot_->palette().color(QPalette::Window));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
}

} // namespace kv408::ui
