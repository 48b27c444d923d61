// Whatever is set over the network leaves wire, panel and settings file as a person's press does.

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "config/settings_file.h"
#include "display/picture.h"
#include "remote/any_way.h"

namespace kv408 {
namespace {

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
        const OneWay way = anyone.next();
        done += way.line + '\n';
        network.ask(way.line);
        person.scope.act([&] { way.press(person); });
        network.ask(anyone.question());
        const int ticks = anyone.random(0, 3);
        network.ticks(ticks);
        person.ticks(ticks);
        ASSERT_EQ(network.scope.settings_file().bytes(), person.scope.settings_file().bytes())
            << done;
        ASSERT_EQ(shown_by(network.scope.panel()), shown_by(person.scope.panel())) << done;
        ASSERT_EQ(network.log.frames.size(), person.log.frames.size()) << done;
        if (step % 10 == 0) {
            ASSERT_TRUE(std::ranges::equal(network.scope.picture().surface().pixels(),
                                           person.scope.picture().surface().pixels()))
                << done;
        }
        if (step == 20) {
            anyone.keep(person.scope.settings_file().bytes());
        }
    }
    for (std::size_t i = 0; i < network.log.frames.size(); ++i) {
        const auto& one = network.log.frames[i].command;
        const auto& other = person.log.frames[i].command;
        ASSERT_EQ(one.code, other.code) << i;
        ASSERT_EQ(one.arguments, other.arguments) << i;
        ASSERT_EQ(network.log.frames[i].time, person.log.frames[i].time) << i;
    }
    EXPECT_GT(network.log.frames.size(), 100U);
    EXPECT_TRUE(network.boxes.shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, BothWays, testing::Range(1U, 6U));

} // namespace
} // namespace kv408
