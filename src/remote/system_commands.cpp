#include <algorithm>
#include <array>
#include <memory>

#include "config/settings_file.h"
#include "config/undo.h"
#include "display/bitmap_file.h"
#include "display/snapshot.h"
#include "remote/client.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"
#include "remote/tree.h"
#include "scope/parts.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> picture_kinds{"PNG", "BMP"};

/// `settings` without the folder for snapshots, whose line stays as one that is passed over: the
/// program keeps its own, and no client says where files are written.
std::string without_folder(std::string settings) {
    constexpr std::string_view key = "snapshotpath";
    std::size_t begin = 0;
    while (begin < settings.size()) {
        const std::size_t end = std::min(settings.find('\n', begin), settings.size());
        const std::string_view line = std::string_view(settings).substr(begin, end - begin);
        const std::size_t at = line.substr(0, line.find('\t')).find(key);
        if (at != std::string_view::npos) {
            settings[begin + at] = '-';
        }
        begin = end + 1;
    }
    return settings;
}

void load_set_up(Instrument& instrument, const Call& call) {
    const std::string bytes = without_folder(block_of(call.parameters.front()));
    int bad_line = 0;
    instrument.act(call.client,
                   [&](Scope& scope) { bad_line = scope.settings_file().load_bytes(bytes); });
    if (bad_line > 0) {
        throw Refused{ScpiError::invalid_block, "Line " + std::to_string(bad_line)};
    }
}

/// A bitmap is a hundred times as long as the picture in memory, and its client may never read it.
class BitmapAnswer : public LongAnswer {
public:
    explicit BitmapAnswer(PackedPicture picture) : file_(std::move(picture)) {}

    std::string next() override {
        const std::string head = begun_ ? "" : block_head(file_.size());
        begun_ = true;
        return head + file_.next();
    }

private:
    BitmapParts file_;
    bool begun_ = false;
};

std::unique_ptr<LongAnswer> png(Instrument& instrument) {
    return instrument.aside().answer(
        [make = instrument.scope().snapshot().png()] {
            const std::string bytes = make();
            return bytes.empty() ? "" : block_reply(bytes);
        },
        "The picture could not be encoded");
}

std::string give_picture(Instrument& instrument, const Call& call) {
    if (choice_of(call.parameters.front(), picture_kinds) == 0) {
        call.client.answer_in_parts(png(instrument));
    } else {
        call.client.answer_in_parts(
            std::make_unique<BitmapAnswer>(instrument.scope().snapshot().packed()));
    }
    return {};
}

/// Redoes (`steps` 1) or undoes (-1) one step of the set-up.
void go_on_steps(Instrument& instrument, const Call& call, int steps) {
    bool done = false;
    instrument.act(call.client, [&](Scope& scope) {
        Undo& undo = scope.undo();
        const std::size_t before = undo.steps().place();
        if (steps > 0 || before > 0) {
            undo.go(steps > 0 ? before + 1 : before - 1);
        }
        done = undo.steps().place() != before;
    });
    if (!done) {
        throw Refused{ScpiError::settings_conflict,
                      steps > 0 ? "No step has been taken back" : "There is no step to take back"};
    }
}

/// The steps in words, the oldest first; those that have been taken back are left out.
std::string steps_in_words(Instrument& instrument) {
    const SetUpSteps& steps = instrument.scope().undo().steps();
    std::string answer;
    for (std::size_t step = 0; step < steps.place(); ++step) {
        add_item(answer, string_reply(steps.words(step)));
    }
    return answer.empty() ? string_reply("") : answer;
}

std::string record(Instrument& instrument) {
    std::string answer;
    for (const std::int32_t value : instrument.parts().calibration) {
        add_item(answer, whole_reply(value));
    }
    return answer;
}

} // namespace

std::vector<Command> system_commands(Instrument& instrument) {
    Command picture_query{"HCOPy:SDUMp:DATA"};
    picture_query.answer = [&instrument](const Call& call) {
        return give_picture(instrument, call);
    };
    picture_query.query_takes = {1, 1};
    picture_query.value = choices_text(picture_kinds);
    return {
        {"SYSTem:SETup",
         [&instrument](const Call& call) { load_set_up(instrument, call); },
         {1, 1},
         [&instrument](const Call&) {
             return block_reply(instrument.scope().settings_file().bytes());
         },
         {},
         "block"},
        boolean_setting(
            "SYSTem:LOCK",
            [&instrument](const Call& call, bool lock) {
                instrument.lock_panel(call.client, lock);
            },
            [&instrument](const Call&) { return instrument.panel_locked(); }),
        {"SYSTem:UNDO", [&instrument](const Call& call) { go_on_steps(instrument, call, -1); }},
        {"SYSTem:REDO", [&instrument](const Call& call) { go_on_steps(instrument, call, 1); }},
        query_command("SYSTem:STEPs",
                      [&instrument](const Call&) { return steps_in_words(instrument); }),
        picture_query,
        query_command("CALibration:RECord",
                      [&instrument](const Call&) { return record(instrument); }),
    };
}

} // namespace kv408
