#include "ui/qt_file_choosers.h"

#include <algorithm>

#include <QDir>
#include <QFile>
#include <QFileInfo>
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

/// The endings of the kinds in `filter`, without their points; empty for a kind of any ending.
QStringList endings_of(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split(u'|');
    QStringList endings;
    for (qsizetype index = 1; index < parts.size(); index += 2) {
        const QString ending = parts[index].section(u'.', -1);
        endings.append(ending == u"*" ? QString() : ending);
    }
    return endings;
}

/// Gives the name in `dialog` the ending `ending` in place of one of `others`.
void change_ending(QFileDialog& dialog, const QString& ending, const QStringList& others) {
    dialog.setDefaultSuffix(ending);
    const QFileInfo named(dialog.selectedFiles().value(0));
    if (!named.isDir() && others.contains(named.suffix(), Qt::CaseInsensitive)) {
        dialog.selectFile(named.completeBaseName() + u'.' + ending);
    }
}

#ifdef Q_OS_WIN

QString text_of(const std::filesystem::path& path) {
    return QString::fromStdWString(path.native());
}

std::filesystem::path path_of(const QString& text) {
    return QDir::toNativeSeparators(text).toStdWString();
}

#else

QString text_of(const std::filesystem::path& path) {
    return QFile::decodeName(path.c_str());
}

std::filesystem::path path_of(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

#endif

} // namespace

std::optional<std::filesystem::path> QtFileChoosers::open_file(const FileQuestion& question) {
    QFileDialog dialog(asking_window(window_), QString::fromStdString(question.title));
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (!question.folder.empty()) {
        dialog.setDirectory(text_of(question.folder));
    }
    dialog.setNameFilters(name_filters(question.filter));
    return ask(dialog);
}

std::optional<ChosenFile> QtFileChoosers::save_file(const FileQuestion& question) {
    QFileDialog dialog(asking_window(window_), QString::fromStdString(question.title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (!question.folder.empty()) {
        dialog.setDirectory(text_of(question.folder));
    }
    dialog.setNameFilters(name_filters(question.filter));
    dialog.setDefaultSuffix(QString::fromStdString(question.default_suffix));
    dialog.selectFile(QString::fromStdString(question.default_name));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& kind) {
        const QStringList endings = endings_of(question.filter);
        const QString ending = endings.value(dialog.nameFilters().indexOf(kind));
        if (!ending.isEmpty()) {
            change_ending(dialog, ending, endings);
        }
    });
    const auto path = ask(dialog);
    if (!path) {
        return std::nullopt;
    }
    const auto kind = dialog.nameFilters().indexOf(dialog.selectedNameFilter());
    return ChosenFile{.path = *path,
                      .kind = static_cast<std::size_t>(std::max(kind, qsizetype{0}))};
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
    return path_of(files.front());
}

} // namespace kv408::ui
