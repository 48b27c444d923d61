# The headers of the standard library, GoogleTest and Qt that nearly every source reads, compiled
# once a set and build tree rather than once a source. It only saves time: every source includes
# what it uses and builds the same with CMAKE_DISABLE_PRECOMPILE_HEADERS=ON.
#
# Only headers of the system belong here. A header of ours in it would have everything compiled anew
# with each of its changes.

set(KV408_PRECOMPILED_STANDARD
  <algorithm> <array> <cassert> <chrono> <cstddef> <cstdint> <functional> <optional> <span> <string>
  <string_view> <utility> <vector>)
set(KV408_PRECOMPILED_SMALL ${KV408_PRECOMPILED_STANDARD})
set(KV408_PRECOMPILED_WIDGETS
  ${KV408_PRECOMPILED_STANDARD} <filesystem> <memory>
  <QAbstractButton> <QAction> <QCheckBox> <QColor> <QComboBox> <QFrame> <QGridLayout> <QHBoxLayout>
  <QLabel> <QLineEdit> <QPainter> <QPointer> <QPushButton> <QRadioButton> <QSlider> <QTabBar>
  <QTimer> <QWidget>)
set(KV408_PRECOMPILED_GTEST
  ${KV408_PRECOMPILED_STANDARD} <deque> <filesystem> <map> <set> <stdexcept> <gtest/gtest.h>)
set(KV408_PRECOMPILED_QTEST
  ${KV408_PRECOMPILED_WIDGETS} <deque> <map> <set>
  <QApplication> <QDialog> <QFileDialog> <QImage> <QMainWindow> <QMessageBox> <QTest>)

# kv408_precompile(<set> <library>...): compiles KV408_PRECOMPILED_<SET> with the options of the current
# folder and of these libraries, for targets that are compiled with the same.
function(kv408_precompile set)
  string(TOUPPER ${set} headers)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/precompiled_${set}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Has the headers compiled.\n")
  add_library(kv408_precompiled_${set} OBJECT ${source})
  target_link_libraries(kv408_precompiled_${set} PRIVATE kv408_options ${ARGN})
  target_precompile_headers(kv408_precompiled_${set} PRIVATE ${KV408_PRECOMPILED_${headers}})
endfunction()

# The same for executables, which are compiled as position-independent in a way of their own.
function(kv408_precompile_for_executables set)
  kv408_precompile(${set} ${ARGN})
  set_target_properties(kv408_precompiled_${set} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  target_compile_options(kv408_precompiled_${set} PRIVATE ${CMAKE_CXX_COMPILE_OPTIONS_PIE})
endfunction()

# kv408_use_precompiled(<target> <set>)
function(kv408_use_precompiled target set)
  target_precompile_headers(${target} REUSE_FROM kv408_precompiled_${set})
endfunction()
