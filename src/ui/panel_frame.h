#pragma once

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>

namespace kv408::ui {

/// A titled frame of the panel: a plate with its title in the upper left corner. What lies in it
/// is laid out within its contents margins. One of two parts can show them side by side or one
/// below the other.
class PanelFrame : public QFrame {
public:
    /// A frame titled `title`.
    explicit PanelFrame(QString title, QWidget* parent = nullptr);

    /// The title.
    [[nodiscard]] const QString& title() const { return title_; }

    /// Puts `note`, a child of the frame, to the right of the title, wide enough for `longest`.
    void set_note(QLabel* note, const QString& longest);

    /// Keeps the frame at least `width` pixels wide, and as wide as what lies in it needs.
    void keep_width(int width);

    /// Makes the layout for parts that lie side by side, `gap` apart.
    [[nodiscard]] QBoxLayout& make_parts(int gap);

    /// Puts the parts one below the other, or side by side again. A frame without parts stays as
    /// it is.
    void stack_parts(bool stacked);

    /// The least width that shows all of it, with its parts one below the other or side by side.
    [[nodiscard]] int least_width(bool stacked) const;

    /// Whether in `width` each half is wide enough for the widest part.
    [[nodiscard]] bool shows_both_halves_in(int width) const;

    /// The usual height with its parts one below the other or side by side.
    [[nodiscard]] int usual_height(bool stacked) const;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// Keeps what lies in the frame below the title.
    void leave_room_for_title();

    /// Gives the note its size and its place.
    void place_note();

    QString title_;
    QLabel* note_ = nullptr;
    QString longest_note_;
    QBoxLayout* parts_ = nullptr;
    int gap_ = 0;        ///< between parts side by side
    int kept_width_ = 0; ///< it is never less wide
};

} // namespace kv408::ui
