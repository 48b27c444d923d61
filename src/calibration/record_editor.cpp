#include "calibration/record_editor.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <tuple>
#include <utility>
#include <vector>

#include "calibration/linearity_run.h"
#include "host/shown_text.h"
#include "panel/set_up_change.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;

/// The words of the record, in order.
std::array<std::uint16_t, record_size> record_addresses() {
    std::array<std::uint16_t, record_size> addresses = {};
    for (std::size_t index = 0; index < record_size; ++index) {
        addresses.at(index) = record_address(index);
    }
    return addresses;
}

CalibrationRecord record_of(std::span<const std::uint16_t> words) {
    CalibrationRecord record = {};
    std::transform(words.begin(), words.begin() + record_size, record.begin(), value_of_word);
    return record;
}

/// Lets the reply in progress arrive and throws away what the instrument has sent.
void drain(DeviceLink& link) {
    constexpr std::uint32_t most = 1400;
    link.waitrxidle();
    std::vector<Byte> bytes(std::min(link.waiting(), most));
    if (!bytes.empty()) {
        link.read(bytes);
    }
}

} // namespace

void RecordEditor::mnucalibration_Click() {
    form_.window.open();
    if (held_ || writable() || !around_.link.state().open ||
        around_.acquisition.scopestate == state_word::linearity) {
        return;
    }
    // The next tick may be to press Start.
    const bool running =
        around_.acquisition.acqrunning || around_.acquisition.scopestate == state_word::begin;
    read_record();
    if (running) {
        state_machine_.cmdstartsweep_Click();
    }
}

void RecordEditor::cmdreadcald_Click() {
    if (may_break_off()) {
        read_record();
    }
}

bool RecordEditor::may_break_off() {
    return around_.acquisition.scopestate != state_word::linearity ||
           around_.boxes.show({.text = "Break the linearity calibration off?",
                               .title = "Calibrate Linearity",
                               .buttons = MessageButtons::yes_no,
                               .icon = MessageIcon::question,
                               .informative =
                                   "The instrument does nothing else meanwhile. The next "
                                   "run counts on from here."}) == MessageAnswer::yes;
}

void RecordEditor::read_record() {
    state_machine_.cmdstop_Click();
    drain(around_.link);
    constexpr std::size_t hardware = record_size;
    constexpr std::size_t firmware = record_size + 1;
    std::array<std::uint16_t, record_size + 2> addresses = {};
    const auto values = record_addresses();
    std::copy(values.begin(), values.end(), addresses.begin());
    addresses.at(hardware) = flash_address::hardware_id;
    addresses.at(firmware) = flash_address::firmware_id;
    std::array<std::uint16_t, addresses.size()> words = {};
    show_status("");
    form_.progressbar1.start(static_cast<int>(addresses.size()));
    const std::size_t came = read_words(addresses, words, true);
    if (came < addresses.size()) {
        std::string text = "Word ";
        text += std::to_string(came + 1);
        text += " of ";
        text += std::to_string(addresses.size());
        text += " did not come from the instrument. The record here is as it was before.";
        note_.say(text);
        check_boxes();
        return;
    }
    form_.cald61.set_text(std::to_string(words.at(hardware)));
    form_.cald62.set_text(std::to_string(words.at(firmware)));
    held_ = record_of(words);
    in_use_ = *held_;
    show_edited(*held_);
    calibrated_ = false;
    show_status("Read complete");
    const std::string before = backup_.unfinished();
    note_.say(before.empty()
                  ? "The boxes were filled with the values that the instrument works with."
                  : "The last write was not seen to its end. The values before it are in " +
                        before + "; Restore brings them back.");
}

std::size_t RecordEditor::read_words(std::span<const std::uint16_t> addresses,
                                     std::span<std::uint16_t> words, bool show_progress) {
    for (std::size_t index = 0; index < addresses.size(); ++index) {
        if (!around_.link.read_flash_word(addresses[index], words[index])) {
            return index;
        }
        if (show_progress) {
            show_step();
        }
    }
    return addresses.size();
}

void RecordEditor::cmdwritecal_Click() {
    if (!may_break_off() || !may_write() || !keep_record()) {
        return;
    }
    if (around_.acquisition.scopestate == state_word::linearity) {
        // The instrument breaks its run off as soon as it is asked for anything else.
        state_machine_.cmdstop_Click();
    }
    backup_.begin_write();
    write_words();
    take_in_use(edited_);
    calibrated_ = false;
    show_status("Write complete");
    read_back();
}

bool RecordEditor::may_write() {
    check_boxes();
    if (!writable()) {
        return false;
    }
    return held_ || around_.boxes.show({.text = "Overwrite the calibration in the instrument?",
                                        .title = "Write Calibration",
                                        .buttons = MessageButtons::yes_no,
                                        .icon = MessageIcon::question,
                                        .informative =
                                            "It was never read, so it cannot be kept in a file and "
                                            "cannot be brought back."}) == MessageAnswer::yes;
}

bool RecordEditor::keep_record() {
    if (!held_) {
        return true;
    }
    const FileResult result = backup_.keep({.values = *held_, .instrument = instrument()});
    return result.status == FileStatus::done ||
           around_.boxes.show({.text = "Write without keeping the calibration read before?",
                               .title = "Write Calibration",
                               .buttons = MessageButtons::yes_no,
                               .icon = MessageIcon::exclamation,
                               .informative = "It could not be kept in a file: " +
                                              result.reason}) == MessageAnswer::yes;
}

void RecordEditor::write_words() {
    around_.link.flush();
    show_status("Writing Cal Data");
    around_.clock.sleep(milliseconds(500));
    form_.progressbar1.start(static_cast<int>(record_size) + 1);
    for (std::size_t index = 0; index < record_size; ++index) {
        around_.link.write_flash_word(record_address(index), word_of_value(edited_.at(index)));
        show_step();
    }
    around_.link.write_flash_word(flash_address::marker, written_marker);
    show_step();
    around_.clock.sleep(milliseconds(200));
}

void RecordEditor::read_back() {
    std::array<std::uint16_t, record_size> words = {};
    const auto addresses = record_addresses();
    if (read_words(addresses, words, false) < addresses.size()) {
        note_.say("The instrument did not answer when the record was read back.");
        return;
    }
    const bool kept = held_.has_value();
    held_ = record_of(words);
    backup_.end_write();
    const std::string found = differences(edited_, *held_);
    const std::string doubtful = doubtful_values();
    doubtful_ = {};
    if (!found.empty()) {
        take_in_use(*held_);
        note_.say("Read back from the instrument: " + found);
    } else if (kept && !backup_.kept().empty()) {
        note_.say("Read back and found right. The values before are in " + backup_.kept() +
                  (doubtful.empty() ? "" : ". ") + doubtful);
    } else {
        note_.say("Read back and found right." + (doubtful.empty() ? "" : " " + doubtful));
    }
}

std::string RecordEditor::doubtful_values() const {
    std::vector<std::string> names;
    for (std::size_t index = 0; index < record_size; ++index) {
        if (doubtful_.at(index)) {
            names.emplace_back(record_value_name(index));
        }
    }
    if (names.empty()) {
        return {};
    }
    const bool one = names.size() == 1;
    std::string text = first_few(names);
    text += one ? " was computed from a value" : " were computed from values";
    text += " that the instrument did not work with: calibrate ";
    text += one ? "it again." : "them again.";
    return text;
}

void RecordEditor::cmdsetalltodefault_Click() {
    if (around_.boxes.show({.text = "Set calibration data to default?",
                            .title = "Set to Default",
                            .buttons = MessageButtons::yes_no,
                            .icon = MessageIcon::question}) != MessageAnswer::yes) {
        return;
    }
    show_edited(default_calibration);
    take_in_use(default_calibration);
    note_.say("The instrument keeps its own values until these are written.");
}

void RecordEditor::cmdrestorecal_Click() {
    const RecordBackup::Restored restored = backup_.restore();
    if (restored.file.empty()) {
        return;
    }
    if (!restored.record) {
        note_.say(restored.file + " cannot be restored: " + restored.failure);
        return;
    }
    if (!may_restore(*restored.record)) {
        return;
    }
    show_edited(restored.record->values);
    note_.say(restored.file + " is in the boxes, not yet in the instrument.");
}

InstrumentIdentity RecordEditor::instrument() const {
    // Whatever a device calls itself must fit into a line of the file.
    std::string serial = around_.link.state().serialsuffix;
    std::erase_if(serial, [](char character) { return character <= ' ' || character > '~'; });
    return {.serial = std::move(serial),
            .hardware = form_.cald61.text(),
            .firmware = form_.cald62.text()};
}

bool RecordEditor::may_restore(const KeptRecord& record) {
    if (may_be_the_same(record.instrument, instrument())) {
        return true;
    }
    std::string of = "It was kept for the instrument with the serial number ";
    of += shown_line(record.instrument.serial);
    of += " and the hardware ID ";
    of += shown_line(record.instrument.hardware);
    of += ", not for this one.";
    return around_.boxes.show({.text = "Restore the calibration of another instrument?",
                               .title = "Restore Calibration",
                               .buttons = MessageButtons::yes_no,
                               .icon = MessageIcon::exclamation,
                               .informative = of}) == MessageAnswer::yes;
}

void RecordEditor::cald_Change(std::size_t index) {
    if (const auto value = int16_in(form_.cald.at(index).text())) {
        edited_.at(index) = *value;
    }
    doubtful_.at(index) = false;
    check_boxes();
}

bool RecordEditor::has_value(std::size_t index) const {
    return int16_in(form_.cald.at(index).text()).has_value();
}

bool RecordEditor::writable() const {
    for (std::size_t index = 0; index < form_.cald.size(); ++index) {
        if (!has_value(index)) {
            return false;
        }
    }
    return true;
}

void RecordEditor::check_boxes() {
    std::vector<std::string> without;
    for (std::size_t index = 0; index < form_.cald.size(); ++index) {
        form_.cald.at(index).set_faulty(!has_value(index));
        if (!has_value(index)) {
            without.emplace_back(record_value_name(index));
        }
    }
    std::string obstacle;
    if (!without.empty()) {
        obstacle = "Not a whole number from -32768 to 32767: ";
        obstacle += first_few(without);
        obstacle += ". Cannot be written.";
    }
    note_.set_obstacle(std::move(obstacle));
    form_.cmdwritecal.set_enabled(without.empty());
}

void RecordEditor::put(std::size_t index, std::int32_t value) {
    edited_.at(index) = value;
    doubtful_.at(index) = false;
    form_.cald.at(index).set_text(std::to_string(value));
}

void RecordEditor::put_computed(std::size_t index, std::int32_t value) {
    put(index, value);
    doubtful_.at(index) = !works_with(index);
}

void RecordEditor::show_edited(const CalibrationRecord& record) {
    for (std::size_t index = 0; index < record.size(); ++index) {
        put(index, record.at(index));
    }
}

void RecordEditor::take_in_use(const CalibrationRecord& record) {
    in_use_ = record;
    // A sweep that was broken off by the writing, or taken with the old values, starts anew.
    mark_changed(around_);
}

void RecordEditor::show_status(const std::string& text) {
    form_.calstatus.set_caption(text);
    around_.messages.repaint(form_.calstatus.name());
}

void RecordEditor::show_step() {
    form_.progressbar1.step();
    around_.messages.repaint(form_.progressbar1.name());
}

} // namespace kv408
