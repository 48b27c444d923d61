#include "ui/when_placed.h"

#include <chrono>
#include <utility>

#include <QEvent>
#include <QTimer>

namespace kv408::ui {
namespace {

/// A window that has not been moved or sized for so long has its place.
constexpr std::chrono::milliseconds stillness{250};

class PlaceWatch : public QObject {
public:
    PlaceWatch(QWidget& window, std::function<void()> then) : QObject(&window) {
        still_.setSingleShot(true);
        still_.setInterval(stillness);
        connect(&still_, &QTimer::timeout, this, [this, &window, then = std::move(then)] {
            window.removeEventFilter(this);
            deleteLater();
            then();
        });
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::Show:
        case QEvent::Move:
        case QEvent::Resize:
            still_.start();
            break;
        case QEvent::Close:
        case QEvent::Hide:
            still_.stop();
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QTimer still_;
};

} // namespace

void when_placed(QWidget& window, std::function<void()> then) {
    new PlaceWatch(window, std::move(then));
}

} // namespace kv408::ui
