#include "ui/statistics_grid.h"

#include <algorithm>
#include <array>
#include <optional>

#include <QEvent>
#include <QGlyphRun>
#include <QHeaderView>
#include <QPainter>
#include <QRawFont>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "export/statistics_table.h"
#include "measure/measurement_rows.h"
#include "ui/colours.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int shown_rows = 14; ///< without scrolling, where there is room

int rows_per_channel() {
    return static_cast<int>(measurement_rows().size());
}

QString heading_of(std::size_t column) {
    const std::string_view text = statistics_headings.at(column);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Paints a cell plainly: laying its text out as the style does takes most of a refresh.
class PlainCell : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        constexpr int beside_text = 4;
        const bool chosen = (option.state & QStyle::State_Selected) != 0;
        const QPalette& palette = option.palette;
        const QVariant back = index.data(Qt::BackgroundRole);
        if (chosen) {
            painter->fillRect(option.rect, palette.color(QPalette::Highlight));
        }
        if (back.isValid()) {
            // In the chosen row its edge shows that it is chosen.
            const int edge = chosen ? 2 : 0;
            painter->fillRect(option.rect.adjusted(edge, edge, -edge, -edge), back.value<QBrush>());
        }
        const QVariant fore = index.data(Qt::ForegroundRole);
        painter->setPen(back.isValid() && fore.isValid()
                            ? fore.value<QBrush>().color()
                            : palette.color(chosen ? QPalette::HighlightedText : QPalette::Text));
        const auto alignment =
            static_cast<Qt::Alignment>(index.data(Qt::TextAlignmentRole).toInt());
        draw_text(*painter, option, option.rect.adjusted(beside_text, 0, -beside_text, 0),
                  alignment, index.data(Qt::DisplayRole).toString());
    }

private:
    /// Draws `text` letter by letter where that is what its layout comes to: Latin letters and
    /// digits that fit `place`.
    void draw_text(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place,
                   Qt::Alignment alignment, const QString& text) const {
        if (font_ != option.font) {
            take_font(option.font);
        }
        const bool plain =
            raw_font_.isValid() && std::all_of(text.begin(), text.end(), [](QChar letter) {
                return letter.unicode() < ascii_letters;
            });
        QList<quint32> glyphs;
        QList<QPointF> places;
        double end = 0.0;
        if (plain) {
            glyphs.reserve(text.size());
            places.reserve(text.size());
            for (const QChar letter : text) {
                const Letter& drawn = letters_.at(letter.unicode());
                glyphs.append(drawn.glyph);
                places.append(QPointF(end, 0.0));
                end += drawn.advance;
            }
        }
        if (!plain || end > place.width()) {
            painter.drawText(place, static_cast<int>(alignment) | Qt::TextSingleLine, text);
            return;
        }
        QGlyphRun run;
        run.setRawFont(raw_font_);
        run.setGlyphIndexes(glyphs);
        run.setPositions(places);
        const bool right = alignment.testFlag(Qt::AlignRight);
        const QFontMetrics& metrics = option.fontMetrics;
        const int above = (place.height() - metrics.height()) / 2;
        painter.drawGlyphRun(QPointF(right ? place.x() + place.width() - end : place.x(),
                                     place.y() + above + metrics.ascent()),
                             run);
    }

    /// Keeps what the letters of `font` look like: asking for them took most of a cell.
    void take_font(const QFont& font) const {
        font_ = font;
        raw_font_ = QRawFont::fromFont(font);
        for (std::size_t code = 0; code < ascii_letters; ++code) {
            const QList<quint32> glyph =
                raw_font_.glyphIndexesForString(QString(QChar(static_cast<char16_t>(code))));
            const QList<QPointF> advance = raw_font_.advancesForGlyphIndexes(glyph);
            letters_.at(code) = glyph.isEmpty() ? Letter{} : Letter{glyph[0], advance[0].x()};
        }
    }

    static constexpr std::size_t ascii_letters = 0x7F;
    struct Letter {
        quint32 glyph = 0;
        double advance = 0.0; ///< pixels to the next one
    };

    mutable std::optional<QFont> font_; ///< nothing before the first cell
    mutable QRawFont raw_font_;
    mutable std::array<Letter, ascii_letters> letters_{};
};

} // namespace

StatisticsGrid::StatisticsGrid(StatisticsDialog& dialog, ScopeDriver& driver, QWidget* parent)
    : QTableWidget(2 * rows_per_channel(), static_cast<int>(statistics_headings.size()), parent),
      dialog_(dialog) {
    setObjectName(u"grdStatistics"_s);
    describe(*this, {u"Statistics"_s,
                     u"Each measurement of each channel; the chosen row is that of trend and "
                     u"limits"_s});
    QStringList headings;
    for (std::size_t column = 0; column < statistics_headings.size(); ++column) {
        headings.append(heading_of(column));
    }
    setHorizontalHeaderLabels(headings);
    verticalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setItemDelegate(new PlainCell(this));
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            auto* const cell = new QTableWidgetItem;
            const bool text = column == 0 || column == columnCount() - 1;
            cell->setTextAlignment(Qt::AlignVCenter | (text ? Qt::AlignLeft : Qt::AlignRight));
            setItem(row, column, cell);
        }
    }
    fit_columns();
    connect(this, &QTableWidget::currentCellChanged, this,
            [this, &driver](int row, int /*column*/, int before) {
                if (row >= 0 && row != before) {
                    driver.act([this, row] {
                        dialog_.choose(static_cast<std::size_t>(row / rows_per_channel()),
                                       static_cast<std::size_t>(row % rows_per_channel()));
                    });
                }
            });
}

void StatisticsGrid::refresh() {
    for (int row = 0; row < rowCount(); ++row) {
        show_row(row);
    }
    const int chosen = static_cast<int>(dialog_.chosen_channel()) * rows_per_channel() +
                       static_cast<int>(dialog_.chosen_row());
    if (chosen != currentRow()) {
        const QSignalBlocker silent(this);
        setCurrentCell(chosen, 0);
    }
}

void StatisticsGrid::show_row(int row) {
    const auto channel = static_cast<std::size_t>(row / rows_per_channel());
    const auto measurement = static_cast<std::size_t>(row % rows_per_channel());
    const StatisticsCells cells = statistics_cells(dialog_.statistics(), channel, measurement);
    const bool outside = is_outside(dialog_.statistics(), channel, measurement);
    for (int column = 0; column < columnCount(); ++column) {
        QTableWidgetItem& cell = *item(row, column);
        const QString text = QString::fromStdString(cells.at(static_cast<std::size_t>(column)));
        if (cell.text() != text) {
            cell.setText(text);
        }
    }
    QTableWidgetItem& present = *item(row, static_cast<int>(statistics_column::present));
    const QColor colour =
        qcolor(limit_colours.at(dialog_.rule(channel, measurement).colour).colour);
    const QBrush back = outside ? QBrush(colour) : QBrush();
    if (present.background() != back) {
        present.setBackground(back);
        present.setForeground(outside ? QBrush(readable_on(colour)) : QBrush());
    }
}

void StatisticsGrid::fit_columns() {
    constexpr int around = 14;
    const QFontMetrics letters = fontMetrics();
    verticalHeader()->setDefaultSectionSize(letters.height() + 4);
    for (int column = 0; column < columnCount(); ++column) {
        const QString widest = column == 0 ? u"CH2 Frequency"_s : u"-888.8MHz"_s;
        setColumnWidth(column, std::max(letters.horizontalAdvance(widest),
                                        letters.horizontalAdvance(
                                            heading_of(static_cast<std::size_t>(column)))) +
                                   around);
    }
}

QSize StatisticsGrid::sizeHint() const {
    int width = verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    for (int column = 0; column + 1 < columnCount(); ++column) {
        width += columnWidth(column);
    }
    width += fontMetrics().horizontalAdvance(u"88888: no edge on the screen; 888: steeper "_s);
    return {width, shown_rows * verticalHeader()->defaultSectionSize() +
                       horizontalHeader()->sizeHint().height() + 2 * frameWidth()};
}

void StatisticsGrid::changeEvent(QEvent* event) {
    QTableWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fit_columns();
    }
}

} // namespace kv408::ui
