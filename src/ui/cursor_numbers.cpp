#include "ui/cursor_numbers.h"

#include <algorithm>

#include "display/box_geometry.h"
#include "ui/colours.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int letters = 11; ///< height of a number's letters, pixels of the picture

/// Upper left corner of number `index` in the plot box.
box::Corner corner_of(const CursorState& cursors, std::size_t index) {
    const int number = static_cast<int>(index);
    return cursor_mode::is_voltage(cursors.cursormode)
               ? box::row_number(cursors.vpos.at(index), number)
               : box::column_number(cursors.hpos.at(index), number);
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
            const box::Corner corner = corner_of(cursors_, index);
            const QPointF from = plot_.place_of(corner.left, corner.top);
            const QPointF to =
                plot_.place_of(corner.left + box::number_width, corner.top + box::number_height);
            label.setGeometry(QRectF(from, to).toAlignedRect());
            QFont scaled = plot_.font();
            scaled.setBold(true);
            scaled.setPixelSize(std::max(1, static_cast<int>(plot_.place_of(0, letters).y())));
            label.setFont(scaled);
        }
        label.setVisible(shown);
    }
}

} // namespace kv408::ui
