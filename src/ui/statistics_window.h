#pragma once

#include <QDialog>

#include "export/statistics_dialog.h"
#include "ui/scope_driver.h"
#include "ui/statistics_grid.h"
#include "ui/trend_plot.h"

namespace kv408::ui {

/// The statistics window on the screen, modeless over its owner.
class StatisticsWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    StatisticsWindow(StatisticsDialog& dialog, ScopeDriver& driver, QWidget* owner);
    ~StatisticsWindow() override;
    StatisticsWindow(const StatisticsWindow&) = delete;
    StatisticsWindow& operator=(const StatisticsWindow&) = delete;

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

private:
    [[nodiscard]] QWidget* make_trend();
    [[nodiscard]] QWidget* make_limits();
    [[nodiscard]] QLayout* make_ending();

    StatisticsDialog& dialog_;
    ScopeDriver& driver_;
    StatisticsGrid* grid_;
    TrendPlot* plot_;
};

} // namespace kv408::ui
