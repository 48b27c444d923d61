#include "ui/machine_places.h"

#include <QCoreApplication>
#include <QDir>
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
    // Users read them, so they are as the platform writes them.
    const auto written = [](const QString& path) {
        return std::filesystem::path(QDir::toNativeSeparators(path).toStdU16String());
    };
    return {.settings = written(folder + u"/kv408"_s),
            .program = written(QCoreApplication::applicationDirPath())};
}

} // namespace kv408::ui
