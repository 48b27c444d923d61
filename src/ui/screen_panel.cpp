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

using namespace screen_measure;

/// A column with room to spare is so much wider than it has to be, at most.
constexpr double ease_of_column = 1.25;

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

void ScreenPanel::set_beside(PanelFrame* status) {
    if (beside_ == status) {
        return;
    }
    beside_ = status;
    if (status != nullptr) {
        status->setParent(this);
        status->show();
    }
    for (QWidget* const row : {footer_, results_}) {
        auto& halves = static_cast<QHBoxLayout&>(*row->layout());
        halves.setStretch(0, status != nullptr ? first_part : 0);
        halves.setStretch(1, status != nullptr ? second_part : 0);
    }
    updateGeometry();
    fit();
}

PlotRoom ScreenPanel::present_room() const {
    return {.size = size(), .ratio = devicePixelRatioF(), .beside = beside_};
}

std::optional<PlotScale> ScreenPanel::scale_in(QSize size, const PanelFrame* beside) const {
    const QSize least = least_size(beside);
    if (least.width() > size.width() || least.height() > size.height()) {
        return std::nullopt;
    }
    return sizes_.largest_scale({.size = size, .ratio = devicePixelRatioF(), .beside = beside});
}

void ScreenPanel::stack_footer(int lines) {
    for (QBoxLayout* const half : footer_halves_) {
        half->setDirection(lines > 1 ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        half->setSpacing(lines > 1 ? 0 : static_cast<int>(std::lround(footer_spacing * growth_)));
    }
}

void ScreenPanel::grow_texts(double growth) {
    if (growth == growth_) {
        return;
    }
    growth_ = growth;
    const QFont letters = grown(font(), growth);
    for (QWidget* const texts : {static_cast<QWidget*>(header_), footer_, results_,
                                 cursor_read_outs_, static_cast<QWidget*>(references_)}) {
        if (texts != nullptr) {
            texts->setFont(letters);
        }
    }
    for (ClippingMarks* const marks : clipping_marks_) {
        marks->setFont(letters);
    }
}

QSize ScreenPanel::sizeHint() const {
    const qreal ratio = std::max(1.0, devicePixelRatioF());
    const PlotRoom room{.size = {}, .ratio = ratio, .beside = nullptr};
    return sizes_.size_around(PlotScale(ratio), room, sizes_.usual_heights(1.0)) +
           QSize(0, padding);
}

int ScreenPanel::whole_width() const {
    // A plot that cannot be smaller has no need of what is empty at its sides.
    return devicePixelRatioF() > 1.0 ? sizeHint().width() : least_size(nullptr).width();
}

QSize ScreenPanel::least_size(const PanelFrame* beside) const {
    const PlotRoom room{.size = {}, .ratio = std::max(1.0, devicePixelRatioF()), .beside = beside};
    const int sides = beside != nullptr ? 1 : 2;
    return sizes_.size_around(PlotScale(), room, sizes_.least_heights()) -
           QSize(sides * (padding + empty_columns), 0);
}

QSize ScreenPanel::minimumSizeHint() const {
    return least_size(beside_);
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
    const PlotRoom room = present_room();
    ratio_ = room.ratio;
    const PlotScale scale = sizes_.largest_scale(room);
    grow_texts(ScreenSizes::growth_at(scale, room.ratio));
    plot_->set_scale(scale);
    place_parts(sizes_.fits(scale, room) ? sizes_.usual_heights(growth_) : sizes_.least_heights());
}

void ScreenPanel::place_parts(const RowHeights& heights) {
    const auto edge = [this](int column) {
        return static_cast<int>(std::lround(plot_->place_of(column, 0).x()));
    };
    const int left = edge(box::left);
    const int right = plot_->width() - edge(box::left + plot::width);
    const int columns = plot_->width() - left - right;
    // The results have their place also while they are hidden.
    const int needed = sizes_.size_around(plot_->scale(), present_room(), heights).height();
    int top = (height() - needed + padding) / 2;
    int column = 0;
    if (beside_ != nullptr) {
        const int least = sizes_.column_width(*beside_, growth_);
        column = std::clamp(width() - padding - plot_->width() - padding, least,
                            static_cast<int>(least * ease_of_column));
    }
    const int from = (width() - plot_->width() - column) / 2;
    const auto place = [&](QWidget* widget, int high) {
        widget->setGeometry(from, top, plot_->width(), high);
        top += high;
    };
    header_->set_margins(left, right);
    place(header_, header_->lines_within(columns, growth_) * heights.line);
    place(plot_, plot_->height());
    const bool beneath = beside_ == nullptr;
    for (const QWidget* row : {footer_, results_}) {
        row->layout()->setContentsMargins(beneath ? left : 0, 0, beneath ? right : 0, 0);
    }
    if (beneath) {
        const int footer = sizes_.footer_lines_beneath(columns, growth_);
        stack_footer(footer);
        place(footer_, footer * heights.line);
        place(results_, results_rows * heights.result);
    } else {
        const int area = plot_->y() + static_cast<int>(plot_->place_of(0, box::top).y());
        place_column({from + plot_->width(), area, column, height() - area}, heights);
    }
    constexpr int from_edge = 8;
    cursor_read_outs_->move(plot_->place_of(box::left + from_edge, box::top + from_edge).toPoint());
    cursor_numbers_->fit();
    if (references_ != nullptr) {
        references_->fit();
    }
    for (ClippingMarks* const marks : clipping_marks_) {
        marks->fit();
    }
}

void ScreenPanel::place_column(const QRect& place, const RowHeights& heights) {
    int top = place.top();
    const auto put = [&](QWidget* widget, int high) {
        widget->setGeometry(place.left(), top, place.width(), high);
        top += high;
    };
    const int footer = sizes_.footer_lines_beside(place.width(), growth_);
    stack_footer(footer);
    put(footer_, footer * heights.line);
    put(results_, results_rows * heights.result);
    top += heights.result;
    const bool stacked = !beside_->shows_both_halves_in(place.width());
    beside_->stack_parts(stacked);
    put(beside_, beside_->usual_height(stacked));
}

void ScreenPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange || font_changed_) {
        return;
    }
    // What lies in here hears of it after this.
    font_changed_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            font_changed_ = false;
            growth_ = 0.0; // so the texts take the new font
            updateGeometry();
            fit();
        },
        Qt::QueuedConnection);
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
