#pragma once

#include <vector>

#include <QVBoxLayout>
#include <QWidget>

#include "ui/panel_frame.h"
#include "ui/scope_driver.h"
#include "ui/scrolling_area.h"

namespace kv408::ui {

/// The right half of the window: the frames of controls and the row of buttons. Its frames stand
/// in two columns, or in one where two have no room; in a low window they are scrolled, with what
/// is used all the time beneath them always in sight unless the window is too low for both.
class ControlPanel : public QWidget {
public:
    /// Makes the frames for the controls of the driver's panel.
    explicit ControlPanel(ScopeDriver& driver);

    /// The width it takes with its frames in `columns` columns, 1 or 2, where `room` may be taken;
    /// never more than `room` unless they need more.
    [[nodiscard]] int width_within(int columns, int room) const;

    /// The Status frame. While the panel is hidden it may stand elsewhere.
    [[nodiscard]] PanelFrame& status() { return *in_sight_.back(); }

    /// Puts the Status frame back to its place.
    void take_status_back();

    /// Room for everything in two columns.
    [[nodiscard]] QSize sizeHint() const override;

    /// Small: what has no room is scrolled to.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// A frame and the number of rows in it, by which it gets its part of the height.
    struct Entry {
        PanelFrame* frame;
        int rows;
    };

    /// The least width that shows every frame in `columns` columns, beside a scroll bar.
    [[nodiscard]] int least_width(int columns) const;

    /// Puts the frames where the panel's size requires.
    void arrange();
    void put_frames(int columns, bool with_rest);

    std::vector<Entry> halves_; ///< two of them are side by side in two columns
    std::vector<Entry> wide_;   ///< as wide as both columns, below them
    std::vector<PanelFrame*> in_sight_;
    QWidget* board_; ///< what scrolls
    QWidget* rest_;  ///< what is always in sight
    ScrollingArea* area_;
    QVBoxLayout* column_;
    int columns_ = 0; ///< as the frames stand now
    bool rest_scrolls_ = false;
};

} // namespace kv408::ui
