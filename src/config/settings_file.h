#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "config/last_settings.h"
#include "config/set_up.h"
#include "config/setting_rows.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "host/places.h"
#include "host/window_messages.h"
#include "state/program_state.h"

namespace kv408 {

/// The settings file: text lines ended by CR LF, each a key, a tab and a value, in the system's
/// 8-bit code page.
class SettingsFile {
public:
    /// What the settings file needs of its machine.
    struct Host {
        Files& files;
        FileChoosers& choosers;
        MessageBoxes& boxes;
        const Places& places;
        const Clock& clock;
        WindowMessages& messages;
        ProgramState& program;
        std::ostream& log = std::cerr; ///< receives what could not be saved at the end
    };

    /// What others do when settings are loaded or saved.
    struct Hooks {
        /// Runs the panel's handlers in their order after a set-up was loaded by hand.
        std::function<void()> apply;
        /// Takes back what is being edited and has not been confirmed.
        std::function<void()> cancel_edits;
        /// The colours without those that are being edited; not set: the present ones.
        std::function<ColourTable()> confirmed_colours = {};
        /// A set-up was loaded by hand.
        std::function<void()> loaded = {};
    };

    /// Keeps `kept` in files of `host`; connects Load Setup and Save Setup.
    SettingsFile(const KeptSettings& kept, const Host& host, Hooks hooks);

    /// What is kept, in the order of the file.
    [[nodiscard]] const std::vector<SettingRow>& rows() const { return rows_; }

    /// The rows of the table refer to the kept settings in here.
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    /// The file that is read at start-up and written at the end.
    [[nodiscard]] std::filesystem::path default_path() const;

    /// Start-up: gives colours and snapshot folder their defaults, then reads the default file. Of
    /// one with a line that cannot be taken a copy with the further ending ".bad" is kept, because
    /// the end of the program will write the file without what stood after that line.
    /// Settings that an earlier run had to set aside are offered.
    void restore();

    /// From now on, as long as what is returned lives, settings are being taken over: that is shown
    /// when it takes long, and an end of the program meanwhile unwinds.
    [[nodiscard]] TakingOver take_over() { return {host_.program, host_.clock.now()}; }

    /// Start-up is complete: from now on the end of the program saves the settings.
    void start_keeping();

    /// The end of the program: writes the default file, once, and only after a complete start, so
    /// that a failed one leaves it alone. A file that could not be read at start-up stays as it is.
    /// A failure is reported on the log, and in a message box when `tell` is set.
    void save_at_end(bool tell);

    /// Notes what the end of the program would save now, for an end that another thread brings
    /// about.
    void note_for_end();

    /// From now on the end of the program saves the present settings, whatever is set, until
    /// `release`: what is only being tried is nobody's setting.
    void hold();
    void release() { held_.reset(); }

    /// What was noted last; empty before anything was.
    [[nodiscard]] const std::string& noted_bytes() const { return noted_; }

    /// Saves at the end without touching what is edited or shown.
    void save_without_the_window();

    /// What has been noted, for any thread.
    [[nodiscard]] LastSettings& last_settings() { return last_; }

    /// Reads and applies the file at `path`. A missing file is created with the present settings.
    /// The first line that cannot be taken, or with a key that two lines (of "chkmeasanno" three)
    /// have had, is reported with its number and ends the reading; the lines before it stay
    /// applied. Returns what became of it.
    enum class Reading { complete, bad_line, missing, failed };
    Reading loadconfigfile(const std::filesystem::path& path);

    /// Applies one key; false for a value that the key cannot have. A key that is not in the table
    /// is passed over.
    bool setConfigVal(std::string_view key, std::string_view value);

    /// Writes the present settings to the file at `path`; a failure is shown in a message.
    void saveconfigsmon(const std::filesystem::path& path);

    /// The present settings as a file would have them.
    [[nodiscard]] std::string bytes() const;

    /// The same as the end of the program would save them: what a dialog edits and nobody has
    /// confirmed does not count.
    [[nodiscard]] std::string confirmed_bytes();

    /// The settings of a first start, as a file would have them; empty before `restore`.
    [[nodiscard]] const std::string& factory_bytes() const { return factory_; }

    /// Takes `bytes`, the content of a file, as Load Setup does with one. Returns the number of the
    /// line that could not be taken, 0 when all have been; nothing of it is shown.
    int load_bytes(std::string bytes);

    /// Brings the panel to `set_up`, which says all that there is: what it does not annotate is not
    /// annotated.
    void put_back(const PanelSetUp& set_up);

    /// True once the end of the program will save the settings.
    [[nodiscard]] bool keeping() const { return keeping_; }

    /// True while a set-up is being loaded.
    [[nodiscard]] bool is_loading() const { return by_hand_; }

    /// Load Setup and Save Setup. Both ask in the folder that was used last. An end of the program
    /// while a set-up is loaded and takes effect unwinds.
    void loadconfig_Click();
    /// How far settings have been loaded that take longer than one second; its caption is empty
    /// otherwise.
    [[nodiscard]] Label& loading() { return loading_; }

    /// Brings `loading` up to date; to be called wherever the program can be ended during loading.
    void tell_progress();
    void saveconfig_Click();

private:
    using Outcome = LastSettings::Outcome;

    [[nodiscard]] Outcome write(const std::filesystem::path& path);
    void note();
    void annotate_nothing();
    [[nodiscard]] std::string text() const;
    void tell_failure(const Outcome& outcome, const std::string& help);
    /// Offers what an earlier run could not save.
    void offer_aside();
    /// Takes `bytes` line by line; the number of the first that cannot be taken, 0 for none.
    int take_lines(std::string bytes);
    /// Takes one line; `taken` counts the lines with each key so far.
    bool take_line_of(std::string_view line, std::unordered_map<std::string_view, int>& taken);
    /// Lets the program be ended while a loading takes long.
    void let_end();
    void load_by_hand(const std::filesystem::path& path);
    bool take(const SettingRow& row, std::string_view value, bool first);
    void tell_line(int line, const std::string& help);

    KeptSettings kept_;
    Host host_;
    Hooks hooks_;
    std::vector<SettingRow> rows_;
    std::unordered_map<std::string_view, const SettingRow*> row_of_key_;
    bool keeping_ = false;
    FileResult restored_; ///< how the default file could be read at start-up
    LastSettings last_;
    std::string noted_;               ///< in `last_` too
    std::optional<std::string> held_; ///< what is noted in place of the present settings
    bool saved_at_end_ = false;
    std::filesystem::path folder_; ///< that Load Setup or Save Setup used last
    Label loading_{"loading"};
    bool by_hand_ = false;                  ///< a set-up is being loaded by hand
    std::string factory_;                   ///< the settings of a first start
    int line_ = 0;                          ///< the line that is being taken; 0: none is
    std::chrono::nanoseconds looked_at_{0}; ///< when the program could last be ended
};

} // namespace kv408
