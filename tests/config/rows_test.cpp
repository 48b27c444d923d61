#include <functional>

#include <gtest/gtest.h>

#include "support/measurement_lines.h"
#include "support/settings_rig.h"

namespace kv408 {
namespace {

/// One key with a value, and what must be found where it belongs.
struct KeyRow {
    const char* key;
    const char* value;
    std::function<std::string(const SettingsRig&)> found;
    const char* expected;
};

std::string text(std::int64_t number) {
    return std::to_string(number);
}

using R = const SettingsRig&;

const std::vector<KeyRow> key_rows = {
    {"intcr1vpos", "100", [](R rig) { return text(rig.cursor_state.vpos[0]); }, "100"},
    {"intcr1hpos", "101", [](R rig) { return text(rig.cursor_state.hpos[0]); }, "101"},
    {"intcr2vpos", "102", [](R rig) { return text(rig.cursor_state.vpos[1]); }, "102"},
    {"intcr2hpos", "103", [](R rig) { return text(rig.cursor_state.hpos[1]); }, "103"},
    {"cursorselect", "1", [](R rig) { return text(number_of(rig.cursor_state.channel)); }, "2"},
    {"TabStrip3", "2", [](R rig) { return text(rig.cursor_state.cursormode); }, "3"},
    {"trigpos1", "2050", [](R rig) { return text(rig.trigger_state.saved_trigpos[0]); }, "2050"},
    {"trigpos2", "2051", [](R rig) { return text(rig.trigger_state.saved_trigpos[1]); }, "2051"},
    {"hyst1", "20", [](R rig) { return text(rig.trigger_state.hyst[0]); }, "20"},
    {"hyst2", "21", [](R rig) { return text(rig.trigger_state.hyst[1]); }, "21"},
    {"trigeredge", "1", [](R rig) { return rig.panel.trigeredge.text(); }, "Negative"},
    {"trigsource", "1", [](R rig) { return rig.panel.trigsource.text(); }, "TRIG2"},
    {"ch1text.top", "700", [](R rig) { return text(rig.channels[0].marker_wheel); }, "700"},
    {"ch2text.top", "701", [](R rig) { return text(rig.channels[1].marker_wheel); }, "701"},
    {"ch1vdiv", "5", [](R rig) { return rig.panel.channel[0].vdivtext.caption(); }, "10mV"},
    {"ch2vdiv", "0", [](R rig) { return rig.panel.channel[1].vdivtext.caption(); }, "0.5V"},
    {"inviatr1", "1", [](R rig) { return rig.panel.channel[0].vdivtext.caption(); }, "0.1V (VT)"},
    {"inviatr2", "1", [](R rig) { return rig.panel.channel[1].vdivtext.caption(); }, "0.1V (VT)"},
    {"invert1", "1", [](R rig) { return rig.panel.channel[0].vdivtext.caption(); }, "0.1V (inv)"},
    {"invert2", "1", [](R rig) { return rig.panel.channel[1].vdivtext.caption(); }, "0.1V (inv)"},
    {"ch1enable", "0", [](R rig) { return text(rig.panel.channel[0].text.visible() ? 1 : 0); },
     "0"},
    {"ch2enable", "0", [](R rig) { return text(rig.panel.channel[1].text.visible() ? 1 : 0); },
     "0"},
    {"horpos", "120", [](R rig) { return rig.panel.channel[0].hor_delay.caption(); },
     "Delay:  120ps"},
    {"horpos2", "121", [](R rig) { return rig.panel.channel[1].hor_delay.caption(); },
     "Delay:  121ps"},
    {"slenps1", "1", [](R rig) { return text(rig.panel.channel[0].slenps.checked() ? 1 : 0); },
     "1"},
    {"slenps2", "1", [](R rig) { return text(rig.panel.channel[1].slenps.checked() ? 1 : 0); },
     "1"},
    {"seltimediv", "20", [](R rig) { return rig.panel.tdivtext.caption(); }, "25ps/div"},
    {"eyeon", "1", [](R rig) { return text(rig.panel.eyeon.checked() ? 1 : 0); }, "1"},
    {"gridenable", "0", [](R rig) { return text(rig.panel.gridenable.checked() ? 1 : 0); }, "0"},
    {"persist", "1", [](R rig) { return text(rig.panel.persist.checked() ? 1 : 0); }, "1"},
    {"average", "1", [](R rig) { return text(rig.panel.avglabel.visible() ? 1 : 0); }, "1"},
    {"TabStrip2", "TRIG", [](R rig) { return rig.panel.tabstrip2.selected_key(); }, "TRIG"},
    {"displaymeas", "0", [](R rig) { return text(rig.panel.check1.checked() ? 1 : 0); }, "0"},
    {"cmbmeas(0)", "14", [](R rig) { return rig.panel.measurement[0].selector.text(); }, "tPuls-"},
    {"cmbmeas(1)", "1", [](R rig) { return rig.panel.measurement[1].selector.text(); }, "VMax"},
    {"cmbmeas(2)", "9", [](R rig) { return rig.panel.measurement[2].selector.text(); },
     "Frequency"},
    {"chkmeasanno", "1",
     [](R rig) { return text(rig.panel.measurement[1].annotate.checked() ? 1 : 0); }, "1"},
    {"colorch1", "128", [](R rig) { return text(red_of(rig.colours.ch1)); }, "128"},
    {"colorch2", "65280", [](R rig) { return text(green_of(rig.colours.ch2)); }, "255"},
    {"colorbgnd", "16711680", [](R rig) { return text(blue_of(rig.colours.background)); }, "255"},
    {"colorcursor", "1", [](R rig) { return text(rig.colours.normal_text.value); }, "1"},
    {"colordivbgnd", "2", [](R rig) { return text(rig.colours.text_background.value); }, "2"},
    {"colorgrid", "3", [](R rig) { return text(rig.colours.grid.value); }, "3"},
    {"colorannos", "16777215", [](R rig) { return text(rig.colours.annotations.value); },
     "16777215"},
    {"persisttime", "9", [](R rig) { return text(rig.display.persisttime); }, "9"},
    {"snapshotpath", "/home/me/my pictures", [](R rig) { return rig.display.snapshotpath; },
     "/home/me/my pictures"},
    {"snapshotdialog", "1", [](R rig) { return text(rig.display.snapshotdialog); }, "1"},
    {"snapshotinvert", "1", [](R rig) { return text(rig.display.snapshotinvert); }, "1"},
};

TEST(Rows, EachKeyIsTakenWithAndWithoutSpacesAndWrittenAgain) {
    ASSERT_EQ(key_rows.size(), 48U);
    for (const KeyRow& row : key_rows) {
        for (const char* spaces : {"", " ", "   "}) {
            SettingsRig rig;
            SCOPED_TRACE(row.key);
            EXPECT_NE(row.found(rig), row.expected);
            std::string line = spaces;
            line.append(row.key).append(spaces).append("\t").append(spaces).append(row.value);
            rig.load(line.append(spaces).append("\r\n"));
            EXPECT_TRUE(rig.boxes.shown.empty());
            EXPECT_EQ(row.found(rig), row.expected);
            EXPECT_TRUE(is_settable(rig));
            const std::string saved = rig.save();
            const std::string plain = std::string(row.key) + "\t" + row.value + "\r\n";
            const std::string spaced = std::string(row.key) + "\t " + row.value + " \r\n";
            EXPECT_TRUE(saved.find(plain) != std::string::npos ||
                        saved.find(spaced) != std::string::npos)
                << saved;
        }
    }
}

TEST(Rows, EveryKeptControlOfThePanelHasItsRow) {
    SettingsRig rig;
    const std::vector<SettingRow> rows = setting_rows({.panel = rig.panel,
                                                       .channels = rig.channels,
                                                       .trigger = rig.trigger_state,
                                                       .cursors = rig.cursor_state,
                                                       .colours = rig.colours,
                                                       .display = rig.display,
                                                       .adjust = rig.adjust});
    for (std::size_t index = 0; index < rows.size(); ++index) {
        EXPECT_EQ(rows[index].line, static_cast<int>(index) + 1) << rows[index].key;
    }
    for (const Control* const control : rig.panel.all) {
        if (const int line = control->about().line; line > 0) {
            ASSERT_LE(line, static_cast<int>(rows.size())) << control->key();
            EXPECT_EQ(rows[static_cast<std::size_t>(line) - 1].key, control->key());
        }
    }
}

TEST(Rows, KeysAreComparedExactly) {
    for (const KeyRow& row : key_rows) {
        for (const std::string& key : {std::string("x") + row.key, std::string(row.key) + "x",
                                       std::string(row.key) + "\v"}) {
            SettingsRig rig;
            const std::string before = rig.save();
            EXPECT_TRUE(rig.settings.setConfigVal(key, row.value)) << key;
            EXPECT_EQ(rig.save(), before) << key;
        }
    }
    SettingsRig rig;
    EXPECT_TRUE(rig.settings.setConfigVal("tabstrip3", "2"));
    EXPECT_TRUE(rig.settings.setConfigVal("CH1VDIV", "5"));
    EXPECT_EQ(rig.panel.tabstrip3.selected(), 3);
    EXPECT_EQ(rig.panel.channel[0].vdiv.text(), "0.1V");
}

const Texts text_keys = {"horpos", "horpos2", "TabStrip2", "snapshotpath"};
const Texts long_keys = {"ch1text.top", "ch2text.top",    "colorch1",      "colorch2",
                         "colorbgnd",   "colorcursor",    "colordivbgnd",  "colorgrid",
                         "colorannos",  "snapshotdialog", "snapshotinvert"};

bool is_in(const Texts& keys, const std::string& key) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

TEST(Rows, ATextThatIsNoNumberIsRefusedWhereANumberIsExpected) {
    const Texts texts = {"",    "x",   "1x",  "x1",    "1 2",  "0x1",      "1,0",
                         "--1", "- 1", "1e",  "nan",   "inf",  "1\v",      ".",
                         "+",   "-",   "&H1", "1.0.0", "true", "\xC3\xA9", "\xFF"};
    for (const KeyRow& row : key_rows) {
        for (const std::string& value : texts) {
            SettingsRig rig;
            const std::string before = rig.save();
            const bool taken = rig.settings.setConfigVal(row.key, value);
            EXPECT_EQ(taken, is_in(text_keys, row.key)) << row.key << " " << value;
            if (!taken) {
                EXPECT_EQ(rig.save(), before) << row.key << " " << value;
            }
            EXPECT_TRUE(is_settable(rig)) << row.key << " " << value;
        }
    }
}

TEST(Rows, ANumberOutOfRangeOfItsTypeIsRefused) {
    const Texts beyond_16_bits = {"32768", "-32769", "32767.5", "1e5", "-40000"};
    const Texts beyond_32_bits = {"2147483648", "-2147483649", "2147483647.5", "1e10", "1e400"};
    for (const KeyRow& row : key_rows) {
        if (is_in(text_keys, row.key)) {
            continue;
        }
        SettingsRig rig;
        const std::string before = rig.save();
        for (const std::string& value : beyond_32_bits) {
            EXPECT_FALSE(rig.settings.setConfigVal(row.key, value)) << row.key << " " << value;
        }
        if (!is_in(long_keys, row.key)) {
            for (const std::string& value : beyond_16_bits) {
                EXPECT_FALSE(rig.settings.setConfigVal(row.key, value)) << row.key << " " << value;
            }
        }
        EXPECT_EQ(rig.save(), before) << row.key;
    }
}

struct NumberRow {
    const char* value;
    std::int16_t vpos;
};

TEST(Rows, FractionsAreRoundedHalvesToEven) {
    constexpr std::array<NumberRow, 9> numbers = {{{"12.5", 12},
                                                   {"13.5", 14},
                                                   {"12.51", 13},
                                                   {"0.5", 0},
                                                   {"1e2", 100},
                                                   {"1.25E1", 12},
                                                   {"+7", 7},
                                                   {".6", 1},
                                                   {"007", 7}}};
    for (const NumberRow& row : numbers) {
        SettingsRig rig;
        EXPECT_TRUE(rig.settings.setConfigVal("intcr1vpos", row.value)) << row.value;
        EXPECT_EQ(rig.cursor_state.vpos[0], row.vpos) << row.value;
    }
}

TEST(Rows, TabAndAnnotationTakeTheIntegerPart) {
    SettingsRig rig;
    EXPECT_TRUE(rig.settings.setConfigVal("TabStrip3", "1.99"));
    EXPECT_EQ(rig.panel.tabstrip3.selected(), 1);
    EXPECT_TRUE(rig.settings.setConfigVal("chkmeasanno", "0.99"));
    EXPECT_TRUE(rig.panel.measurement[0].annotate.checked());
    EXPECT_EQ(rig.pressed, std::vector<int>{0});
    for (const char* value : {"0.99", "4", "-1", "1e300"}) {
        EXPECT_FALSE(rig.settings.setConfigVal("TabStrip3", value)) << value;
    }
    for (const char* value : {"-1", "3", "3.5", "1e300"}) {
        EXPECT_FALSE(rig.settings.setConfigVal("chkmeasanno", value)) << value;
    }
    EXPECT_EQ(rig.panel.tabstrip3.selected(), 1);
    EXPECT_EQ(rig.pressed, std::vector<int>{0});
}

TEST(Rows, AnIndexOrBoxValueOutsideItsControlIsRefused) {
    const auto measurements = static_cast<int>(measurement_entries().size());
    const std::vector<std::pair<const char*, int>> entries = {{"cursorselect", 2},
                                                              {"trigeredge", 2},
                                                              {"trigsource", 2},
                                                              {"ch1vdiv", 6},
                                                              {"ch2vdiv", 6},
                                                              {"seltimediv", 21},
                                                              {"cmbmeas(0)", measurements},
                                                              {"cmbmeas(1)", measurements},
                                                              {"cmbmeas(2)", measurements},
                                                              {"inviatr1", 2},
                                                              {"inviatr2", 2},
                                                              {"invert1", 2},
                                                              {"invert2", 2},
                                                              {"ch1enable", 2},
                                                              {"ch2enable", 2},
                                                              {"slenps1", 2},
                                                              {"slenps2", 2},
                                                              {"eyeon", 2},
                                                              {"gridenable", 2},
                                                              {"persist", 2},
                                                              {"average", 2},
                                                              {"displaymeas", 2},
                                                              {"snapshotdialog", 2},
                                                              {"snapshotinvert", 2}};
    for (const auto& [key, size] : entries) {
        SettingsRig rig;
        const std::string before = rig.save();
        EXPECT_FALSE(rig.settings.setConfigVal(key, "-1")) << key;
        EXPECT_FALSE(rig.settings.setConfigVal(key, text(size))) << key;
        EXPECT_FALSE(rig.settings.setConfigVal(key, "32767")) << key;
        EXPECT_EQ(rig.save(), before) << key;
        EXPECT_TRUE(rig.settings.setConfigVal(key, text(size - 1))) << key;
        EXPECT_TRUE(rig.settings.setConfigVal(key, "0")) << key;
    }
}

struct ClampRow {
    const char* key;
    const char* value;
    const char* saved;
};

TEST(Rows, ANumberThatNoUserCanSetBecomesTheNearestThatOneCan) {
    constexpr std::array<ClampRow, 23> numbers = {{{"intcr1vpos", "513", " 512 "},
                                                   {"intcr1vpos", "-1", " 0 "},
                                                   {"intcr2vpos", "32767", " 512 "},
                                                   {"intcr1hpos", "641", " 640 "},
                                                   {"intcr2hpos", "-32768", " 0 "},
                                                   {"trigpos1", "4097", " 4096 "},
                                                   {"trigpos2", "-1", " 0 "},
                                                   {"hyst1", "256", " 255 "},
                                                   {"hyst2", "-1", " 0 "},
                                                   {"ch1text.top", "1025", " 1024 "},
                                                   {"ch2text.top", "-2147483648", " 0 "},
                                                   {"persisttime", "10", " 9 "},
                                                   {"persisttime", "-1", " 0 "},
                                                   {"colorch1", "-1", " 16777215 "},
                                                   {"colorgrid", "-2147483643", " 5 "},
                                                   {"colorannos", "16777216", " 0 "},
                                                   {"horpos", "65536000000", "65535"},
                                                   {"horpos2", "-5", "0"},
                                                   {"horpos", "120ps", "120"},
                                                   {"horpos2", "abc", "0"},
                                                   {"horpos", "70000", "65535"},
                                                   {"horpos2", "007", "7"},
                                                   {"horpos2", "", "0"}}};
    for (const ClampRow& row : numbers) {
        SettingsRig rig;
        EXPECT_TRUE(rig.settings.setConfigVal(row.key, row.value));
        std::string line = row.key;
        line.append("\t").append(row.saved).append("\r\n");
        EXPECT_NE(rig.save().find(line), std::string::npos) << row.key << " " << row.value;
        EXPECT_TRUE(is_settable(rig)) << row.key << " " << row.value;
    }
}

} // namespace
} // namespace kv408
