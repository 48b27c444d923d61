#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "display/packed_picture.h"
#include "display/picture.h"
#include "display/picture_coder.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "panel/front_panel.h"
#include "state/display_settings.h"

namespace kv408 {

/// The name of a snapshot taken at `time`: "yymmdd_hhmmss.bmp", whatever the system's locale.
[[nodiscard]] std::string snapshot_name(const LocalTime& time);

/// Saves the plot box as a picture file.
class Snapshot {
public:
    /// What a snapshot reaches of the machine.
    struct Host {
        const Clock& clock;
        MessageBoxes& boxes;
        Files& files;
        FileChoosers& choosers;
        PictureCoder& coder;
    };

    /// Connects its button.
    Snapshot(FrontPanel& panel, Picture& picture, DisplaySettings& settings, const Host& host)
        : panel_(panel), picture_(picture), settings_(settings), host_(host) {
        panel.snapshot.on_click([this] { Command1_Click(); });
    }

    /// "Snapshot" was clicked: saves the plot as it is now, inverted where the settings say so,
    /// into the snapshot folder under a name made of date and time, or where the user says, there
    /// with the scales under it if he likes. A file that is there already is overwritten only
    /// where the user says so. What went wrong is told in a message.
    void Command1_Click();

    /// The plot as it is now, inverted where the settings say so: what it gives saves it into the
    /// snapshot folder without asking or telling anything, on any thread and as often as called.
    [[nodiscard]] std::function<FileResult()> taken();

    /// The plot as it is now, inverted where the settings say so, in little memory.
    [[nodiscard]] PackedPicture packed();

    /// The same: what it gives encodes it, on any thread, as the bytes of a PNG file, empty when
    /// that failed.
    [[nodiscard]] std::function<std::string()> png();

    /// The plot as it is now, not inverted, with the scales under it.
    [[nodiscard]] Surface with_scales() const;

    /// Sets what gives the picture that the screen shows around and on the plot, with all that
    /// stands there, for the kind of file that has it; it is called within the click. Without it
    /// that kind has the plot with its margin at the size at which it is shown.
    void show_by(std::function<Surface()> screen) { screen_ = std::move(screen); }

private:
    [[nodiscard]] Surface finished(Surface image) const;
    void save_silently(const Surface& image, const std::string& name);
    void save_by_dialog(const std::string& name);
    /// Saves `bytes` as `path`, whose file the user lets be overwritten unless it was `renamed`
    /// after he had named it: then it gets a number.
    [[nodiscard]] FileResult save(const std::filesystem::path& path, const std::string& bytes,
                                  bool renamed);
    void tell_failure(const FileResult& result);

    const FrontPanel& panel_;
    Picture& picture_;
    DisplaySettings& settings_;
    Host host_;
    std::function<Surface()> screen_;
};

} // namespace kv408
