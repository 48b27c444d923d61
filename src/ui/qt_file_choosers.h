#pragma once

#include <vector>

#include <QFileDialog>
#include <QPointer>

#include "host/file_choosers.h"

namespace kv408::ui {

/// The file dialogs on the screen, over the window, which can only be closed meanwhile.
class QtFileChoosers : public FileChoosers {
public:
    /// Sets the window that the dialogs belong to; without one they stand alone.
    void set_window(QWidget* window) { window_ = window; }

    std::optional<std::filesystem::path> open_file(const FileQuestion& question) override;
    std::optional<ChosenFile> save_file(const FileQuestion& question) override;
    std::optional<std::filesystem::path> choose_folder(const std::string& title) override;

    /// Closes every open dialog as cancelled.
    void dismiss();

private:
    std::optional<std::filesystem::path> ask(QFileDialog& dialog);

    QPointer<QWidget> window_;
    std::vector<QFileDialog*> open_;
};

} // namespace kv408::ui
