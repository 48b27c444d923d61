#pragma once

#include <array>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <utility>

#include "display/settings_dialog.h"
#include "panel/time_base.h"
#include "remote/remote_program.h"

namespace kv408 {

/// What can be done: a line for a client, and what a person presses for the same.
struct OneWay {
    OneWay(std::string said, std::function<void(RemoteProgram&)> done)
        : line(std::move(said)), press(std::move(done)) {}
    OneWay(std::string said, std::function<void(FrontPanel&)> done)
        : OneWay(std::move(said), [done = std::move(done)](RemoteProgram& program) {
              done(program.scope.panel());
          }) {}

    std::string line;
    std::function<void(RemoteProgram&)> press;
};

/// Someone who does anything, decided by a seed.
class AnyWay {
public:
    explicit AnyWay(unsigned seed) : random_(seed) {}

    int random(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }

    /// What a client may ask without leaving a trace.
    std::string question() {
        constexpr std::array questions{"TIM:SCAL? MAX;:CHAN1:SCAL?;POS?;:TRIG:LEV?",
                                       "MEAS:ALL? CHAN1;VPP? CHAN2",
                                       "WAV:SEQ?;PRE?;DATA?",
                                       "WAV:FORM WORD;SOUR CHAN2;DATA?",
                                       "HCOP:SDUM:DATA? BMP",
                                       "SYST:SET?",
                                       "*IDN?;*STB?;*ESR?;*TST?;:STAT:OPER:COND?",
                                       "CURS:DELT?;POS1? MAX;:DISP:COL? GRID;PERS:DEPT?",
                                       "NONSENSE",
                                       "CHAN1:SCAL 0.3;:TRIG:HYST 256;:DISP:COL CH3,\"#000000\""};
        return questions.at(static_cast<std::size_t>(random(0, int{questions.size()} - 1)));
    }

    OneWay next() {
        constexpr std::array kinds{&AnyWay::list,    &AnyWay::box,    &AnyWay::number,
                                   &AnyWay::wheel,   &AnyWay::box,    &AnyWay::list,
                                   &AnyWay::buttons, &AnyWay::number, &AnyWay::cursors,
                                   &AnyWay::looks,   &AnyWay::wheel};
        return (this->*kinds.at(static_cast<std::size_t>(random(0, int{kinds.size()} - 1))))();
    }

    /// Lets `text` be the set-up that may be loaded from now on.
    void keep(std::string text) { set_up_ = std::move(text); }

private:
    std::size_t any_channel() { return static_cast<std::size_t>(random(0, 1)); }

    OneWay list() {
        const std::size_t which = any_channel();
        const std::string number = std::to_string(which + 1);
        switch (random(0, 5)) {
        case 0: {
            constexpr std::array scales{"0.5", "200MV", "0.1V", "5E-2", "20 mV", "0.01"};
            const int entry = random(0, 5);
            return {"CHAN" + number + ":SCAL " + scales.at(static_cast<std::size_t>(entry)),
                    [=](FrontPanel& panel) { panel.channel.at(which).vdiv.set_index(entry); }};
        }
        case 1: {
            constexpr std::array times{"1E-4",  "50US",  "20 us", "10US",  "5E-6",  "2US",  "1US",
                                       "500NS", "200NS", "100NS", "50ns",  "20 NS", "10NS", "5NS",
                                       "2E-9",  "1NS",   "500PS", "200PS", "100PS", "50PS", "25PS"};
            const int entry = random(0, 20);
            return {std::string("TIM:SCAL ") + times.at(static_cast<std::size_t>(entry)),
                    [=](FrontPanel& panel) { panel.seltimediv.set_index(entry); }};
        }
        case 2:
            return {"TRIG:SOUR TRIG" + number, [=](FrontPanel& panel) {
                        panel.trigsource.set_index(static_cast<int>(which));
                    }};
        case 3:
            return {
                std::string("TRIG:SLOPE ") + (which == 0 ? "POSITIVE" : "NEG"),
                [=](FrontPanel& panel) { panel.trigeredge.set_index(static_cast<int>(which)); }};
        case 4:
            return {"CURS:SOUR CH" + number, [=](FrontPanel& panel) {
                        panel.combocursorselect.set_index(static_cast<int>(which));
                    }};
        default:
            constexpr std::array names{"NONE", "VMAX", "VMIN", "VPP",  "VTOP",
                                       "VBAS", "VAMP", "VRMS", "VME",  "FREQ",
                                       "PER",  "RIS",  "FALL", "PWID", "NWID"};
            const int entry = random(0, 14);
            const int slot = random(0, 2);
            return {
                "MEAS:SLOT" + std::to_string(slot + 1) + ' ' +
                    names.at(static_cast<std::size_t>(entry)),
                [=](FrontPanel& panel) {
                    panel.measurement.at(static_cast<std::size_t>(slot)).selector.set_index(entry);
                }};
        }
    }

    OneWay box() {
        struct Box {
            const char* header;
            CheckBox& (*of)(FrontPanel&, std::size_t channel);
        };
        constexpr std::array boxes{
            Box{"CHANn:DISP",
                [](FrontPanel& p, std::size_t c) -> CheckBox& { return p.channel[c].enable; }},
            Box{"CHANn:INV",
                [](FrontPanel& p, std::size_t c) -> CheckBox& { return p.channel[c].invert; }},
            Box{"CHANn:VTR",
                [](FrontPanel& p, std::size_t c) -> CheckBox& { return p.channel[c].inviatr; }},
            Box{"TIM:DELn:WHE",
                [](FrontPanel& p, std::size_t c) -> CheckBox& { return p.channel[c].slenps; }},
            Box{"DISP:GRID", [](FrontPanel& p, std::size_t) -> CheckBox& { return p.gridenable; }},
            Box{"DISP:DOTS", [](FrontPanel& p, std::size_t) -> CheckBox& { return p.eyeon; }},
            Box{"DISP:PERS", [](FrontPanel& p, std::size_t) -> CheckBox& { return p.persist; }},
            Box{"ACQ:SPE", [](FrontPanel& p, std::size_t) -> CheckBox& { return p.adcspeed; }},
            Box{"ACQ:TYPE", [](FrontPanel& p, std::size_t) -> CheckBox& { return p.average; }},
            Box{"MEAS:STAT", [](FrontPanel& p, std::size_t) -> CheckBox& { return p.check1; }},
        };
        const Box chosen = boxes.at(static_cast<std::size_t>(random(0, int{boxes.size()} - 1)));
        const std::size_t which = any_channel();
        const bool on = random(0, 2) > 0;
        std::string header = chosen.header;
        if (const auto n = header.find('n'); n != std::string::npos) {
            header.replace(n, 1, std::to_string(which + 1));
        }
        const std::string value = header != "ACQ:TYPE" ? on ? " ON" : " 0"
                                  : on                 ? " AVER"
                                                       : " NORMAL";
        return {header + value, [=](FrontPanel& panel) {
                    if (chosen.of(panel, which).checked() != on) {
                        chosen.of(panel, which).press(on);
                    }
                }};
    }

    static std::function<void(FrontPanel&)> typed(const std::function<TextBox&(FrontPanel&)>& of,
                                                  int number) {
        return [=](FrontPanel& panel) {
            TextBox& box = of(panel);
            if (box.enabled()) {
                box.focus();
                box.set_text(std::to_string(number));
                box.enter();
                box.leave();
            }
        };
    }

    OneWay number() {
        const std::size_t which = any_channel();
        switch (random(0, 3)) {
        case 0: {
            const int delay = random(0, 65535);
            return {
                "TIM:DEL" + std::to_string(which + 1) + ' ' + std::to_string(delay) + " PS",
                typed(
                    [=](FrontPanel& panel) -> TextBox& { return panel.channel.at(which).psofset; },
                    delay)};
        }
        case 1: {
            const int delay = random(-5000, 5000);
            return {"TIM:DEL:ADD " + std::to_string(delay) + "E-12",
                    typed([](FrontPanel& panel) -> TextBox& { return panel.delaytrttdis; }, delay)};
        }
        case 2: {
            const int time = random(10, 65535);
            return {"TRIG:TIM " + std::to_string(time),
                    typed([](FrontPanel& panel) -> TextBox& { return panel.trtout; }, time)};
        }
        default: {
            const int hysteresis = random(0, 255);
            return {"TRIG:HYST " + std::to_string(hysteresis),
                    [=](FrontPanel& panel) { panel.shyst.set_value(hysteresis); }};
        }
        }
    }

    static std::function<void(FrontPanel&)> turned(const std::string& key, int value) {
        return [=](FrontPanel& panel) {
            int tab = 0;
            if (!hasnotab(panel.tabstrip2, key, tab)) {
                panel.tabstrip2.select(tab);
                panel.slider1.turn_to(value);
            }
        };
    }

    OneWay wheel() {
        const int value = random(0, 1024);
        const std::string number = std::to_string(any_channel() + 1);
        if (random(0, 1) == 0) { // 128 steps per division around 512
            return {"CHAN" + number + ":POS " + std::to_string((value - 512) / 128.0),
                    turned("CH" + number, value)};
        }
        const int near_zero =
            random(500, 524); // 4 mV per step, twice that where the input is halved
        const bool halved = random(0, 1) == 1;
        return {"TRIG:SOUR TRIG" + number + ";:CHAN" + number + ":VTR " + (halved ? "1" : "OFF") +
                    ";:TRIG:LEV " + std::to_string((near_zero - 512) * (halved ? 8 : 4)) + "MV",
                [=, source = number == "1" ? 0 : 1](FrontPanel& panel) {
                    panel.trigsource.set_index(source);
                    CheckBox& box = panel.channel.at(static_cast<std::size_t>(source)).inviatr;
                    if (box.checked() != halved) {
                        box.press(halved);
                    }
                    turned("TRIG", near_zero)(panel);
                }};
    }

    OneWay cursors() {
        const int column = random(0, 639);
        const int row = random(0, 511);
        const std::string number = std::to_string(any_channel() + 1);
        switch (random(0, 3)) {
        case 3: // 64 rows per division, 0 V in the middle: row 256
            return {"CHAN2:SCAL 0.1;POS 0;VTR 0;:CURS:SOUR CH2;MODE VOLT;POS" + number + ' ' +
                        std::to_string((256 - row) * 100.0 / 64.0) + "MV",
                    [=](FrontPanel& panel) {
                        panel.channel[1].vdiv.set_index(2);
                        turned("CH2", 512)(panel);
                        if (panel.channel[1].inviatr.checked()) {
                            panel.channel[1].inviatr.press(false);
                        }
                        panel.combocursorselect.set_index(1);
                        panel.tabstrip3.select(1);
                        turned("C" + number, 1024 - 2 * row)(panel);
                    }};
        case 0: // 20ns/div has 64 columns of 0.3125 ns
            return {"TIM:SCAL 20NS;:CURS:MODE TIME;POS" + number + ' ' +
                        std::to_string(column * 312.5) + "PS",
                    [=](FrontPanel& panel) {
                        panel.seltimediv.set_index(11);
                        panel.tabstrip3.select(2);
                        turned("C" + number, column)(panel);
                    }};
        case 1:
            return {"CURS:MODE VOLT", [](FrontPanel& panel) { panel.tabstrip3.select(1); }};
        default:
            return {"CURS:MODE OFF", [](FrontPanel& panel) { panel.tabstrip3.select(3); }};
        }
    }

    OneWay buttons() {
        switch (random(0, 4)) {
        case 0:
            return {"TRIG:ZERO", [](FrontPanel& panel) { panel.trzero.click(); }};
        case 1:
            return {"STOP", [](FrontPanel& panel) { panel.cmdstop.click(); }};
        case 2:
        case 3:
            return {"RUN", [](FrontPanel& panel) { panel.cmdstartsweep.click(); }};
        default:
            const int marked = random(0, 3);
            return {"MEAS:ANN " + std::to_string(marked), [=](FrontPanel& panel) {
                        for (std::size_t slot = 0; slot < 3; ++slot) {
                            CheckBox& box = panel.measurement[slot].annotate;
                            const bool on = static_cast<int>(slot) + 1 == marked;
                            if (box.checked() != on) {
                                box.press(on);
                            }
                        }
                    }};
        }
    }

    OneWay looks() {
        switch (random(0, 3)) {
        case 0: {
            const int depth = random(1, 9);
            return {"DISP:PERS:DEPT " + std::to_string(depth),
                    in_settings(
                        [=](SettingsControls& controls) { controls.persist.set_value(depth); })};
        }
        case 1:
            return {set_up_.empty() ? "DISP:GRID?" : "SYST:SET " + as_block(set_up_),
                    [text = set_up_](RemoteProgram& program) {
                        if (!text.empty()) {
                            program.files.files["/set-up.txt"] = text;
                            program.choosers.answers.emplace_back("/set-up.txt");
                            program.scope.panel().loadconfig.click();
                        }
                    }};
        default: {
            constexpr std::array items{"CH1",  "CH2",  "BACKGROUND", "TEXT",
                                       "GRID", "TBAC", "ANNOTATION"};
            const auto item = static_cast<std::size_t>(random(0, 6));
            const std::array colour{random(0, 255), random(0, 255), random(0, 255)};
            std::array<char, 8> text{};
            std::snprintf(text.data(), text.size(), "#%02X%02x%02X", colour[0], colour[1],
                          colour[2]);
            return {std::string("DISP:COL ") + items.at(item) + ", '" + text.data() + '\'',
                    in_settings([=](SettingsControls& controls) {
                        controls.optcolor.at(item).choose();
                        for (std::size_t part = 0; part < colour.size(); ++part) {
                            controls.slrgb.at(part).set_value(colour.at(part));
                        }
                    })};
        }
        }
    }

    static std::function<void(RemoteProgram&)>
    in_settings(const std::function<void(SettingsControls&)>& set) {
        return [set](RemoteProgram& program) {
            program.scope.panel().mnusettings.click();
            SettingsControls& controls = program.scope.settings_dialog().controls();
            set(controls);
            controls.cmdok.click();
        };
    }

    static std::string as_block(const std::string& bytes) {
        const std::string length = std::to_string(bytes.size());
        return '#' + std::to_string(length.size()) + length + bytes;
    }

    std::mt19937 random_;
    std::string set_up_; ///< that was saved once
};

} // namespace kv408
