#include "ui/dialog_run.h"

#include <QEventLoop>

#include "ui/input_block.h"

namespace kv408::ui {

void run_over(QWidget* window, QDialog& dialog) {
    const InputBlock block(window, &dialog);
    QEventLoop loop;
    QObject::connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit);
    dialog.setModal(false);
    dialog.show();
    loop.exec(QEventLoop::DialogExec);
}

} // namespace kv408::ui
