#include "export/mask_dialog.h"

#include <utility>
#include <variant>

#include "analysis/mask_file.h"
#include "export/typed_quantity.h"
#include "host/shown_text.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

constexpr int own_mask = static_cast<int>(shipped_masks.size());

/// So many lines the window shows; a mask may have 64 polygons.
constexpr std::size_t most_lines = 17;

std::string_view verdict_text(MaskVerdict verdict) {
    switch (verdict) {
    case MaskVerdict::pass:
        return "PASS";
    case MaskVerdict::fail:
        return "FAIL";
    case MaskVerdict::none:
        break;
    }
    return "NO RESULT";
}

/// The colour behind the verdict: blue and orange are told apart by all people, as are their
/// lightnesses.
Colour verdict_colour(MaskVerdict verdict) {
    switch (verdict) {
    case MaskVerdict::pass:
        return rgb(120, 190, 255);
    case MaskVerdict::fail:
        return rgb(235, 120, 30);
    case MaskVerdict::none:
        break;
    }
    return rgb(190, 190, 190);
}

/// The mask that `text` is, or what is wrong with it.
std::variant<Mask, std::string> mask_or_problem(std::string_view text) {
    auto read = mask_in(text);
    if (auto* const mask = std::get_if<Mask>(&read)) {
        return std::move(*mask);
    }
    const auto& error = std::get<MaskFileError>(read);
    return "line " + std::to_string(error.line) + ": " + error.what;
}

std::vector<ToldValue> mask_values(const Mask& mask, const MaskHits& found, double allowed,
                                   const Told<double>& margin) {
    constexpr double percent_per_one = 100.0;
    std::vector<ToldValue> values = {
        {"Hits", found.hits, ToldUnit::hits},
        {"Samples", found.samples, ToldUnit::hits},
        {"Hit ratio", found.ratio, ToldUnit::share},
        {"Allowed ratio", allowed, ToldUnit::share},
        {"Margin", margin ? Told<double>(*margin * percent_per_one) : margin, ToldUnit::percent}};
    for (std::size_t index = 0; index < found.by_polygon.size(); ++index) {
        const std::string& name = mask.polygons[index].name;
        values.push_back({"Hits in " + (name.empty() ? std::to_string(index + 1) : name),
                          found.by_polygon[index], ToldUnit::hits});
    }
    return values;
}

} // namespace

MaskDialog::MaskDialog(DensityDialog& density, const EyeDialog& eye, Host host,
                       EyeDialog::ShowMarks show_marks)
    : density_(density), eye_(eye), host_(std::move(host)), show_marks_(std::move(show_marks)),
      watch_(density, host_.machine.clock,
             {.channel = controls_.cmbMaskChannel,
              .remark = controls_.lblMaskRemark,
              .sweeps = &controls_.lblMaskState},
             {.least = 1s}, [this] { show_test(); }),
      actions_(host_.actions) {
    controls_.cmbMask.set_entries({shipped_mask_names.begin(), shipped_mask_names.end()});
    controls_.cmbMask.set_index(0);
    controls_.cmbMask.on_click([this] {
        choose();
        refresh();
    });
    controls_.cmbMaskAction.set_entries({limit_action_names.begin(), limit_action_names.end()});
    controls_.cmbMaskAction.set_index(0);
    controls_.cmbMaskAction.on_click([this] { hit_ = false; });
    controls_.txtMaskRatio.on_change([this] {
        ratio_ = typed_ratio(controls_.txtMaskRatio, {0.0, 1.0});
        refresh();
    });
    controls_.cmdMaskLoad.on_click([this] {
        const auto path = host_.machine.choosers.open_file(
            {.title = "Mask", .filter = "Masks (*.yaml)|*.yaml|All Files (*.*)|*.*"});
        if (path) {
            load(*path);
        }
    });
}

void MaskDialog::open() {
    choose();
    watch_.open();
}

void MaskDialog::close() {
    watch_.close();
    shown_ = {};
    show_marks_(std::nullopt);
}

void MaskDialog::choose() {
    hit_ = false;
    const int index = controls_.cmbMask.index();
    if (index == own_mask) {
        mask_ = loaded_;
    } else {
        take_shipped(static_cast<std::size_t>(index));
    }
}

void MaskDialog::take_shipped(std::size_t index) {
    mask_.reset();
    const std::string_view file = shipped_masks.at(index);
    problem_ = std::string(file) + " has not been found beside the program";
    for (const auto& path : shipped_mask_paths(host_.program, file)) {
        std::string text;
        if (host_.machine.files.read(path, text).status != FileStatus::done) {
            continue;
        }
        auto read = mask_or_problem(text);
        if (auto* const mask = std::get_if<Mask>(&read)) {
            mask_ = std::move(*mask);
        } else {
            problem_ = shown_path(path) + ", " + std::get<std::string>(read);
        }
        return;
    }
}

void MaskDialog::load(const std::filesystem::path& path) {
    std::string text;
    const FileResult result = host_.machine.files.read(path, text);
    auto read = result.status == FileStatus::done ? mask_or_problem(text)
                                                  : std::variant<Mask, std::string>(result.reason);
    auto* const mask = std::get_if<Mask>(&read);
    if (mask == nullptr) {
        host_.machine.boxes.show(
            {.text = shown_path(path) + " could not be loaded: " + std::get<std::string>(read),
             .icon = MessageIcon::critical});
        return;
    }
    loaded_ = std::move(*mask);
    std::vector<std::string> names(shipped_mask_names.begin(), shipped_mask_names.end());
    names.push_back(shown_path(path.filename()) + ": " + loaded_->name);
    controls_.cmbMask.set_entries(std::move(names));
    controls_.cmbMask.set_index(own_mask);
}

bool MaskDialog::place(MaskTest& test, const Collected& collected) const {
    if (mask_->units == MaskUnits::time_level) {
        const auto levels = two_levels(collected);
        test.placed = placed_in_time(collected, *mask_, levels ? *levels : TwoLevels{});
        test.found = mask_->name + ", in time and volts";
        return true;
    }
    const auto eye = eye_of(collected, eye_.setup());
    if (!eye) {
        test.found = text_of(eye.why());
        test.verdict = eye.why() == WhyNot::closed ? MaskVerdict::fail : MaskVerdict::none;
        return false;
    }
    test.placed = placed_at_eye(collected, *mask_, *eye);
    test.found = mask_->name + ", in unit intervals and amplitudes";
    return true;
}

MaskTest MaskDialog::test() {
    MaskTest test;
    if (!mask_ && problem_.empty()) {
        choose(); // nobody has opened the window yet
    }
    const Collected* const collected = watch_.collected();
    if (!mask_) {
        test.found = problem_;
        return test;
    }
    if (collected == nullptr) {
        test.found = text_of(WhyNot::no_hits);
        return test;
    }
    if (!place(test, *collected)) {
        return test;
    }
    const MaskHits hits = mask_hits(*collected, test.placed);
    const double allowed = ratio_.value_or(mask_->hit_ratio);
    if (!(hits.samples > 0.0)) {
        test.found = "The mask lies beside the screen: no hit has come in its time";
        return test;
    }
    test.verdict = hits.ratio <= allowed ? MaskVerdict::pass : MaskVerdict::fail;
    Told<double> margin = mask_margin(*collected, test.placed, allowed);
    if (!(test.placed.half_amplitude > 0.0)) {
        margin = WhyNot::flat;
    }
    test.values = mask_values(*mask_, hits, allowed, margin);
    return test;
}

void MaskDialog::show_test() {
    shown_ = test();
    controls_.lblMaskVerdict.set_caption(std::string(verdict_text(shown_.verdict)));
    controls_.lblMaskVerdict.set_back_colour(verdict_colour(shown_.verdict));
    controls_.lblMaskFound.set_caption(shown_.found);
    const std::span lines(shown_.values.data(), std::min(shown_.values.size(), most_lines));
    controls_.lblMaskNames.set_caption(told_names(lines));
    controls_.lblMaskValues.set_caption(told_texts(lines));
    if (const Collected* const collected = watch_.collected()) {
        placed_with_ = collected->with;
        show_marks_(DensityMarks{watch_.channel(), collected->with, mask_marks(shown_.placed)});
    } else {
        show_marks_(std::nullopt);
    }
}

void MaskDialog::look_for_first_hit() {
    const auto action = static_cast<LimitAction>(controls_.cmbMaskAction.index());
    const Collected* const collected = watch_.collected();
    // Where the eye is closed the mask has no place, and yet the verdict is known.
    const bool closed = shown_.placed.polygons.empty() && shown_.verdict == MaskVerdict::fail;
    if (!is_open() || action == LimitAction::none || looked_at_ == density_.changes() ||
        (shown_.placed.polygons.empty() && !closed) || collected == nullptr ||
        collected->with != placed_with_) {
        return;
    }
    looked_at_ = density_.changes();
    const bool any = closed || mask_hits(*collected, shown_.placed).hits > 0.0;
    if (any && !std::exchange(hit_, any)) {
        actions_.ask(action);
        refresh(); // for the snapshot, and for who looks up at the beep
    }
    hit_ = any;
}

void MaskDialog::tick_over() {
    watch_.tick_over();
    look_for_first_hit();
    const std::string problem = actions_.act();
    if (!problem.empty()) {
        host_.machine.boxes.show({.text = problem, .icon = MessageIcon::critical});
    }
}

std::string MaskDialog::table() const {
    return told_table(shown_.values, controls_.cmbMaskChannel.text());
}

} // namespace kv408
