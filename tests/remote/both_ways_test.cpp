// Whatever is set over the network leaves wire, panel and settings file as a person's press does.

#include <array>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "config/settings_file.h"
#include "panel/time_base.h"
#include "remote/remote_program.h"

namespace kv408 {
namespace {

/// What can be done: a line for a client, and what a person presses for the same.
struct Way {
    std::string line;
    std::function<void(FrontPanel&)> press;
};

/// Someone who does anything, decided by a seed.
class AnyWay {
public:
    explicit AnyWay(unsigned seed) : random_(seed) {}

    int random(int lowest, int highest) {
        return std::uniform_int_distribution<int>(lowest, highest)(random_);
    }

    Way next() {
        constexpr std::array kinds{&AnyWay::list,    &AnyWay::box,    &AnyWay::number,
                                   &AnyWay::wheel,   &AnyWay::box,    &AnyWay::list,
                                   &AnyWay::buttons, &AnyWay::number, &AnyWay::cursors};
        return (this->*kinds.at(static_cast<std::size_t>(random(0, int{kinds.size()} - 1))))();
    }

private:
    std::size_t any_channel() { return static_cast<std::size_t>(random(0, 1)); }

    Way list() {
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
            constexpr std::array times{"100US", "1US", "200NS", "100NS", "20NS", "1NS", "25PS"};
            constexpr std::array entries{0, 6, 8, 9, 11, 15, 20};
            const auto chosen = static_cast<std::size_t>(random(1, 6));
            return {std::string("TIM:SCAL ") + times.at(chosen),
                    [=](FrontPanel& panel) { panel.seltimediv.set_index(entries.at(chosen)); }};
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
            return {
                "MEAS:SLOT" + number + " " + names.at(static_cast<std::size_t>(entry)),
                [=](FrontPanel& panel) { panel.measurement.at(which).selector.set_index(entry); }};
        }
    }

    Way box() {
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
            Box{"MEAS:STAT", [](FrontPanel& p, std::size_t) -> CheckBox& { return p.check1; }},
        };
        const Box chosen = boxes.at(static_cast<std::size_t>(random(0, int{boxes.size()} - 1)));
        const std::size_t which = any_channel();
        const bool on = random(0, 2) > 0;
        std::string header = chosen.header;
        if (const auto n = header.find('n'); n != std::string::npos) {
            header.replace(n, 1, std::to_string(which + 1));
        }
        return {header + (on ? " ON" : " 0"), [=](FrontPanel& panel) {
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

    Way number() {
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

    Way wheel() {
        const int value = random(0, 1024);
        const std::string number = std::to_string(any_channel() + 1);
        if (random(0, 1) == 0) { // 128 steps a division around 512
            return {"CHAN" + number + ":POS " + std::to_string((value - 512) / 128.0),
                    turned("CH" + number, value)};
        }
        const int near_zero = random(500, 524); // 4 mV a step
        return {"CHAN1:VTR OFF;:CHAN2:VTR OFF;:TRIG:LEV " + std::to_string((near_zero - 512) * 4) +
                    "MV",
                [=](FrontPanel& panel) {
                    for (ChannelControls& channel : panel.channel) {
                        if (channel.inviatr.checked()) {
                            channel.inviatr.press(false);
                        }
                    }
                    turned("TRIG", near_zero)(panel);
                }};
    }

    Way cursors() {
        const int column = random(0, 640);
        const std::string number = std::to_string(any_channel() + 1);
        switch (random(0, 2)) {
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

    Way buttons() {
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

    std::mt19937 random_;
};

/// All that the panel shows.
std::vector<std::string> shown_by(FrontPanel& panel) {
    struct Shown {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(const Button* button) const { return button->caption(); }
        std::string operator()(const CheckBox* box) const { return box->checked() ? "1" : "0"; }
        std::string operator()(const OptionButton* one) const { return one->caption(); }
        std::string operator()(const ListBox* list) const { return list->text(); }
        std::string operator()(const TextBox* box) const { return box->text(); }
        std::string operator()(const Label* label) const { return label->caption(); }
        std::string operator()(const Slider* slider) const {
            return std::to_string(slider->value());
        }
        std::string operator()(const TabStrip* tabs) const { return tabs->selected_key(); }
        std::string operator()(const ThumbWheel* wheel) const {
            return std::to_string(wheel->Value());
        }
    };
    std::vector<std::string> all;
    for (Control* const control : panel.all) {
        all.push_back(control->name() + (control->visible() ? " = " : " hidden = ") +
                      std::visit(Shown{}, control->kind()));
    }
    return all;
}

class BothWays : public testing::TestWithParam<unsigned> {};

TEST_P(BothWays, LeaveTheSame) {
    RemoteProgram network;
    RemoteProgram person;
    network.start();
    person.start();
    AnyWay anyone(GetParam());
    std::string done;
    for (int step = 0; step < 120; ++step) {
        const Way way = anyone.next();
        done += way.line + '\n';
        network.ask(way.line);
        person.scope.act([&] { way.press(person.scope.panel()); });
        const int ticks = anyone.random(0, 3);
        network.ticks(ticks);
        person.ticks(ticks);
        ASSERT_EQ(network.scope.settings_file().bytes(), person.scope.settings_file().bytes())
            << done;
        ASSERT_EQ(shown_by(network.scope.panel()), shown_by(person.scope.panel())) << done;
        ASSERT_EQ(network.log.frames.size(), person.log.frames.size()) << done;
    }
    for (std::size_t i = 0; i < network.log.frames.size(); ++i) {
        const auto& one = network.log.frames[i].command;
        const auto& other = person.log.frames[i].command;
        ASSERT_EQ(one.code, other.code) << i;
        ASSERT_EQ(one.arguments, other.arguments) << i;
    }
    EXPECT_GT(network.log.frames.size(), 100U);
    EXPECT_TRUE(network.boxes.shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, BothWays, testing::Range(1U, 5U));

} // namespace
} // namespace kv408
