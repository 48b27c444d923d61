#include "ui/screen_panel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "display/box_geometry.h"
#include "ui/bind.h"
#include "ui/colours.h"
#include "ui/lengths.h"
#include "ui/marker.h"
#include "ui/plate.h"
#include "ui/results_panel.h"
#include "ui/screen_header.h"
#include "ui/screen_label.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int padding = 4;
constexpr int footer_spacing = 12;
constexpr double growth_step = 0.25; ///< of the texts
constexpr double most_growth = 2.0;  ///< of the texts
constexpr int most_lines = 6;        ///< of read-outs: four above the plot, two below it

/// A scale at which the plot is `pixels` wide.
PlotScale scale_of_width(int pixels) {
    return PlotScale(static_cast<double>(pixels) / plot::width);
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

} // namespace

ScreenPanel::ScreenPanel(ScaledPicture picture, FrontPanel& panel, QWidget* parent)
    : QWidget(parent), plot_(new PlotWidget(std::move(picture), this)),
      header_(new ScreenHeader(panel, this)), footer_(make_footer(panel)),
      results_(make_results_panel(panel, this)), cursor_read_outs_(make_cursor_read_outs(panel)) {
    describe(*plot_, {u"Plot"_s, u"The traces of both channels, 10 by 8 divisions"_s});
    bind_appearance(plot_, panel.picture1, [this](bool dimmed) { plot_->set_dimmed(dimmed); });
    plot_->installEventFilter(this);
    make_markers(panel);
    cursor_numbers_.emplace(plot_, *cursor_read_outs_->findChild<QLabel*>());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ScreenPanel::add_references(ReferenceMenu& references, MathsDialog& maths,
                                 ScopeDriver& driver) {
    references_ = new ReferencePlates(plot_, references, maths, driver);
}

void ScreenPanel::add_clipping_marks(ReadoutsControls& controls) {
    for (const auto edge : {ClippingMarks::Edge::upper, ClippingMarks::Edge::lower}) {
        clipping_marks_.push_back(new ClippingMarks(plot_, controls, edge));
    }
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
    const auto make = [this](MarkerLabel& control, Marker::Direction direction,
                             const Words& words) {
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

QSize ScreenPanel::size_of_rows(int lines, const RowHeights& heights) {
    return {2 * padding, lines * heights.line + results_rows * heights.result + 2 * padding};
}

ScreenPanel::RowHeights ScreenPanel::usual_heights(double growth) const {
    const int letters = static_cast<int>(std::ceil(fontMetrics().height() * growth));
    return {.line = std::max(24, letters + 7), .result = std::max(20, letters + 3)};
}

ScreenPanel::RowHeights ScreenPanel::least_heights() const {
    const int letters = fontMetrics().height();
    return {.line = letters + 2, .result = letters + 2};
}

double ScreenPanel::growth_at(const PlotScale& scale, qreal ratio) {
    const double unit = scale.factor() / ratio;
    return std::clamp(std::floor(unit / growth_step) * growth_step, 1.0, most_growth);
}

int ScreenPanel::footer_lines(int columns, double growth) const {
    QFont bold = font();
    bold.setBold(true);
    const int longest = QFontMetrics(bold).horizontalAdvance(u"CH2"_s) + footer_spacing +
                        fontMetrics().horizontalAdvance(u"50mV (VT) (inv)"_s);
    return 2 * longest * growth <= columns ? 1 : 2;
}

void ScreenPanel::stack_footer(int lines) {
    for (QBoxLayout* const half : footer_halves_) {
        half->setDirection(lines > 1 ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        half->setSpacing(lines > 1 ? 0 : footer_spacing);
    }
}

void ScreenPanel::grow_texts(double growth) {
    if (growth == growth_) {
        return;
    }
    growth_ = growth;
    QFont grown = font();
    if (grown.pointSizeF() > 0.0) {
        grown.setPointSizeF(grown.pointSizeF() * growth);
    } else {
        grown.setPixelSize(static_cast<int>(std::lround(grown.pixelSize() * growth)));
    }
    for (QWidget* const texts : {static_cast<QWidget*>(header_), footer_, results_,
                                 cursor_read_outs_, static_cast<QWidget*>(references_)}) {
        if (texts != nullptr) {
            texts->setFont(grown);
        }
    }
    for (ClippingMarks* const marks : clipping_marks_) {
        marks->setFont(grown);
    }
}

int ScreenPanel::lines_around(const PlotScale& scale, qreal ratio) const {
    const double growth = growth_at(scale, ratio);
    const int columns = PlotWidget::size_at(scale, ratio).width() * plot::width / box::width;
    return header_->lines_within(columns, growth) + footer_lines(columns, growth);
}

QSize ScreenPanel::size_around(const PlotScale& scale, qreal ratio,
                               const RowHeights& heights) const {
    return PlotWidget::size_at(scale, ratio) + size_of_rows(lines_around(scale, ratio), heights);
}

QSize ScreenPanel::sizeHint() const {
    const qreal ratio = std::max(1.0, devicePixelRatioF());
    return size_around(PlotScale(ratio), ratio, usual_heights(1.0)) + QSize(0, padding);
}

QSize ScreenPanel::minimumSizeHint() const {
    // The outermost columns of the plot box are empty.
    constexpr int empty = 2;
    return size_around(PlotScale(), std::max(1.0, devicePixelRatioF()), least_heights()) -
           QSize(2 * (padding + empty), 0);
}

bool ScreenPanel::fits(const PlotScale& scale) const {
    const QSize needed = size_around(scale, ratio_, usual_heights(growth_at(scale, ratio_)));
    return needed.width() <= width() && needed.height() <= height();
}

PlotScale ScreenPanel::largest_scale() const {
    // A larger plot may need less height, as its texts stand in fewer lines. With texts of one size
    // in a given number of lines it always needs more.
    for (double growth = most_growth; growth >= 1.0; growth -= growth_step) {
        for (int lines = 2; lines <= most_lines; ++lines) {
            const PlotScale scale = largest_with(growth, lines);
            if (growth_at(scale, ratio_) == growth && lines_around(scale, ratio_) <= lines &&
                fits(scale)) {
                return scale;
            }
        }
    }
    return PlotScale();
}

PlotScale ScreenPanel::largest_with(double growth, int lines) const {
    const QSize room = size() - size_of_rows(lines, usual_heights(growth));
    const auto fitting = [&](const PlotScale& scale) {
        const QSize needed = PlotWidget::size_at(scale, ratio_);
        return growth_at(scale, ratio_) <= growth && needed.width() <= room.width() &&
               needed.height() <= room.height();
    };
    int widest = plot::width;
    int beyond = PlotScale(PlotScale::largest).width() + 1;
    while (beyond - widest > 1) {
        const int middle = (widest + beyond) / 2;
        (fitting(scale_of_width(middle)) ? widest : beyond) = middle;
    }
    // At whole twentieths the divisions are of one size. The last unit of the window need not be
    // filled for that.
    constexpr double steps = 20.0;
    const double twentieths = scale_of_width(widest).factor() * steps;
    for (const double whole : {std::ceil(twentieths), std::floor(twentieths)}) {
        const PlotScale even(whole / steps);
        if (widest - even.width() < ratio_ && fitting(even)) {
            return even;
        }
    }
    return scale_of_width(widest);
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
    const PlotScale scale = largest_scale();
    grow_texts(growth_at(scale, ratio_));
    plot_->set_scale(scale);
    place_parts(fits(scale) ? usual_heights(growth_) : least_heights());
}

void ScreenPanel::place_parts(const RowHeights& heights) {
    const auto edge = [this](int column) {
        return static_cast<int>(std::lround(plot_->place_of(column, 0).x()));
    };
    const int left = edge(box::left);
    const int right = plot_->width() - edge(box::left + plot::width);
    const int columns = plot_->width() - left - right;
    const int footer = footer_lines(columns, growth_);
    // The results have their place also while they are hidden.
    const int needed = size_around(plot_->scale(), ratio_, heights).height();
    int top = (height() - needed + padding) / 2;
    const auto place = [&](QWidget* widget, int high) {
        widget->setGeometry((width() - plot_->width()) / 2, top, plot_->width(), high);
        top += high;
    };
    stack_footer(footer);
    header_->set_margins(left, right);
    place(header_, header_->lines_within(columns, growth_) * heights.line);
    place(plot_, plot_->height());
    place(footer_, footer * heights.line);
    place(results_, results_rows * heights.result);
    constexpr int from_edge = 8;
    cursor_read_outs_->move(plot_->place_of(box::left + from_edge, box::top + from_edge).toPoint());
    cursor_numbers_->fit();
    if (references_ != nullptr) {
        references_->fit();
    }
    for (ClippingMarks* const marks : clipping_marks_) {
        marks->fit();
    }
    for (const QWidget* row : {footer_, results_}) {
        row->layout()->setContentsMargins(left, 0, right, 0);
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
