#include "ui/cursor_numbers.h"

#include "display/box_geometry.h"
#include "ui/colours.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// Where number `index` stands on `plot`, `growth` times as large as at natural size: beside the
/// marker of the trigger level, or above the line.
QRectF place_of_number(const PlotWidget& plot, const CursorState& cursors, std::size_t index,
                       double growth) {
    const int number = static_cast<int>(index);
    QRectF place({}, QSizeF(box::number_width, box::number_height) * growth);
    if (cursor_mode::is_voltage(cursors.cursormode)) {
        const box::Corner corner = box::row_number(cursors.vpos.at(index), number);
        const box::Corner marker = box::right_marker(cursors.vpos.at(index));
        const QPointF beside = plot.place_of(marker.left, corner.top + box::number_height / 2.0);
        place.moveTopLeft(
            {beside.x() + (corner.left - marker.left) * growth, beside.y() - place.height() / 2});
        return place;
    }
    const box::Corner corner = box::column_number(cursors.hpos.at(index), number);
    const QPointF below = plot.place_of(corner.left + (number == 0 ? box::number_width : 0),
                                        corner.top + box::number_height);
    place.moveBottomLeft({below.x() - (number == 0 ? place.width() : 0), below.y()});
    return place;
}

} // namespace

CursorNumbers::CursorNumbers(PlotWidget* plot, QWidget& read_out) : plot_(*plot) {
    for (std::size_t index = 0; index < numbers_.size(); ++index) {
        const QString number = QString::number(index + 1);
        auto* const label = new QLabel(number, plot);
        label->setObjectName(u"cursorNumber"_s + number);
        label->setAlignment(Qt::AlignCenter);
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        describe(*label, {u"Line of cursor "_s + number, u"The line of cursor "_s + number});
        follow_colours(*label, read_out);
        label->hide();
        // The markers stay in front.
        label->lower();
        numbers_.at(index) = label;
    }
}

void CursorNumbers::show(const CursorState& cursors) {
    cursors_ = cursors;
    fit();
}

void CursorNumbers::fit() {
    const bool shown =
        cursor_mode::is_voltage(cursors_.cursormode) || cursor_mode::is_time(cursors_.cursormode);
    for (std::size_t index = 0; index < numbers_.size(); ++index) {
        QLabel& label = *numbers_.at(index);
        if (shown) {
            const double growth = plot_.margin_growth();
            label.setGeometry(place_of_number(plot_, cursors_, index, growth).toAlignedRect());
            label.setFont(plot_.margin_font());
        }
        label.setVisible(shown);
    }
}

} // namespace kv408::ui
