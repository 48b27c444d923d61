#include "export/export_file.h"

#include "host/shown_text.h"

namespace kv408 {

SavedFile save_export(Files& files, const std::filesystem::path& path, std::string_view bytes,
                      bool over) {
    const FileResult result = over ? files.replace(path, bytes) : files.create(path, bytes);
    const std::string name = shown_path(path);
    switch (result.status) {
    case FileStatus::done:
        return {.status = result.status, .message = "Saved to " + name};
    case FileStatus::exists:
        return {.status = result.status, .message = name + " exists already. Replace it?"};
    default:
        return {.status = FileStatus::failed,
                .message = name + " could not be saved: " + result.reason};
    }
}

} // namespace kv408
