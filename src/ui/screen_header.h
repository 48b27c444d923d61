#pragma once

#include <vector>

#include <QLabel>
#include <QWidget>

#include "panel/front_panel.h"

namespace kv408::ui {

/// The read-outs above the plot: time per division and delays on the left, averaging and time of
/// day on the right. What one line has no room for goes to the next.
class ScreenHeader : public QWidget {
public:
    /// Shows the labels of `panel`.
    explicit ScreenHeader(FrontPanel& panel, QWidget* parent);

    /// Lines that the longest read-outs take in `width` units of the window, 1 or more, with texts
    /// `growth` times as large as those around it.
    [[nodiscard]] int lines_within(int width, double growth) const;

    /// Keeps `left` and `right` units of the window free beside the read-outs.
    void set_margins(int left, int right);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// A read-out and the longest text that it may have.
    struct Entry {
        QLabel* label;
        QString longest;
    };

    /// The line, counted from 0, of each of the timing read-outs and, last, of the state.
    [[nodiscard]] std::vector<int> lines_of(int width, double growth) const;
    void make_timing(FrontPanel& panel);
    void make_state(FrontPanel& panel);
    void lay_out();

    std::vector<Entry> timing_; ///< on the left
    std::vector<Entry> state_;  ///< on the right, always together
    int left_margin_ = 0;
    int right_margin_ = 0;
};

} // namespace kv408::ui
