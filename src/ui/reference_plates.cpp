#include "ui/reference_plates.h"

#include <QCheckBox>
#include <QPainter>
#include <QVBoxLayout>

#include "display/box_geometry.h"
#include "state/plot_geometry.h"
#include "ui/bind.h"
#include "ui/colours.h"
#include "ui/plate.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// A check box on a plate that lets the picture shine through.
class ReferencePlate : public QCheckBox {
public:
    explicit ReferencePlate(QWidget* parent) : QCheckBox(parent) {
        let_paint_itself(*this);
        setContentsMargins(6, 1, 6, 1);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        fill_plate(*this);
        QCheckBox::paintEvent(event);
    }
};

} // namespace

ReferencePlates::ReferencePlates(PlotWidget* plot, ReferenceMenu& references, MathsDialog& maths,
                                 ScopeDriver& driver)
    : QWidget(plot), plot_(*plot) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    for (std::size_t place = 0; place < References::count; ++place) {
        ReferenceControls& controls = references.controls(place);
        auto* const plate = new ReferencePlate(this);
        bind(plate, controls.mnuReferenceShow, driver);
        Label& label = controls.lblReference;
        keep_shown(*plate, label, [plate, &label] {
            const QString caption = QString::fromStdString(label.caption());
            plate->setText(caption);
            describe(*plate, {u"Reference "_s + caption,
                              u"Shows the reference under the traces, or hides it"_s});
            show_colours(*plate, label.fore_colour(), {});
            plate->setVisible(label.visible());
        });
        layout->addWidget(plate, 0, Qt::AlignRight);
    }
    for (std::size_t place = 0; place < MathsDialog::count; ++place) {
        auto* const plate = new Plate(this);
        describe(*plate, {u"Computed trace"_s, u"What Tools, Maths computes, and its scale"_s});
        bind(plate, maths.tool(place).controls().lblMaths);
        layout->addWidget(plate, 0, Qt::AlignRight);
    }
}

void ReferencePlates::fit() {
    constexpr int from_edge = 8;
    const QPointF corner =
        plot_.place_of(box::left + plot::width - from_edge, box::top + from_edge);
    move(static_cast<int>(corner.x()) - width(), static_cast<int>(corner.y()));
}

void ReferencePlates::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fit();
}

} // namespace kv408::ui
