#pragma once

#include <QApplication>
#include <QFont>

namespace kv408::ui {

/// Lets every text be `percent` of its usual size as long as this lives.
class TextSize {
public:
    explicit TextSize(int percent) {
        QFont larger = usual_;
        larger.setPointSizeF(usual_.pointSizeF() * percent / 100.0);
        QApplication::setFont(larger);
    }
    ~TextSize() { QApplication::setFont(usual_); }
    TextSize(const TextSize&) = delete;
    TextSize& operator=(const TextSize&) = delete;

private:
    QFont usual_ = QApplication::font();
};

} // namespace kv408::ui
