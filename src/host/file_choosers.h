#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace kv408 {

/// One question for the name of a file.
struct FileQuestion {
    std::string title;
    /// The kinds offered, as pairs of caption and pattern parted by bars, the first selected:
    /// "Text files (*.TXT)|*.TXT|All Files (*.*)|*.*".
    std::string filter;
    std::string default_name = {}; ///< the name that stands there already, UTF-8
    /// What a name without an ending gets, without its point; empty: nothing.
    std::string default_suffix = {};
    std::filesystem::path folder = {}; ///< the folder shown first, empty for the usual one
};

/// A file to write, as the user named it.
struct ChosenFile {
    std::filesystem::path path;
    std::size_t kind = 0; ///< which of the kinds offered was selected, counted from 0
};

/// Asks the user for files and folders, each in a dialog. While one is open nothing else of the
/// program's windows can be operated but its end, and the window's timer goes on ticking.
class FileChoosers {
public:
    virtual ~FileChoosers() = default;

    /// A file to read; nothing when the user cancels.
    virtual std::optional<std::filesystem::path> open_file(const FileQuestion& question) = 0;

    /// A file to write; nothing when the user cancels.
    virtual std::optional<ChosenFile> save_file(const FileQuestion& question) = 0;

    /// A folder, asked for under `title`; nothing when the user cancels.
    virtual std::optional<std::filesystem::path> choose_folder(const std::string& title) = 0;
};

} // namespace kv408
