#include "ui/tool_windows.h"

#include <QClipboard>
#include <QGuiApplication>

#include "ui/density_window.h"
#include "ui/export_window.h"
#include "ui/eye_window.h"
#include "ui/histogram_window.h"
#include "ui/jitter_window.h"
#include "ui/mask_window.h"
#include "ui/maths_window.h"
#include "ui/readouts_window.h"
#include "ui/record_window.h"
#include "ui/spectrum_window.h"
#include "ui/statistics_window.h"
#include "ui/tool_widgets.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

QAction& make_copy_table(Tools& tools, QWidget& owner) {
    auto* const action = new QAction(u"Copy &Table"_s, &owner);
    action->setObjectName(u"copyTable"_s);
    action->setToolTip(u"Copies the sweep that is shown as a table to the clipboard"_s);
    action->setShortcut(QKeySequence(u"Ctrl+Shift+C"_s));
    QObject::connect(action, &QAction::triggered, action, [&tools] {
        const std::string table = tools.export_dialog().clipboard_text();
        if (!table.empty()) {
            QGuiApplication::clipboard()->setText(QString::fromStdString(table));
        }
    });
    return *action;
}

} // namespace

ToolWindows::ToolWindows(Tools& tools, ScopeDriver& driver, QWidget& owner, const QWidget& plot)
    : tools_(tools), driver_(driver), owner_(owner), plot_(plot),
      copy_table_(make_copy_table(tools, owner)) {
    tools.export_dialog().on_show([this] { show_export(); });
    tools.record_dialog().on_show([this] { show_recording(); });
    tools.statistics().on_show([this] { show_statistics(); });
    tools.density().on_show([this] { show_density(); });
    tools.histogram().on_show([this] { show_histogram(); });
    tools.jitter().on_show([this] { show_jitter(); });
    tools.eye().on_show([this] { show_eye(); });
    tools.mask().on_show([this] { show_mask(); });
    tools.readouts().on_show([this] { show_readouts(); });
    tools.maths().on_show([this] { show_maths(); });
    tools.spectrum().on_show([this] { show_spectrum(); });
    driver.autoset().on_change([this] { show_autoset(); });
}

ToolWindows::~ToolWindows() {
    tools_.export_dialog().on_show({});
    tools_.record_dialog().on_show({});
    tools_.statistics().on_show({});
    tools_.density().on_show({});
    tools_.histogram().on_show({});
    tools_.jitter().on_show({});
    tools_.eye().on_show({});
    tools_.mask().on_show({});
    tools_.readouts().on_show({});
    tools_.maths().on_show({});
    tools_.spectrum().on_show({});
    driver_.autoset().on_change({});
}

void ToolWindows::show_export() {
    if (!export_) {
        export_ = new ExportWindow(tools_.export_dialog(), driver_, copy_table_, &owner_);
    }
    present_beside(*export_, owner_, plot_);
}

void ToolWindows::show_recording() {
    if (!recording_) {
        recording_ = new RecordWindow(tools_.record_dialog(), driver_, &owner_);
    }
    if (!tools_.record_dialog().is_open()) {
        recording_->hide();
        return;
    }
    present_beside(*recording_, owner_, plot_);
}

void ToolWindows::show_statistics() {
    if (!statistics_) {
        statistics_ = new StatisticsWindow(tools_.statistics(), driver_, &owner_);
    }
    present_beside(*statistics_, owner_, plot_);
}

void ToolWindows::show_density() {
    if (!density_) {
        density_ = new DensityWindow(tools_.density(), driver_, &owner_);
    }
    present_beside(*density_, owner_, plot_);
}

void ToolWindows::show_histogram() {
    if (!histogram_) {
        histogram_ = new HistogramWindow(tools_.histogram(), driver_, &owner_);
    }
    present_beside(*histogram_, owner_, plot_);
}

void ToolWindows::show_jitter() {
    if (!jitter_) {
        jitter_ = new JitterWindow(tools_.jitter(), driver_, &owner_);
    }
    present_beside(*jitter_, owner_, plot_);
}

void ToolWindows::show_mask() {
    if (!mask_) {
        mask_ = new MaskWindow(tools_.mask(), driver_, &owner_);
    }
    present_beside(*mask_, owner_, plot_);
}

void ToolWindows::show_eye() {
    if (!eye_) {
        eye_ = new EyeWindow(tools_.eye(), driver_, &owner_);
    }
    present_beside(*eye_, owner_, plot_);
}

void ToolWindows::show_readouts() {
    if (!readouts_) {
        readouts_ = new ReadoutsWindow(tools_.readouts(), driver_, &owner_);
    }
    present_beside(*readouts_, owner_, plot_);
}

void ToolWindows::show_maths() {
    if (!maths_) {
        maths_ = new MathsWindow(tools_.maths(), driver_, &owner_);
    }
    present_beside(*maths_, owner_, plot_);
}

void ToolWindows::show_spectrum() {
    if (!spectrum_) {
        spectrum_ = new SpectrumWindow(tools_.spectrum(), driver_, &owner_);
    }
    present_beside(*spectrum_, owner_, plot_);
}

void ToolWindows::show_autoset() {
    if (!autoset_) {
        autoset_ = new AutosetWindow(driver_.autoset(), driver_, owner_);
    }
    if (driver_.autoset().under_way() && !autoset_->isVisible()) {
        present_beside(*autoset_, owner_, plot_);
    }
    autoset_->refresh();
}

void ToolWindows::close() {
    for (QWidget* const window :
         {export_.data(), recording_.data(), statistics_.data(), density_.data(), histogram_.data(),
          jitter_.data(), eye_.data(), mask_.data(), readouts_.data(), maths_.data(),
          spectrum_.data(), static_cast<QWidget*>(autoset_.data())}) {
        if (window != nullptr) {
            window->hide();
        }
    }
}

} // namespace kv408::ui
