#include "ui/screen_header.h"

#include <cmath>
#include <cstddef>

#include <QEvent>
#include <QFontInfo>

#include "ui/screen_label.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int spacing = 16;

} // namespace

ScreenHeader::ScreenHeader(FrontPanel& panel, QWidget* parent) : QWidget(parent) {
    make_timing(panel);
    make_state(panel);
}

void ScreenHeader::make_timing(FrontPanel& panel) {
    QLabel* const time =
        make_screen_label(this, panel.tdivtext, {u"Time per division"_s, u"Time per division"_s});
    QFont bold = time->font();
    bold.setBold(true);
    time->setFont(bold);
    timing_.push_back({time, u"100us/div"_s});
    for (std::size_t index = 0; index < panel.channel.size(); ++index) {
        const QString number = QString::number(index + 1);
        QLabel* const delay = make_screen_label(
            this, panel.channel[index].hor_delay,
            {u"Delay of CH"_s + number, u"Horizontal delay of CH"_s + number + u", picoseconds"_s});
        timing_.push_back({delay, u"Delay:  65535ps"_s});
    }
}

void ScreenHeader::make_state(FrontPanel& panel) {
    state_.push_back(
        {make_screen_label(this, panel.avglabel,
                           {u"Averaging"_s, u"Shown while the instrument averages its samples"_s}),
         u"Filter Avg."_s});
    state_.push_back(
        {make_screen_label(this, panel.lbldate, {u"Time and date"_s, u"Time and date"_s}),
         u"00:00:00, 00.00.00"_s});
}

std::vector<int> ScreenHeader::lines_of(int width, double growth) const {
    std::vector<int> lines;
    int line = 0;
    int used = 0;
    const auto put = [&](int needed) {
        if (used > 0 && used + spacing + needed > width) {
            ++line;
            used = 0;
        }
        used += (used > 0 ? spacing : 0) + needed;
        lines.push_back(line);
    };
    const auto width_of = [growth](const Entry& entry) {
        return static_cast<int>(
            std::ceil(entry.label->fontMetrics().horizontalAdvance(entry.longest) * growth));
    };
    for (const Entry& entry : timing_) {
        put(width_of(entry));
    }
    int state = -spacing;
    for (const Entry& entry : state_) {
        state += spacing + width_of(entry);
    }
    put(state);
    return lines;
}

int ScreenHeader::lines_within(int width, double growth) const {
    const double present =
        QFontInfo(font()).pointSizeF() / QFontInfo(parentWidget()->font()).pointSizeF();
    return lines_of(width, growth / present).back() + 1;
}

void ScreenHeader::set_margins(int left, int right) {
    left_margin_ = left;
    right_margin_ = right;
    lay_out();
}

bool ScreenHeader::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        lay_out();
    }
    return QWidget::event(event);
}

void ScreenHeader::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    lay_out();
}

void ScreenHeader::lay_out() {
    const std::vector<int> lines = lines_of(width() - left_margin_ - right_margin_, 1.0);
    const int high = height() / (lines.back() + 1);
    int left = left_margin_;
    for (std::size_t index = 0; index < timing_.size(); ++index) {
        if (index > 0 && lines[index] != lines[index - 1]) {
            left = left_margin_;
        }
        QLabel& label = *timing_[index].label;
        label.setGeometry(left, lines[index] * high, label.sizeHint().width(), high);
        left += label.width() + spacing;
    }
    int right = width() - right_margin_;
    for (std::size_t behind = state_.size(); behind > 0; --behind) {
        const Entry& entry = state_[behind - 1];
        const int wide = entry.label->sizeHint().width();
        entry.label->setGeometry(right - wide, lines.back() * high, wide, high);
        right -= wide + spacing;
    }
}

} // namespace kv408::ui
