#include "ui/qt_file_choosers.h"

#include <QDir>
#include <QStringList>

#include "ui/dialog_run.h"
#include "ui/window_places.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

/// The pattern `pattern` as a list of Qt's.
QString patterns_of(const QString& pattern) {
#ifdef Q_OS_WIN
    return pattern;
#else
    // In both cases: here they are different names. And a name may lack the point.
    return pattern.toLower() == pattern.toUpper() ? u"*"_s
                                                  : pattern.toLower() + u' ' + pattern.toUpper();
#endif
}

/// The pairs of caption and pattern in `filter` as Qt writes them.
QStringList name_filters(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split(u'|');
    QStringList filters;
    for (qsizetype index = 0; index + 1 < parts.size(); index += 2) {
        const QString caption = parts[index].section(u'(', 0, 0).trimmed();
        filters.append(caption + u" ("_s + patterns_of(parts[index + 1]) + u')');
    }
    return filters;
}

} // namespace

std::optional<std::filesystem::path> QtFileChoosers::open_file(const FileQuestion& question) {
    QFileDialog dialog(asking_window(window_), QString::fromStdString(question.title));
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (!question.folder.empty()) {
        dialog.setDirectory(QString::fromStdU16String(question.folder.u16string()));
    }
    dialog.setNameFilters(name_filters(question.filter));
    return ask(dialog);
}

std::optional<std::filesystem::path> QtFileChoosers::save_file(const FileQuestion& question) {
    QFileDialog dialog(asking_window(window_), QString::fromStdString(question.title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(name_filters(question.filter));
    dialog.setDefaultSuffix(QString::fromStdString(question.default_suffix));
    dialog.selectFile(QString::fromStdString(question.default_name));
    return ask(dialog);
}

std::optional<std::filesystem::path> QtFileChoosers::choose_folder(const std::string& title) {
    QFileDialog dialog(asking_window(window_), QString::fromStdString(title));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return ask(dialog);
}

void QtFileChoosers::dismiss() {
    for (QFileDialog* dialog : open_) {
        dialog->reject();
    }
}

std::optional<std::filesystem::path> QtFileChoosers::ask(QFileDialog& dialog) {
    dialog.setObjectName(u"fileDialog"_s);
    open_.push_back(&dialog);
#ifdef Q_OS_WIN
    // The system's own dialog knows no other way.
    dialog.exec();
#else
    run_over(window_, dialog);
#endif
    const bool accepted = dialog.result() == QDialog::Accepted;
    open_.pop_back();
    const QStringList files = dialog.selectedFiles();
    if (!accepted || files.isEmpty()) {
        return std::nullopt;
    }
    return std::filesystem::path(QDir::toNativeSeparators(files.front()).toStdU16String());
}

} // namespace kv408::ui
