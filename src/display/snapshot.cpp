#include "display/snapshot.h"

#include <algorithm>
#include <array>

#include "display/bitmap_file.h"
#include "display/copies.h"
#include "display/plot_box.h"
#include "display/shapes.h"
#include "host/path_text.h"

namespace kv408 {
namespace {

/// The last two decimal digits of `number`.
std::string two_digits(int number) {
    constexpr int ten = 10;
    std::string digits(1, static_cast<char>('0' + number / ten % ten));
    digits.push_back(static_cast<char>('0' + number % ten));
    return digits;
}

/// Whether `path` ends in ".png", in upper or lower case.
bool names_png(const std::filesystem::path& path) {
    std::string extension = text_of_path(path.extension());
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return extension == ".png";
}

/// Whether `folder` ends in a separator of this system.
bool ends_in_separator(const std::string& folder) {
    return folder.ends_with('/') ||
           folder.ends_with(static_cast<char>(std::filesystem::path::preferred_separator));
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
    // A copy: sweeping goes on behind the dialog.
    const Surface image = take();
    if (settings_.snapshotdialog == 1) {
        save_by_dialog(image, name);
    } else {
        save_silently(image, name);
    }
}

Surface Snapshot::take() const {
    Surface image = plot_box(picture_, panel_);
    if (settings_.snapshotinvert == 1) {
        invert_rectangle(Canvas(image), whole(image));
    }
    return image;
}

void Snapshot::save_silently(const Surface& image, const std::string& name) {
    std::string& folder = settings_.snapshotpath;
    if (!ends_in_separator(folder)) {
        folder.push_back(static_cast<char>(std::filesystem::path::preferred_separator));
    }
    const std::string path = folder + name;
    const FileResult result = save(path_of_text(path), bitmap_file(image));
    if (result.status != FileStatus::done) {
        tell_failure(result);
        return;
    }
    host_.boxes.show({.text = "Snapshot saved to: \n" + path, .icon = MessageIcon::information});
}

void Snapshot::save_by_dialog(const Surface& image, const std::string& name) {
    const auto chosen =
        host_.choosers.save_file({.title = "Save Snapshot",
                                  .filter = "Bitmap (*.BMP)|*.bmp|All Files (*.*)|*.*",
                                  .default_name = name,
                                  .default_suffix = "bmp"});
    if (!chosen) {
        return;
    }
    const FileResult result =
        save(*chosen, names_png(*chosen) ? host_.coder.png(image) : bitmap_file(image));
    if (result.status != FileStatus::done) {
        tell_failure(result);
    }
}

FileResult Snapshot::save(const std::filesystem::path& path, const std::string& bytes) {
    if (bytes.empty()) {
        return {.status = FileStatus::failed, .reason = "The picture could not be encoded"};
    }
    return host_.files.replace(path, bytes);
}

void Snapshot::tell_failure(const FileResult& result) {
    host_.boxes.show(
        {.text = "Snapshot wasn't saved!\nError:" + result.reason, .icon = MessageIcon::critical});
}

} // namespace kv408
