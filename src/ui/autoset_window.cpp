#include "ui/autoset_window.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/lengths.h"
#include "ui/tool_widgets.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

} // namespace

AutosetWindow::AutosetWindow(Autoset& autoset, ScopeDriver& driver, QWidget& owner)
    : QDialog(&owner), autoset_(autoset), driver_(driver), owner_(owner),
      progress_(new QProgressBar(this)) {
    constexpr int least_width = 460; // for the longest line in two
    constexpr int whole = 100;
    setObjectName(u"frmAutoset"_s);
    setWindowTitle(u"Kv408 - Tarvo  Autoset"_s);
    setMinimumWidth(least_width);
    QVBoxLayout* const layout = make_window_layout(*this);
    WidgetMaker make(this, driver);
    layout->addWidget(make_told(make, autoset.controls().lblAutoset,
                                {u"Autoset"_s, u"What it does, and then what it has found"_s}),
                      1);
    progress_->setObjectName(u"barAutoset"_s);
    progress_->setRange(0, whole);
    progress_->setTextVisible(false);
    describe(*progress_, {u"Progress of Autoset"_s, u"How much of its longest time has passed"_s});
    layout->addWidget(progress_);
    auto* const ending = new QHBoxLayout;
    ending->addStretch();
    cancel_ = make.button(autoset.controls().cmdAutosetCancel, u"Ca&ncel"_s,
                          {u"Cancel"_s, u"Ends it; everything is as it was"_s});
    close_ = make_plain_button(*this, u"cmdAutosetClose"_s, u"C&lose"_s,
                               {u"Close"_s, u"Closes the window"_s}, [this] { reject(); });
    ending->addWidget(cancel_);
    ending->addWidget(close_);
    add_ending(*this, ending);
}

void AutosetWindow::refresh() {
    const bool works = autoset_.under_way();
    progress_->setValue(autoset_.progress());
    close_->setEnabled(!works);
    if (works && !block_) {
        block_ = std::make_unique<InputBlock>(&owner_, this);
    } else if (!works) {
        block_.reset();
    }
}

void AutosetWindow::reject() {
    driver_.act([this] { autoset_.cancel(); });
    QDialog::reject();
}

} // namespace kv408::ui
