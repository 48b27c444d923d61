#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <tuple>

#include "acquisition/state_machine.h"
#include "calibration/calibration_form.h"
#include "calibration/calibration_note.h"
#include "calibration/record_backup.h"
#include "calibration/record_values.h"
#include "panel/surroundings.h"
#include "state/calibration_record.h"

namespace kv408 {

/// The calibration record on the form: read from the instrument, edited, written, set to defaults.
///
/// There are two copies of it. The one in use is what the instrument corrects its samples with as
/// far as the program knows; the edited one follows the text boxes, and becomes the one in use when
/// it is written.
class RecordEditor {
public:
    /// Edits `in_use`, the record that the program works with, on `form`.
    RecordEditor(const Surroundings& around, CalibrationForm& form, CalibrationNote& note,
                 StateMachine& state_machine, CalibrationRecord& in_use, RecordBackup& backup)
        : around_(around), form_(form), note_(note), state_machine_(state_machine), in_use_(in_use),
          backup_(backup) {}

    /// Calibration in the menu: opens the form. As long as no record was read and the boxes hold
    /// none it also reads the record from the instrument, and starts a running sweep again
    /// afterwards.
    void mnucalibration_Click();

    /// Reads record and identification from the instrument, which stops sweeping. Breaks a
    /// linearity calibration off only after a question; so does the writing.
    void cmdreadcald_Click();

    /// Writes the edited record to the instrument, keeps the one read before in a file, and reads
    /// back what the instrument then holds, which is then in use. Refused while a box holds no
    /// value.
    void cmdwritecal_Click();

    /// After a question: the defaults become the edited record and the one in use. The instrument
    /// keeps its own.
    void cmdsetalltodefault_Click();

    /// Puts a record that was kept in a file into the boxes.
    void cmdrestorecal_Click();

    /// The text of box `index`, 0..10, has changed.
    void cald_Change(std::size_t index);

    /// Sets edited value `index`, 0..10, and shows it in its box.
    void put(std::size_t index, std::int32_t value);

    /// The same for a value that was computed from the one in use. Where the instrument does not
    /// work with that, writing it says so.
    void put_computed(std::size_t index, std::int32_t value);

    /// The edited record.
    [[nodiscard]] const CalibrationRecord& edited() const { return edited_; }

    /// The record in use.
    [[nodiscard]] const CalibrationRecord& in_use() const { return in_use_; }

    /// The calibration flag: a gain was calibrated and is not written yet.
    [[nodiscard]] bool calibrated() const { return calibrated_; }
    void set_calibrated() { calibrated_ = true; }

    /// The record in use was read from the instrument at least once.
    [[nodiscard]] bool was_read() const { return held_.has_value(); }

    /// Value `index` in use, 0..10, is the one that the instrument was found to hold.
    [[nodiscard]] bool works_with(std::size_t index) const {
        return held_ && held_->at(index) == in_use_.at(index);
    }

private:
    /// Reads the words at `addresses` into `words`; the number that came before one did not.
    std::size_t read_words(std::span<const std::uint16_t> addresses, std::span<std::uint16_t> words,
                           bool show_progress);
    /// False when a linearity calibration is under way and is to go on.
    bool may_break_off();
    void read_record();
    bool may_write();
    bool keep_record();
    void write_words();
    void read_back();
    [[nodiscard]] std::string doubtful_values() const;
    void take_in_use(const CalibrationRecord& record);
    void show_edited(const CalibrationRecord& record);
    void show_status(const std::string& text);
    void show_step();
    [[nodiscard]] bool has_value(std::size_t index) const;
    [[nodiscard]] bool writable() const;
    void check_boxes();
    [[nodiscard]] InstrumentIdentity instrument() const;
    bool may_restore(const KeptRecord& record);

    Surroundings around_;
    CalibrationForm& form_;
    CalibrationNote& note_;
    StateMachine& state_machine_;
    CalibrationRecord& in_use_;
    RecordBackup& backup_;
    CalibrationRecord edited_ = default_calibration;
    std::optional<CalibrationRecord> held_; ///< what the instrument held when it was last read
    bool calibrated_ = false;
    /// Edited values that were computed from one that the instrument did not work with.
    std::array<bool, std::tuple_size_v<CalibrationRecord>> doubtful_ = {};
};

} // namespace kv408
