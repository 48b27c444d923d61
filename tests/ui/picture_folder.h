#pragma once

#include <QCoreApplication>
#include <QString>

namespace kv408::ui {

/// Where tests leave pictures for people to look at: the folder of the test program.
inline QString picture_folder() {
    return QCoreApplication::applicationDirPath();
}

} // namespace kv408::ui
