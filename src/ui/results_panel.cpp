#include "ui/results_panel.h"

#include <algorithm>
#include <cmath>

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>

#include "ui/bind.h"
#include "ui/colours.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int rows = results_rows;
constexpr int usual_name_width = 90;

/// Covers results that are old, so that they are shown faintly.
class Veil : public QWidget {
public:
    explicit Veil(QWidget* results) : QWidget(results) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        constexpr float density = 0.6F;
        QColor ground = palette().color(QPalette::Window);
        ground.setAlphaF(density);
        QPainter(this).fillRect(rect(), ground);
    }
};

/// Fills `place`, a line one unit of the window thick, in whole pixels of the screen: what is as
/// thick wherever it lies looks so. A pixel that is not wholly the line's may be a text's.
void draw_rule(QPainter& painter, const QRect& place, const QColor& colour) {
    const QTransform to_pixels = painter.deviceTransform();
    const QRectF exact = to_pixels.mapRect(QRectF(place));
    const auto extent = [](int units, double pixels) {
        return units == 1 ? std::max(1.0, std::floor(pixels)) : std::round(pixels);
    };
    const QRectF whole(std::round(exact.left()), std::round(exact.top()),
                       extent(place.width(), exact.width()),
                       extent(place.height(), exact.height()));
    painter.fillRect(to_pixels.inverted().mapRect(whole), colour);
}

/// The panel with a rule above each of its rows and one between the channels.
class ResultsPanel : public QWidget {
public:
    using QWidget::QWidget;

    /// Shows the results faint, as those that are old, or as they are.
    void dim(bool dimmed) {
        veil_->raise();
        veil_->setVisible(dimmed);
    }

    /// Takes the layout of the half that bears the names.
    void set_names(QGridLayout* names) { names_ = names; }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        veil_->setGeometry(rect());
        place_names();
    }

    void changeEvent(QEvent* event) override {
        QWidget::changeEvent(event);
        if (event->type() == QEvent::FontChange && names_ != nullptr) {
            place_names();
        }
    }

    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const QMargins margins = layout()->contentsMargins();
        const QColor rule = palette().color(QPalette::WindowText);
        for (int row = 0; row < rows; ++row) {
            const int top = row * height() / rows;
            draw_rule(painter, {margins.left(), top, width() - margins.left() - margins.right(), 1},
                      rule);
        }
        draw_rule(painter, {between_channels() - results_measure::rule_gap / 2, 0, 1, height()},
                  rule);
    }

private:
    void place_names() {
        names_->setColumnMinimumWidth(0, results_measure::mark_width(fontMetrics()));
        // In a narrow panel the values come closer to the names.
        const int least = fontMetrics().horizontalAdvance(u"Vmean "_s);
        names_->setColumnMinimumWidth(
            1, std::clamp(width() / 7, least, std::max(least, usual_name_width)));
    }

    /// Where the half of the second channel begins.
    [[nodiscard]] int between_channels() const {
        const auto& halves = static_cast<const QHBoxLayout&>(*layout());
        return halves.stretch(0) == halves.stretch(1) ? width() / 2
                                                      : halves.itemAt(1)->geometry().left();
    }

    QGridLayout* names_ = nullptr;
    Veil* veil_ = new Veil(this);
};

QLabel* make_result(QWidget* parent, Label& control, const Words& words) {
    auto* const label = new QLabel(parent);
    describe(*label, words);
    bind(label, control);
    return label;
}

/// One half of the panel, as wide as its stretch in the layout says, whatever it holds.
QGridLayout* make_half(QWidget* panel) {
    auto* const half = new QWidget(panel);
    half->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* const grid = new QGridLayout(half);
    // Each row leaves its first line of pixels to the rule.
    grid->setContentsMargins(0, 1, 0, 0);
    grid->setHorizontalSpacing(0);
    grid->setVerticalSpacing(1);
    for (int row = 0; row < rows; ++row) {
        grid->setRowStretch(row, 1);
    }
    panel->layout()->addWidget(half);
    return grid;
}

} // namespace

int results_measure::mark_width(const QFontMetrics& letters) {
    constexpr int usual = 14;
    return std::max(usual, 2 * letters.horizontalAdvance(u'*'));
}

QWidget* make_results_panel(FrontPanel& panel, QWidget* parent) {
    auto* const results = new ResultsPanel(parent);
    describe(*results, {u"Measurement results"_s, u"Results of the measurements of CH1 and CH2"_s});
    auto* const halves = new QHBoxLayout(results);
    halves->setContentsMargins(0, 0, 0, 0);
    halves->setSpacing(0);
    QGridLayout* const left = make_half(results);
    left->setContentsMargins(0, 1, results_measure::rule_gap, 0);
    results->set_names(left);
    left->setColumnStretch(2, 1);
    QGridLayout* const right = make_half(results);
    right->setColumnStretch(0, 1);
    for (int row = 0; row < rows; ++row) {
        MeasurementControls& slot = panel.measurement[static_cast<std::size_t>(row)];
        const QString measurement = u"Measurement "_s + QString::number(row + 1);
        left->addWidget(make_result(left->parentWidget(), slot.mark,
                                    {measurement + u" marked"_s,
                                     u"* where the measurement is marked on the trace"_s}),
                        row, 0);
        left->addWidget(
            make_result(left->parentWidget(), slot.label, {measurement, u"What is measured"_s}),
            row, 1);
        left->addWidget(make_result(left->parentWidget(), slot.ch1,
                                    {measurement + u" of CH1"_s, u"Result of CH1"_s}),
                        row, 2);
        right->addWidget(make_result(right->parentWidget(), slot.ch2,
                                     {measurement + u" of CH2"_s, u"Result of CH2"_s}),
                         row, 0);
    }
    bind_appearance(results, panel.picmeasure, [results](bool dimmed) { results->dim(dimmed); });
    return results;
}

} // namespace kv408::ui
