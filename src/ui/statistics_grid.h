#pragma once

#include <QTableWidget>

#include "export/statistics_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The table of the statistics window: a row for each measurement of each channel. Its current row
/// is the chosen value.
class StatisticsGrid : public QTableWidget {
public:
    /// Shows `dialog` and chooses in it.
    StatisticsGrid(StatisticsDialog& dialog, ScopeDriver& driver, QWidget* parent = nullptr);

    /// Brings cells and chosen row up to date.
    void refresh();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void fit_columns();
    void show_row(int row);

    StatisticsDialog& dialog_;
};

} // namespace kv408::ui
