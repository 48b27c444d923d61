#include "endurance/soak.h"

#include <algorithm>
#include <array>
#include <iostream>

#include "config/undo.h"
#include "display/settings_dialog.h"
#include "scope/panel_agreement.h"
#include "scope/set_up_agreement.h"
#include "scope/settings_shown.h"
#include "support/allocations/allocations.h"

namespace kv408 {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

/// What memory may grow by after the first mark.
constexpr std::size_t most_growth = 1U << 20U;

/// How long after a fault the program may still tell of it.
constexpr seconds aftermath{30};

/// What is told only when the link fails.
constexpr std::array link_failures = {
    "Comm timed out",      "CommError",          "Error Sending Data.", "error set triger",
    "Error setting scope", "Error Vold/div set", "No connection",       "WKTP2B",
    "error seting"};

std::string time_text(nanoseconds time) {
    const auto whole = duration_cast<seconds>(time).count();
    std::string text = std::to_string(whole / 3600);
    text.append("h ").append(std::to_string(whole / 60 % 60)).append("min ");
    return text.append(std::to_string(whole % 60)).append("s");
}

} // namespace

Soak::Soak(const SoakOptions& options)
    : options_(options), chance_(options.seed), simulation_(clock_, {}, options.seed),
      interval_(std::min<nanoseconds>(std::chrono::hours(1), nanoseconds(options.length) / 10)),
      next_mark_(interval_) {
    weather_.longest_wait =
        static_cast<int>(std::min<std::int64_t>(interval_ / milliseconds(100), 6000));
    boxes_.on_show = [this](const std::string& text) { hear(text); };
    boxes_.on_tick = [this] {
        if (scope_) {
            ticks(1);
        }
    };
    messages_.on_message = [this] {
        if (user_ && !within_message_) {
            within_message_ = true;
            done_.add(std::string("within: ") + user_->do_anything());
            within_message_ = false;
        }
    };
}

bool Soak::run() {
    begin();
    while (!failed_ && clock_.now() < options_.length &&
           (!options_.until_step || step_ < *options_.until_step)) {
        step();
        pass_mark();
    }
    if (options_.until_step) {
        tell_where();
        tell_state();
    } else if (!failed_) {
        end_on_request();
        begin_again();
    }
    std::cout << (failed_ ? "FAILED" : "passed") << " after " << time_text(clock_.now()) << ": "
              << step_ << " steps, " << tick_count_ << " ticks, " << starts_ << " starts, "
              << boxes_.count << " messages, " << files_.pictures << " snapshots, " << agreements_
              << " comparisons of instrument and panel, " << asides_ << " settings set aside\n";
    return !failed_;
}

void Soak::ticks(int count) {
    for (; count > 0 && !scope_->ended(); --count) {
        constexpr nanoseconds interval = milliseconds(100);
        clock_.advance(interval - clock_.now() % interval);
        ++tick_count_;
        scope_->tick();
    }
}

void Soak::step() {
    ++step_;
    note_faults();
    done_.add(user_->do_anything());
    note_faults();
    check_steps();
    const bool in_trouble = clock_.now() - last_fault_ < aftermath;
    if (scope_->ended()) {
        if (!in_trouble) {
            fail("the program has ended by itself");
            return;
        }
        begin_again();
        return;
    }
    if (chance_.in(30)) {
        heal();
    }
    if (chance_.number(1, 200) == 1) {
        sleep_awhile();
    }
    if (chance_.in(4)) {
        settle();
        check_set_up();
    }
    if (weather_.stormy && chance_.number(1, 60) == 1) {
        settle();
        end_on_request();
        begin_again();
    }
}

void Soak::check_steps() {
    if (scope_->ended()) {
        return;
    }
    const SetUpSteps& steps = scope_->undo().steps();
    if (steps.present() != set_up_of(scope_->panel(), scope_->settings_file().confirmed_bytes())) {
        fail("the last step of the set-up is not what the panel shows");
    }
    if (!chance_.in(2)) {
        return;
    }
    const std::size_t place = steps.place();
    const PanelSetUp before = steps.present();
    scope_->act([this] { scope_->undo().go(0); });
    scope_->act([this, place] { scope_->undo().go(place); });
    if (scope_->ended() || steps.place() != place || steps.present() != before) {
        fail("the set-up does not come back");
    }
}

void Soak::note_faults() {
    const simulator::Faults& faults = simulation_.bench().faults;
    const bool any = faults.unplugged || faults.no_power ||
                     faults.acknowledge != simulator::AcknowledgeFault::none ||
                     faults.lose_every > 0 || faults.flipped_bits != 0 || faults.block_bytes ||
                     !faults.extra_bytes.empty() || faults.no_trigger || !faults.operations.empty();
    if (any || simulation_.bench().planned_faults) {
        last_fault_ = clock_.now();
        fault_seen_ = true;
    }
}

void Soak::heal() {
    note_faults();
    simulation_.bench().faults = {};
    simulation_.bench().planned_faults.reset();
}

void Soak::sleep_awhile() {
    clock_.advance(seconds(chance_.number(2, 20)));
    simulator::Faults& faults = simulation_.bench().faults;
    const bool off = std::exchange(faults.no_power, true);
    simulation_.notice_faults();
    faults.no_power = off;
    simulation_.notice_faults();
    done_.add("the computer sleeps while the instrument is switched off and on");
}

void Soak::hear(const std::string& text) {
    told_.add(text);
    note_faults();
    const bool of_the_link =
        std::any_of(link_failures.begin(), link_failures.end(),
                    [&text](const char* part) { return text.find(part) != std::string::npos; });
    if (of_the_link && clock_.now() - last_fault_ > aftermath) {
        fail("told without a fault: " + text);
    }
}

void Soak::pass_mark() {
    if (failed_ || clock_.now() < next_mark_) {
        return;
    }
    while (next_mark_ <= clock_.now()) {
        next_mark_ += interval_;
    }
    check_memory(time_text(clock_.now()));
    change_weather();
}

void Soak::change_weather() {
    constexpr int hours_of_a_day = 6;
    const bool stormy = clock_.now() / interval_ % hours_of_a_day == 0;
    if (weather_.stormy && !stormy) {
        heal();
    }
    weather_.stormy = stormy;
}

void Soak::check_memory(const std::string& when) {
    const std::size_t bytes = allocations().bytes;
    if (!first_bytes_) {
        first_bytes_ = bytes;
    }
    std::cout << when << ": " << bytes << " bytes allocated, "
              << static_cast<std::int64_t>(bytes) - static_cast<std::int64_t>(*first_bytes_)
              << " more than at first; " << step_ << " steps, " << starts_ << " starts, "
              << boxes_.count << " messages" << std::endl;
    if (bytes > *first_bytes_ + most_growth) {
        fail("memory has grown");
    }
}

void Soak::settle() {
    heal();
    const auto on_message = std::exchange(messages_.on_message, nullptr);
    // A start uploads everything; what is being swept must have been uploaded without it. But point
    // by point a set-up that failed is not tried again by itself.
    const AcquisitionState& acquisition = scope_->parts().acquisition;
    if (!acquisition.acqrunning || acquisition.scopestate == "calibrationint" ||
        (acquisition.pointmode && fault_seen_)) {
        scope_->act([this] { scope_->panel().cmdstartsweep.click(); });
    }
    // Two failed set-ups at most, and what a channel's block and a pass take.
    ticks(20);
    messages_.on_message = on_message;
}

void Soak::check_set_up() {
    if (failed_ || scope_->ended()) {
        return;
    }
    fault_seen_ = false;
    ++agreements_;
    if (scope_->picture().surface().width() != plot::width) { // composed, as if somebody looked
        fail("the picture has no size");
    }
    const FrontPanel& panel = scope_->panel();
    const bool swept = panel.textstatus.text() == "Running" &&
                       (panel.channel[0].enable.checked() || panel.channel[1].enable.checked());
    std::string all;
    for (const auto& texts : {set_up_differences(scope_->parts(), simulation_.settings()),
                              panel_differences(scope_->parts(), {.swept = swept})}) {
        for (const std::string& text : texts) {
            all.append("\n  ").append(text);
        }
    }
    if (!all.empty()) {
        fail("instrument, panel and program do not agree:" + all);
    }
}

void Soak::begin() {
    for (int attempt = 1; !start(); ++attempt) {
        if (attempt > 2 || chance_.in(50)) {
            heal();
        }
    }
}

void Soak::close_device() {
    simulator::TestBench& bench = simulation_.bench();
    const simulator::Faults faults = std::exchange(bench.faults, {.unplugged = true});
    const auto planned = std::exchange(bench.planned_faults, std::nullopt);
    simulation_.bridge().count_devices();
    bench.faults = faults;
    bench.planned_faults = planned;
}

bool Soak::start() {
    user_.reset();
    scope_.reset();
    close_device();
    ++starts_;
    scope_ = std::make_unique<Scope>(Machine{clock_, boxes_, messages_, simulation_.bridge(),
                                             files_, choosers_, fake_places(), coder_});
    note_faults();
    const bool started = scope_->start();
    note_faults();
    if (!started && clock_.now() - last_fault_ > aftermath) {
        fail("the program does not start");
        return true;
    }
    if (started) {
        user_ = std::make_unique<SoakUser>(*scope_, simulation_, chance_, weather_, ticks_);
    }
    return started;
}

void Soak::end_on_request() {
    if (chance_.in(25)) {
        files_.refusal = "No space left on device";
        done_.add("the disk is full");
    }
    switch (chance_.number(1, 4)) {
    case 1:
        scope_->close();
        break;
    case 2:
        scope_->end();
        break;
    case 3:
        // What is being edited would stay on the panel, and is not saved.
        scope_->act([this] { scope_->settings_dialog().cancel(); });
        scope_->abandon();
        break;
    default:
        scope_->act([this] { scope_->panel().menuexit.click(); });
    }
    if (!scope_->ended()) {
        fail("the program does not end");
    }
}

void Soak::begin_again() {
    const std::string saved = saved_settings();
    const std::string aside = settings_aside();
    const auto shown = settings_shown(scope_->parts());
    bool clean = clock_.now() - last_fault_ > aftermath;
    files_.refusal.clear();
    boxes_.took_aside.reset();
    done_.add("the program ends");
    // Nobody starts it before a reply that is under way has come to its end.
    clock_.advance(seconds(2));
    if (chance_.in(70)) {
        heal();
    }
    begin();
    if (failed_) {
        return;
    }
    if (boxes_.took_aside.has_value() == aside.empty()) {
        fail("settings that were set aside have not been offered, or others have");
        return;
    }
    const bool as_before = aside.empty() || boxes_.took_aside.value_or(false);
    asides_ += boxes_.took_aside.has_value() ? 1 : 0;
    check_settings(as_before && !aside.empty() ? aside : saved);
    clean = clean && as_before;
    if (!clean || clock_.now() - last_fault_ <= aftermath) {
        return;
    }
    const auto now = settings_shown(scope_->parts());
    for (std::size_t index = 0; index < shown.size(); ++index) {
        if (now.at(index) != shown.at(index)) {
            fail("setting " + std::to_string(index) + " was \"" + shown.at(index) +
                 "\" and comes back as \"" + now.at(index) + "\"");
        }
    }
}

void Soak::check_settings(const std::string& before) {
    choosers_.next = "/compared.TXT";
    scope_->act([this] { scope_->panel().saveconfig.click(); });
    const std::string& after = files_.files["/compared.TXT"];
    if (after != before) {
        fail("the settings do not come back. Saved:\n" + before + "Back:\n" + after);
    }
}

std::string Soak::settings_aside() const {
    const auto found = files_.files.find(std::string(settings_path) + ".unsaved");
    return found == files_.files.end() ? std::string() : found->second;
}

std::string Soak::saved_settings() const {
    const auto found = files_.files.find(settings_path);
    return found == files_.files.end() ? std::string() : found->second;
}

void Soak::fail(const std::string& what) {
    if (failed_) {
        return;
    }
    failed_ = true;
    std::cout << what << '\n';
    tell_where();
    std::cout << "Once more up to here: soak --minutes "
              << duration_cast<std::chrono::minutes>(options_.length).count() << " --seed "
              << options_.seed << " --until-step " << step_ << '\n';
}

void Soak::tell_where() const {
    std::cout << "Seed " << options_.seed << ", step " << step_ << ", " << time_text(clock_.now())
              << ". Done last:\n";
    for (const std::string& text : done_.texts()) {
        std::cout << "  " << text << '\n';
    }
    std::cout << "Told last:\n";
    for (const std::string& text : told_.texts()) {
        std::cout << "  " << text << '\n';
    }
}

void Soak::tell_state() const {
    std::cout << "State word " << scope_->parts().acquisition.scopestate << ", settings:\n";
    for (const std::string& text : settings_shown(scope_->parts())) {
        std::cout << "  " << text << '\n';
    }
    for (const std::string& text : set_up_differences(scope_->parts(), simulation_.settings())) {
        std::cout << "  not yet uploaded: " << text << '\n';
    }
}

} // namespace kv408
