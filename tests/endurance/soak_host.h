#pragma once

// The machine of the soak: everything that the program asks of it is answered by chance, nothing
// that it was asked is kept, so that what the program itself takes of the memory can be seen.

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "host/message_boxes.h"
#include "host/window_messages.h"
#include "support/fake_files.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// Chance, all of it from one seed.
class Chance {
public:
    explicit Chance(unsigned seed) : generator_(seed) {}

    /// A whole number, `lowest` .. `highest`.
    int number(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(generator_);
    }

    /// True in `percent` of all cases.
    bool in(int percent) { return number(1, 100) <= percent; }

    [[nodiscard]] std::mt19937& generator() { return generator_; }

private:
    std::mt19937 generator_;
};

/// The last few of many texts.
class LastTexts {
public:
    explicit LastTexts(std::size_t most) : most_(most) {}

    void add(std::string text) {
        texts_.push_back(std::move(text));
        if (texts_.size() > most_) {
            texts_.pop_front();
        }
    }

    [[nodiscard]] const std::deque<std::string>& texts() const { return texts_; }

private:
    std::size_t most_;
    std::deque<std::string> texts_;
};

/// A virtual clock whose date and time go on with it, from noon of 21 November 2026 on.
class CalendarClock : public VirtualClock {
public:
    [[nodiscard]] LocalTime local_time() const override {
        using std::chrono::days;
        using std::chrono::seconds;
        using std::chrono::sys_days;
        const auto noon = sys_days(std::chrono::November / 21 / 2026) + std::chrono::hours(12);
        const auto time = noon + std::chrono::floor<seconds>(now());
        const auto day = std::chrono::floor<days>(time);
        const std::chrono::year_month_day date(day);
        const std::chrono::hh_mm_ss of_day(time - day);
        return {.year = static_cast<int>(date.year()),
                .month = static_cast<int>(static_cast<unsigned>(date.month())),
                .day = static_cast<int>(static_cast<unsigned>(date.day())),
                .hour = static_cast<int>(of_day.hours().count()),
                .minute = static_cast<int>(of_day.minutes().count()),
                .second = static_cast<int>(of_day.seconds().count())};
    }
};

/// Message boxes that are answered by chance, mostly agreed to; the timer ticks while they are
/// open.
class SoakBoxes : public MessageBoxes {
public:
    explicit SoakBoxes(Chance& chance) : chance_(chance) {}

    MessageAnswer show(const Message& message) override {
        ++count;
        if (on_show) {
            on_show(message.text);
        }
        for (int ticks = chance_.number(0, 3); ticks > 0 && on_tick; --ticks) {
            on_tick();
        }
        const bool agree = chance_.in(70);
        if (message.text.starts_with("Settings of an earlier run")) {
            took_aside = agree;
        }
        switch (message.buttons) {
        case MessageButtons::ok_cancel:
            return agree ? MessageAnswer::ok : MessageAnswer::cancel;
        case MessageButtons::retry_cancel:
            return agree ? MessageAnswer::retry : MessageAnswer::cancel;
        case MessageButtons::yes_no:
            return agree ? MessageAnswer::yes : MessageAnswer::no;
        case MessageButtons::ok:
            break;
        }
        return MessageAnswer::ok;
    }

    std::int64_t count = 0;         ///< boxes so far
    std::optional<bool> took_aside; ///< what was answered last to settings that were set aside
    std::function<void(const std::string&)> on_show; ///< hears each text
    std::function<void()> on_tick;                   ///< a tick while a box is open

private:
    Chance& chance_;
};

/// A window queue in which something waits now and then.
class SoakMessages : public WindowMessages {
public:
    explicit SoakMessages(Chance& chance) : chance_(chance) {}

    void process_pending() override {
        constexpr int seldom = 800; // a pass lets the queue run 640 times
        if (on_message && chance_.number(1, seldom) == 1) {
            on_message();
        }
    }

    void repaint(std::string_view /*control_name*/) override {}

    std::function<void()> on_message; ///< what waits

private:
    Chance& chance_;
};

/// Files in memory: of pictures only that they were written, of calibration records the last few.
class SoakFiles : public FakeFiles {
public:
    FileResult replace(const std::filesystem::path& path, std::string_view bytes) override {
        const bool picture = path.extension() == ".bmp" || path.extension() == ".png";
        FileResult result =
            FakeFiles::replace(path, picture ? std::string_view("a picture") : bytes);
        written.clear();
        if (picture) {
            files.erase(path.generic_string());
            ++pictures;
        }
        forget_old_records();
        return result;
    }

    std::int64_t pictures = 0; ///< written so far

private:
    void forget_old_records() {
        constexpr std::size_t most = 20;
        while (files.size() > most) {
            // Their names begin with the date, so the first is the oldest.
            const auto oldest = files.lower_bound("/settings/kv408/calibration-");
            files.erase(oldest == files.end() ? files.begin() : oldest);
        }
    }
};

/// File dialogs in which a few names are chosen by chance, or none.
class SoakChoosers : public FileChoosers {
public:
    SoakChoosers(Chance& chance, const SoakFiles& files) : chance_(chance), files_(files) {}

    std::optional<std::filesystem::path> open_file(const FileQuestion& question) override {
        if (question.title != "Restore Calibration") {
            return any("/set-ups/");
        }
        // A calibration record, the oldest of those that are left.
        const auto found = files_.files.lower_bound((question.folder / "calibration-").string());
        return found == files_.files.end() ? std::nullopt
                                           : std::optional<std::filesystem::path>(found->first);
    }
    std::optional<ChosenFile> save_file(const FileQuestion& question) override {
        const auto path =
            question.default_name.empty()
                ? any("/set-ups/")
                : std::optional<std::filesystem::path>("/pictures/" + question.default_name);
        return path ? std::optional<ChosenFile>({.path = *path}) : std::nullopt;
    }
    std::optional<std::filesystem::path> choose_folder(const std::string& /*title*/) override {
        return any("/folders/");
    }

    /// Not empty: this is chosen next.
    std::filesystem::path next;

private:
    std::optional<std::filesystem::path> any(const char* folder) {
        if (!next.empty()) {
            return std::exchange(next, {});
        }
        if (chance_.in(20)) {
            return std::nullopt;
        }
        return folder + std::to_string(chance_.number(1, 4)) + ".TXT";
    }

    Chance& chance_;
    const SoakFiles& files_;
};

/// Makes nothing of a picture.
class SoakCoder : public PictureCoder {
public:
    std::string png(const Surface& /*picture*/) override { return "a PNG file"; }
    Surface with_lines(const Surface& picture, const std::vector<TextLine>& /*lines*/,
                       Colour /*background*/) override {
        return picture;
    }
};

} // namespace kv408
