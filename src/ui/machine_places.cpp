#include "ui/machine_places.h"

#include <filesystem>
#include <system_error>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QtGlobal>

#include "host/settings_folder.h"

namespace kv408::ui {

#ifdef Q_OS_WIN

Places machine_places() {
    using namespace Qt::StringLiterals;
    const QString application_data = qEnvironmentVariable("APPDATA");
    const QString folder =
        application_data.isEmpty()
            ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
            : application_data;
    // Users read them, so they are as the platform writes them.
    const auto written = [](const QString& path) {
        return std::filesystem::path(QDir::toNativeSeparators(path).toStdWString());
    };
    return {.settings = written(folder + u"/kv408"_s),
            .program = written(QCoreApplication::applicationDirPath()),
            .documents =
                written(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))};
}

#else

namespace {

std::filesystem::path program_folder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path(
                       QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString())
                 : program.parent_path();
}

} // namespace

// Not by way of the system's texts: a folder's name may be no text.
Places machine_places() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return {.settings = settings_folder(),
            .program = program_folder(),
            .documents = QFile::encodeName(documents).toStdString()};
}

#endif

} // namespace kv408::ui
