#pragma once

#include <string>

#include <QWidget>

namespace kv408::ui {

/// The page of the manual, its file's name without an ending, that tells of the frame or window
/// that `focus` lies in; the first page for none.
[[nodiscard]] std::string manual_topic(const QWidget* focus);

} // namespace kv408::ui
