#include "display/settings_dialog.h"

#include <algorithm>
#include <string_view>

#include "host/path_text.h"
#include "host/shown_text.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr int greatest_component = 255;

std::array<int, colour_components> split(Colour colour) {
    return {red_of(colour), green_of(colour), blue_of(colour)};
}

/// The colour that has `value` as its component `component` and 0 elsewhere.
Colour component_colour(std::size_t component, int value) {
    constexpr std::size_t component_bits = 8;
    return Colour{static_cast<std::uint32_t>(value) << component_bits * component};
}

/// Whether `text` may become another number than it is by typing on at its end: it has no digit
/// yet, or a minus in front.
bool is_unfinished(std::string_view text) {
    const std::size_t start = text.find_first_not_of(' ');
    return text.find_first_of("0123456789") == std::string_view::npos ||
           (start != std::string_view::npos && text[start] == '-');
}

/// Colours that stand out from white as the factory's do from black, for print and bright rooms.
constexpr ColourTable colours_on_white = {.ch1 = rgb(176, 72, 0),
                                          .ch2 = rgb(0, 72, 176),
                                          .background = rgb(255, 255, 255),
                                          .normal_text = rgb(0, 0, 0),
                                          .grid = rgb(136, 136, 136),
                                          .text_background = rgb(255, 255, 255),
                                          .annotations = rgb(192, 0, 96)};

} // namespace

SettingsDialog::SettingsDialog(FrontPanel& panel, DisplaySettings& settings, ColourTable& colours,
                               ColourUpdate& update, Screen& screen, FileChoosers& choosers)
    : settings_(settings), colours_(colours), update_(update), screen_(screen),
      choosers_(choosers) {
    panel.mnusettings.on_click([this] { mnusettings_Click(); });
    connect();
    connect_colours();
}

void SettingsDialog::connect() {
    controls_.tabstrip1.on_click([this] { TabStrip1_Click(); });
    controls_.cmdok.on_click([this] { cmdOK_Click(); });
    controls_.cmdcancel.on_click([this] { cmdCancel_Click(); });
    controls_.browse.on_click([this] { Command1_Click(); });
    controls_.txtsnapshotpath.on_change([this] { show_path(); });
    controls_.chksnapshotdialog.on_click([this] { chkSnapshotDialog_Click(); });
}

void SettingsDialog::connect_colours() {
    for (std::size_t item = 0; item < colour_items; ++item) {
        controls_.optcolor[item].on_click([this, item] { optColor_Click(item); });
    }
    for (std::size_t component = 0; component < colour_components; ++component) {
        controls_.slrgb[component].on_change([this, component] { slRGB_Change(component); });
        TextBox& number = controls_.txtrgb[component];
        number.on_change([this, component] { txtRGB_Change(component); });
        number.on_leave([this, component] { show_number(component); });
    }
    controls_.chkautoupd.on_click([this] { chkAutoUpd_Click(); });
    controls_.cmdsetdefault.on_click([this] { cmdSetDefault_Click(); });
    controls_.cmdonblack.on_click([this] { cmdSetDefault_Click(); });
    controls_.cmdonwhite.on_click([this] {
        take(colours_on_white);
        show_working();
    });
}

void SettingsDialog::mnusettings_Click() {
    if (!open_) {
        Form_Load();
        open_ = true;
    }
    if (show_) {
        show_();
    }
}

void SettingsDialog::Form_Load() {
    loading_ = true;
    saved_ = items_of(colours_);
    working_ = saved_;
    show_swatches();
    controls_.chkautoupd.set_checked(false);
    loading_ = false;
    controls_.tabstrip1.select(1);
    controls_.optcolor[0].choose();
    controls_.txtsnapshotpath.set_text(settings_.snapshotpath);
    show_path();
    controls_.persist.set_value(settings_.persisttime);
    controls_.chksnapshotdialog.set_checked(settings_.snapshotdialog);
    controls_.chksnapshotinvert.set_checked(settings_.snapshotinvert);
    chkSnapshotDialog_Click();
}

void SettingsDialog::TabStrip1_Click() {
    const std::string selected = controls_.tabstrip1.selected_key();
    for (Label* const frame :
         {&controls_.frmsnapshot, &controls_.frmdisplay, &controls_.frmcolors}) {
        frame->set_visible(frame->caption() == selected);
    }
}

void SettingsDialog::optColor_Click(std::size_t item) {
    item_ = item;
    for (std::size_t other = 0; other < colour_items; ++other) {
        if (other != item) {
            controls_.optcolor[other].clear();
        }
    }
    const Colour colour = working_[item];
    const std::array<int, colour_components> components = split(colour);
    // The three of them make one colour: nothing is taken over half way.
    loading_ = true;
    for (std::size_t component = 0; component < colour_components; ++component) {
        controls_.txtrgb[component].set_text(std::to_string(components[component]));
    }
    loading_ = false;
    show_edited(colour);
}

void SettingsDialog::slRGB_Change(std::size_t component) {
    if (!typing_) {
        show_number(component);
    }
    if (loading_) {
        return;
    }
    const auto value = [this](std::size_t index) {
        return static_cast<std::uint8_t>(controls_.slrgb[index].value());
    };
    const Colour colour = rgb(value(0), value(1), value(2));
    working_[item_] = colour;
    controls_.shpcolor[item_].set_back_colour(colour);
    show_edited(colour);
    if (controls_.chkautoupd.checked()) {
        apply(working_);
    }
}

void SettingsDialog::txtRGB_Change(std::size_t component) {
    if (echoing_) {
        return;
    }
    Slider& slider = controls_.slrgb[component];
    const std::string& text = controls_.txtrgb[component].text();
    const std::int32_t number = round_to_int32(leading_number(text));
    const int value = std::clamp(number, 0, greatest_component);
    typing_ = is_unfinished(text);
    if (value != slider.value()) {
        slider.set_value(value);
    } else if (value != number && !typing_) {
        show_number(component);
    }
    typing_ = false;
}

void SettingsDialog::chkAutoUpd_Click() {
    if (!loading_) {
        apply(controls_.chkautoupd.checked() ? working_ : saved_);
    }
}

void SettingsDialog::setColDefault() {
    take(ColourTable{});
}

void SettingsDialog::take(const ColourTable& colours) {
    working_ = items_of(colours);
    apply(working_);
}

void SettingsDialog::set_colours(const ColourTable& colours) {
    saved_ = items_of(colours);
    if (open_) {
        take(colours);
        show_working();
    } else {
        apply(saved_);
    }
}

void SettingsDialog::set_persistence_depth(int generations) {
    settings_.persisttime = static_cast<std::int16_t>(generations);
    if (open_) {
        controls_.persist.set_value(generations);
    }
    update_.colorupdate();
    screen_.draw(draw_flags::all);
}

void SettingsDialog::show_working() {
    show_swatches();
    optColor_Click(item_);
}

void SettingsDialog::cmdSetDefault_Click() {
    setColDefault();
    show_working();
}

void SettingsDialog::chkSnapshotDialog_Click() {
    const bool silent = !controls_.chksnapshotdialog.checked();
    controls_.txtsnapshotpath.set_enabled(silent);
    controls_.browse.set_enabled(silent);
}

void SettingsDialog::show_path() {
    const std::string& path = controls_.txtsnapshotpath.text();
    const std::string shown = shown_line(path);
    // A set-up that strangers have made may name any folder.
    controls_.shownpath.set_caption(shown == path ? "" : "that is: " + shown);
    controls_.shownpath.set_visible(shown != path);
}

void SettingsDialog::Command1_Click() {
    if (const auto folder = choosers_.choose_folder("Select a Folder")) {
        controls_.txtsnapshotpath.set_text(text_of_path(*folder));
    }
}

void SettingsDialog::cmdOK_Click() {
    settings_.snapshotpath = controls_.txtsnapshotpath.text();
    settings_.persisttime = static_cast<std::int16_t>(controls_.persist.value());
    settings_.snapshotdialog = controls_.chksnapshotdialog.checked();
    settings_.snapshotinvert = controls_.chksnapshotinvert.checked();
    apply(working_);
    close();
}

void SettingsDialog::cancel() {
    if (open_) {
        cmdCancel_Click();
    }
}

void SettingsDialog::cmdCancel_Click() {
    apply(saved_);
    close();
}

void SettingsDialog::apply(const ItemColours& items) {
    colours_ = table_of(items);
    update_.colorupdate();
    screen_.draw(draw_flags::all);
}

void SettingsDialog::show_swatches() {
    for (std::size_t item = 0; item < colour_items; ++item) {
        controls_.shpcolor[item].set_back_colour(working_[item]);
    }
}

void SettingsDialog::show_edited(Colour colour) {
    controls_.shpcurrentcol.set_back_colour(colour);
    const std::array<int, colour_components> components = split(colour);
    for (std::size_t component = 0; component < colour_components; ++component) {
        controls_.component[component].set_back_colour(
            component_colour(component, components[component]));
    }
}

void SettingsDialog::show_number(std::size_t component) {
    echoing_ = true;
    controls_.txtrgb[component].set_text(std::to_string(controls_.slrgb[component].value()));
    echoing_ = false;
}

void SettingsDialog::close() {
    open_ = false;
    if (closed_) {
        closed_();
    }
}

} // namespace kv408
