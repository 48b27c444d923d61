#pragma once

// The windows of the tools, with the menu entries that open them.

#include <QTest>

namespace kv408::ui {

/// A window and the menu entry that opens it.
struct ToolEntry {
    const char* entry;
    const char* window;
    int operated; ///< what can be operated in it as it opens, at least
};

inline constexpr ToolEntry tool_entries[] = {{"mnuexport", "frmExport", 6},
                                             {"mnurecord", "frmRecord", 7},
                                             {"mnustatistics", "frmStatistics", 9},
                                             {"mnudensity", "frmDensity", 7},
                                             {"mnuhistogram", "frmHistogram", 4},
                                             {"mnujitter", "frmJitter", 8},
                                             {"mnueye", "frmEye", 5},
                                             {"mnumask", "frmMask", 7},
                                             {"mnureadouts", "frmReadouts", 2},
                                             {"mnumaths", "frmMaths", 4},
                                             {"mnuspectrum", "frmSpectrum", 7},
                                             {"mnuautoset", "frmAutoset", 1},
                                             {"mnuremote", "frmRemote", 4}};

/// A row of test data for each, with the columns "entry", "window" and "operated".
inline void add_tool_rows() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("window");
    QTest::addColumn<int>("operated");
    for (const auto& [entry, window, operated] : tool_entries) {
        QTest::newRow(window) << QString::fromLatin1(entry) << QString::fromLatin1(window)
                              << operated;
    }
}

} // namespace kv408::ui
