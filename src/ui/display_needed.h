#pragma once

#include <QtGlobal>

namespace kv408::ui {

/// As long as it lives, while the application is built: where no display can be had the process
/// ends with exit code 1 and one sentence on stderr.
class DisplayNeeded {
public:
    DisplayNeeded();
    ~DisplayNeeded();
    DisplayNeeded(const DisplayNeeded&) = delete;
    DisplayNeeded& operator=(const DisplayNeeded&) = delete;

private:
    QtMessageHandler before_;
};

} // namespace kv408::ui
