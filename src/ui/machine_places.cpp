#include "ui/machine_places.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <QtGlobal>

namespace kv408::ui {

Places machine_places() {
    using namespace Qt::StringLiterals;
    const QString application_data = qEnvironmentVariable("APPDATA");
    const QString folder =
        application_data.isEmpty()
            ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
            : application_data;
    return {.settings = (folder + u"/kv408"_s).toStdU16String(),
            .program = QCoreApplication::applicationDirPath().toStdU16String()};
}

} // namespace kv408::ui
