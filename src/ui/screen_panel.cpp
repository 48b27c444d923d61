#include "ui/screen_panel.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "state/plot_geometry.h"
#include "ui/bind.h"
#include "ui/colours.h"
#include "ui/lengths.h"
#include "ui/marker.h"
#include "ui/results_panel.h"
#include "ui/screen_header.h"
#include "ui/screen_label.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int padding = 4;
constexpr int footer_spacing = 12;
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
    : QWidget(parent), plot_(new PlotWidget(surface, this)), header_(new ScreenHeader(panel, this)),
      footer_(make_footer(panel)), results_(make_results_panel(panel, this)),
      cursor_read_outs_(make_cursor_read_outs(panel)) {
    describe(*plot_, {u"Plot"_s, u"The traces of both channels, 10 by 8 divisions"_s});
    bind_appearance(plot_, panel.picture1, [this](bool dimmed) { plot_->set_dimmed(dimmed); });
    plot_->installEventFilter(this);
    make_markers(panel);
    cursor_numbers_.emplace(plot_, *cursor_read_outs_->findChild<QLabel*>());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QWidget* ScreenPanel::make_footer(FrontPanel& panel) {
    auto* const row = new QWidget(this);
    auto* const layout = new QHBoxLayout(row);
    layout->setSpacing(0);
    for (std::size_t index = 0; index < panel.channel.size(); ++index) {
        const QString channel = u"CH"_s + QString::number(index + 1);
        auto* const half = new QWidget(row);
        half->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        auto* const half_layout = new QBoxLayout(QBoxLayout::LeftToRight, half);
        half_layout->setContentsMargins(0, 0, 0, 0);
        half_layout->setSpacing(footer_spacing);
        footer_halves_.push_back(half_layout);
        QLabel* const volts =
            make_screen_label(half, panel.channel[index].vdivtext,
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

ScreenPanel::RowHeights ScreenPanel::usual_heights() const {
    const int letters = fontMetrics().height();
    return {.line = std::max(24, letters + 7), .result = std::max(20, letters + 3)};
}

ScreenPanel::RowHeights ScreenPanel::least_heights() const {
    const int letters = fontMetrics().height();
    return {.line = letters + 2, .result = letters + 2};
}

int ScreenPanel::footer_lines(int columns) const {
    QFont bold = font();
    bold.setBold(true);
    const int longest = QFontMetrics(bold).horizontalAdvance(u"CH2"_s) + footer_spacing +
                        fontMetrics().horizontalAdvance(u"50mV (VT) (inv)"_s);
    return longest <= columns / 2 ? 1 : 2;
}

void ScreenPanel::stack_footer(int columns) {
    const bool stacked = footer_lines(columns) > 1;
    for (QBoxLayout* const half : footer_halves_) {
        half->setDirection(stacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        half->setSpacing(stacked ? 0 : footer_spacing);
    }
}

QSize ScreenPanel::size_around(QSize plot, const RowHeights& heights) const {
    const int columns = plot.width() * plot::width / plot::box_width;
    const int lines = header_->lines_within(columns) + footer_lines(columns);
    return {plot.width() + 2 * padding,
            plot.height() + lines * heights.line + results_rows * heights.result + 2 * padding};
}

QSize ScreenPanel::sizeHint() const {
    return size_around(PlotWidget::size_at(1, 1.0), usual_heights()) + QSize(0, padding);
}

QSize ScreenPanel::minimumSizeHint() const {
    // The outermost columns of the plot box are empty.
    constexpr int empty = 2;
    const QSize plot = PlotWidget::size_at(1, std::max(1.0, devicePixelRatioF()));
    return size_around(plot, least_heights()) - QSize(2 * (padding + empty), 0);
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
    const auto size_at = [this](int scale, const RowHeights& heights) {
        return size_around(PlotWidget::size_at(scale, ratio_), heights);
    };
    int scale = PlotWidget::scale_for(QSizeF(size()), ratio_);
    const auto fits = [this](QSize needed) {
        return needed.width() <= width() && needed.height() <= height();
    };
    while (scale > 1 && !fits(size_at(scale, least_heights()))) {
        --scale;
    }
    plot_->set_scale(scale);
    const bool roomy = fits(size_at(scale, usual_heights()));
    const RowHeights heights = roomy ? usual_heights() : least_heights();
    // The results have their place also while they are hidden.
    int top = (height() - size_at(scale, heights).height() + padding) / 2;
    const auto place = [&](QWidget* widget, int high) {
        widget->setGeometry((width() - plot_->width()) / 2, top, plot_->width(), high);
        top += high;
    };
    const int margin = static_cast<int>(std::lround(plot_->place_of(plot::left, 0).x()));
    const int columns = plot_->width() - 2 * margin;
    stack_footer(columns);
    header_->set_margin(margin);
    place(header_, header_->lines_within(columns) * heights.line);
    place(plot_, plot_->height());
    place(footer_, footer_lines(columns) * heights.line);
    place(results_, results_rows * heights.result);
    constexpr int from_edge = 8;
    cursor_read_outs_->move(
        plot_->place_of(plot::left + from_edge, plot::top + from_edge).toPoint());
    cursor_numbers_->fit();
    for (const QWidget* row : {footer_, results_}) {
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
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), frame_corner,
                            frame_corner);
}

} // namespace kv408::ui
