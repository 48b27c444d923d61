#include "ui/tool_windows.h"

#include <utility>

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
    : driver_(driver), owner_(owner), plot_(plot), copy_table_(make_copy_table(tools, owner)) {
    add(tools.export_dialog(), [this](ExportDialog& dialog) {
        return new ExportWindow(dialog, driver_, copy_table_, &owner_);
    });
    add<RecordWindow>(tools.record_dialog());
    add<StatisticsWindow>(tools.statistics());
    add<DensityWindow>(tools.density());
    add<HistogramWindow>(tools.histogram());
    add<JitterWindow>(tools.jitter());
    add<EyeWindow>(tools.eye());
    add<MaskWindow>(tools.mask());
    add<ReadoutsWindow>(tools.readouts());
    add<MathsWindow>(tools.maths());
    add<SpectrumWindow>(tools.spectrum());
    driver.autoset().on_change([this] { show_autoset(); });
}

ToolWindows::~ToolWindows() {
    for (const auto& tool : tools_) {
        tool->listen({});
    }
    driver_.autoset().on_change({});
}

template <typename Dialog, typename Maker>
void ToolWindows::add(Dialog& dialog, Maker make) {
    Tool& tool = *tools_.emplace_back(std::make_unique<Tool>());
    tool.is_open = [&dialog] { return dialog.is_open(); };
    tool.make = [&dialog, make] { return make(dialog); };
    tool.listen = [&dialog](std::function<void()> show) { dialog.on_show(std::move(show)); };
    tool.listen([this, &tool] { show(tool); });
}

template <typename Window, typename Dialog>
void ToolWindows::add(Dialog& dialog) {
    add(dialog, [this](Dialog& shown) { return new Window(shown, driver_, &owner_); });
}

void ToolWindows::show(Tool& tool) {
    if (!tool.window) {
        tool.window = tool.make();
    }
    if (tool.is_open()) {
        present_beside(*tool.window, owner_, plot_);
    } else {
        tool.window->hide();
    }
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

void ToolWindows::tick_over() {
    for (const auto& tool : tools_) {
        if (tool->window && tool->window->isVisible() && !tool->is_open()) {
            tool->window->hide();
        }
    }
}

void ToolWindows::close() {
    for (const auto& tool : tools_) {
        if (tool->window) {
            tool->window->hide();
        }
    }
    if (autoset_) {
        autoset_->hide();
    }
}

} // namespace kv408::ui
