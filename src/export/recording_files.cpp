#include "export/recording_files.h"

#include <array>
#include <cinttypes>
#include <cstdio>
#include <utility>

#include "export/export_file.h"
#include "host/path_text.h"
#include "host/shown_text.h"

namespace kv408 {
namespace {

/// Why nothing more is written to the file at `path`; nothing where there is room.
std::optional<SavedFile> full(const FreeSpace& space, const std::filesystem::path& path,
                              std::string_view what) {
    const auto left = space(path);
    if (!left || *left > space_left_free) {
        return std::nullopt;
    }
    constexpr std::uintmax_t mebibyte = 1024ULL * 1024;
    return SavedFile{.status = FileStatus::failed,
                     .message = shown_path(path) + ": " + std::string(what) +
                                " has ended because less than " +
                                std::to_string(space_left_free / mebibyte) + " MB are free"};
}

SavedFile failed(const std::filesystem::path& path, std::string_view what,
                 const std::string& reason) {
    return {.status = FileStatus::failed,
            .message = shown_path(path) + ": " + std::string(what) + " has ended: " + reason};
}

constexpr std::string_view the_recording = "the recording";

} // namespace

std::optional<std::uintmax_t> free_space(const std::filesystem::path& path) {
    std::error_code error;
    const auto place = std::filesystem::absolute(path, error).parent_path();
    const auto space = std::filesystem::space(place, error);
    return error ? std::nullopt : std::optional(space.available);
}

WatchedFile::WatchedFile(Files& files, std::filesystem::path path, std::string_view beginning,
                         bool over, SavedFile& begun, FreeSpace space)
    : path_(std::move(path)), space_(std::move(space)),
      file_((begun = save_export(files, path_, beginning, over), path_)) {}

SavedFile WatchedFile::append(std::string_view bytes, std::string_view what) {
    if (auto refused = full(space_, path_, what)) {
        return std::move(*refused);
    }
    const FileResult result = file_.append(bytes);
    return result.status == FileStatus::done ? SavedFile{} : failed(path_, what, result.reason);
}

OneRecordingFile::OneRecordingFile(Files& files, std::filesystem::path path, bool over,
                                   SavedFile& begun, FreeSpace space)
    : file_(files, std::move(path), recording_headings(), over, begun, std::move(space)) {}

SavedFile OneRecordingFile::add(const ExportedSweep& sweep) {
    return file_.append(fill_pages(text_.lines(sweep), file_.size()), the_recording);
}

std::filesystem::path numbered_path(std::filesystem::path path, std::string_view ending,
                                    std::uint64_t number) {
    std::array<char, 32> digits = {};
    std::snprintf(digits.data(), digits.size(), "_%06" PRIu64, number);
    path.replace_extension();
    path += digits.data();
    path += ending;
    return path;
}

NumberedRecordingFiles::NumberedRecordingFiles(Files& files, std::filesystem::path path,
                                               const ExportType& type, FreeSpace space)
    : files_(files), path_(std::move(path)), type_(type), space_(std::move(space)) {}

SavedFile NumberedRecordingFiles::add(const ExportedSweep& sweep) {
    const std::filesystem::path path = numbered_path(path_, type_.ending, ++number_);
    if (auto refused = full(space_, path, the_recording)) {
        return std::move(*refused);
    }
    if (const ExportRemark remark = export_remark(type_, sweep); !remark.possible) {
        return failed(path, the_recording, remark.text);
    }
    const SavedFile saved = save_export(files_, path, type_.bytes(sweep), false);
    return saved.status == FileStatus::exists
               ? failed(path, the_recording, "there is such a file already")
               : saved;
}

} // namespace kv408
