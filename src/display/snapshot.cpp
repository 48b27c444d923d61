#include "display/snapshot.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "display/bitmap_file.h"
#include "display/copies.h"
#include "display/plot_box.h"
#include "display/scale_lines.h"
#include "display/shapes.h"
#include "display/svg_file.h"
#include "host/path_text.h"
#include "host/shown_text.h"

namespace kv408 {
namespace {

constexpr const char* picture_file_kinds =
    "Bitmap (*.BMP)|*.bmp|All Files (*.*)|*.*|PNG (*.PNG)|*.png|"
    "Bitmap with Scales (*.BMP)|*.bmp|PNG with Scales (*.PNG)|*.png|"
    "PNG, as on the screen (*.PNG)|*.png|SVG (*.SVG)|*.svg";
/// What a name gets that has no ending of a picture, by the kinds. Of the first two it is a bitmap
/// under whatever name.
constexpr std::array kind_endings = {"", "", ".png", ".bmp", ".png", ".png", ".svg"};
constexpr std::size_t first_kind_with_scales = 3;
constexpr std::size_t kind_as_shown = 5;

/// The last two decimal digits of `number`.
std::string two_digits(int number) {
    constexpr int ten = 10;
    std::string digits(1, static_cast<char>('0' + number / ten % ten));
    digits.push_back(static_cast<char>('0' + number % ten));
    return digits;
}

/// `name` for the snapshot number `count` of its second.
std::string numbered(const std::string& name, int count) {
    const auto point = name.rfind('.');
    std::string text(name, 0, point);
    if (count > 1) {
        text += '_';
        text += std::to_string(count);
    }
    return text.append(name, point);
}

/// Whether `path` ends in `ending`, in upper or lower case.
bool ends_in(const std::filesystem::path& path, const char* ending) {
    std::string extension = text_of_path(path.extension());
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return extension == ending;
}

/// Whether `folder` ends in a separator of this system.
bool ends_in_separator(const std::string& folder) {
    return folder.ends_with('/') ||
           folder.ends_with(static_cast<char>(std::filesystem::path::preferred_separator));
}

/// `folder` with a separator at its end.
std::string as_folder(std::string folder) {
    if (!ends_in_separator(folder)) {
        folder.push_back(static_cast<char>(std::filesystem::path::preferred_separator));
    }
    return folder;
}

/// Makes a file of `bytes` called `name` in `folder`, as `path`. Several within a second: the
/// further ones get a number.
FileResult create_numbered(Files& files, const std::string& folder, const std::string& name,
                           const std::string& bytes, std::string& path) {
    constexpr int most = 9999;
    FileResult result = {.status = FileStatus::exists};
    for (int count = 1; result.status == FileStatus::exists && count <= most; ++count) {
        path = folder + numbered(name, count);
        result = files.create(path_of_text(path), bytes);
    }
    return result;
}

} // namespace

std::string snapshot_name(const LocalTime& time) {
    std::string name = two_digits(time.year) + two_digits(time.month) + two_digits(time.day);
    name += '_';
    name += two_digits(time.hour) + two_digits(time.minute) + two_digits(time.second);
    name += ".bmp";
    return name;
}

void Snapshot::Command1_Click() {
    picture_.draw(draw_flags::all);
    const std::string name = snapshot_name(host_.clock.local_time());
    if (settings_.snapshotdialog) {
        save_by_dialog(name);
    } else {
        save_silently(finished(plot_box(picture_, panel_)), name);
    }
}

Surface Snapshot::finished(Surface image) const {
    if (settings_.snapshotinvert) {
        invert_rectangle(Canvas(image), whole(image));
    }
    return image;
}

Surface Snapshot::with_scales() const {
    return host_.coder.with_lines(
        plot_box(picture_, panel_),
        scale_lines(panel_, host_.clock.local_time(), picture_.captioned()),
        panel_.picture1.back_colour().value_or(Colour{}));
}

std::function<FileResult()> Snapshot::taken() {
    picture_.draw(draw_flags::all);
    return [&files = host_.files, folder = as_folder(settings_.snapshotpath),
            name = snapshot_name(host_.clock.local_time()),
            bytes = bitmap_file(finished(plot_box(picture_, panel_)))] {
        std::string path;
        return create_numbered(files, folder, name, bytes, path);
    };
}

PackedPicture Snapshot::packed() {
    picture_.draw(draw_flags::all);
    std::optional<PackedPicture> result;
    const Pixel inverted = settings_.snapshotinvert ? bits_of_a_colour : 0;
    std::vector<Pixel> turned;
    for_each_plot_box_row(picture_, panel_, [&](std::span<const Pixel> row) {
        if (!result) {
            result.emplace(static_cast<int>(row.size()));
        }
        turned.assign(row.begin(), row.end());
        for (Pixel& pixel : turned) {
            pixel ^= inverted;
        }
        result->add(turned);
    });
    return std::move(*result);
}

std::function<std::string()> Snapshot::png() {
    return [&coder = host_.coder, picture = packed()] { return coder.png(picture.surface()); };
}

void Snapshot::save_silently(const Surface& image, const std::string& name) {
    settings_.snapshotpath = as_folder(settings_.snapshotpath);
    std::string path;
    const FileResult result =
        create_numbered(host_.files, settings_.snapshotpath, name, bitmap_file(image), path);
    if (result.status != FileStatus::done) {
        tell_failure(result);
        return;
    }
    host_.boxes.show(
        {.text = "Snapshot saved to: \n" + shown_line(path), .icon = MessageIcon::information});
}

void Snapshot::save_by_dialog(const std::string& name) {
    // Copies: sweeping goes on behind the dialog.
    const Surface plain = plot_box(picture_, panel_);
    const Surface scaled = with_scales();
    const Surface shown = screen_ ? screen_() : shown_plot_box(picture_, panel_);
    const std::string vectors = svg_file(
        picture_, panel_, scale_lines(panel_, host_.clock.local_time(), picture_.captioned()),
        settings_.snapshotinvert);
    const auto chosen = host_.choosers.save_file({.title = "Save Snapshot",
                                                  .filter = picture_file_kinds,
                                                  .default_name = name,
                                                  .default_suffix = "bmp"});
    if (!chosen) {
        return;
    }
    const Surface& image = chosen->kind == kind_as_shown            ? shown
                           : chosen->kind >= first_kind_with_scales ? scaled
                                                                    : plain;
    const bool known = ends_in(chosen->path, ".bmp") || ends_in(chosen->path, ".png") ||
                       ends_in(chosen->path, ".svg");
    const std::string added = known ? "" : kind_endings.at(chosen->kind);
    std::filesystem::path path = chosen->path;
    path += added;
    const std::string bytes = ends_in(path, ".svg")   ? vectors
                              : ends_in(path, ".png") ? host_.coder.png(finished(image))
                                                      : bitmap_file(finished(image));
    const FileResult result = save(path, bytes, !added.empty());
    if (result.status != FileStatus::done) {
        tell_failure(result);
    }
}

FileResult Snapshot::save(const std::filesystem::path& path, const std::string& bytes,
                          bool renamed) {
    if (bytes.empty()) {
        return {.status = FileStatus::failed, .reason = "The picture could not be encoded"};
    }
    if (renamed) {
        std::string created;
        return create_numbered(host_.files, "", text_of_path(path), bytes, created);
    }
    return host_.files.replace(path, bytes);
}

void Snapshot::tell_failure(const FileResult& result) {
    host_.boxes.show(
        {.text = "Snapshot wasn't saved!\nError:" + result.reason, .icon = MessageIcon::critical});
}

} // namespace kv408
