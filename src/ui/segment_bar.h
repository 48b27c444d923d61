#pragma once

#include <QTabBar>

namespace kv408::ui {

/// A strip of tabs without pages, drawn as one rounded switch of several segments.
class SegmentBar : public QTabBar {
public:
    /// An empty strip.
    explicit SegmentBar(QWidget* parent = nullptr);

protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paint_segment(QPainter& painter, int index) const;
};

} // namespace kv408::ui
