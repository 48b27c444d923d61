// The language: what a client's bytes say, to the letter of the standards.

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <variant>
#include <vector>

#include "remote/header_pattern.h"
#include "remote/line_reader.h"
#include "remote/message_reader.h"
#include "remote/replies.h"
#include "remote/values.h"

namespace kv408 {
namespace {

std::vector<LineReader::Line> lines_of(std::string_view bytes, std::size_t at_once) {
    LineReader reader;
    std::vector<LineReader::Line> lines;
    while (!bytes.empty()) {
        bytes.remove_prefix(reader.take(bytes.substr(0, at_once)));
        if (auto line = reader.line()) {
            lines.push_back(std::move(*line));
        }
    }
    return lines;
}

TEST(Lines, EndAtEachLineFeedButThoseOfABlock) {
    const std::string bytes = "a?\r\n\nSET #15a\nb\nc;D\n\"#15\nF #0\nlast";
    for (std::size_t at_once = 1; at_once <= bytes.size(); ++at_once) {
        std::string all;
        for (const auto& line : lines_of(bytes, at_once)) {
            EXPECT_FALSE(line.too_long);
            all += '<' + line.text + '>';
        }
        EXPECT_EQ(all, "<a?\r><><SET #15a\nb\nc;D><\"#15><F #0>") << at_once;
    }
}

TEST(Lines, MayHave64KiBAndNotAByteMore) {
    const std::string whole(65536, 'x');
    const auto lines = lines_of(whole + '\n' + whole + "y\n" + "z\n", 1000);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].text, whole);
    EXPECT_FALSE(lines[0].too_long);
    EXPECT_TRUE(lines[1].too_long);
    EXPECT_EQ(lines[2].text, "z");
}

// A line as it was read: nodes with ":", "?" for a query, parameters by kind.
std::string read(const std::string& line) {
    MessageReader reader(line);
    std::string all;
    try {
        while (auto unit = reader.next()) {
            all += unit->from_root ? "{:" : "{";
            for (const std::string& node : unit->nodes) {
                all += node + ' ';
            }
            all += unit->query ? "?" : "";
            for (const Parameter& value : unit->parameters) {
                const std::string kind(1, "wnsb"[static_cast<int>(value.kind)]);
                all += '|' + kind + value.text;
                all += value.exponent != 0 ? "e" + std::to_string(value.exponent) : "";
                all += value.unit;
            }
            all += '}';
        }
    } catch (const Refused& refused) {
        all += std::to_string(static_cast<int>(refused.error));
    }
    return all;
}

TEST(Language, ReadsHeadersAndParameters) {
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read(" ;; \t\r"), "");
    EXPECT_EQ(read("*IDN?"), "{*IDN ?}");
    EXPECT_EQ(read(":tim:SCAL?;scale 20NS\r"), "{:tim SCAL ?}{scale |n20NS}");
    EXPECT_EQ(read("A  1 , -2.5e-3 mV,.5,+7.E2,1 e 3"), "{A |n1|n-2.5e-3MV|n.5|n7.e2|n1e3}");
    EXPECT_EQ(read("A 5EXS,5E"), "{A |n5EXS|n5E}");
    EXPECT_EQ(read("A #Hff,#q17,#B101"), "{A |n255|n15|n5}");
    EXPECT_EQ(read("A CHAN1,m_x"), "{A |wCHAN1|wm_x}");
    EXPECT_EQ(read(R"(A "say ""x""; 'y'",'it''s')"), R"({A |ssay "x"; 'y'|sit's})");
    EXPECT_EQ(read("A #15a;\n,b;B"), "{A |ba;\n,b}{B }");
    EXPECT_EQ(read("A #10,1"), "{A |b|n1}");
}

TEST(Language, TellsWhatIsNotInIt) {
    EXPECT_EQ(read("A;$B;C"), "{A }-101");
    EXPECT_EQ(read("A 1,$"), "-101");
    EXPECT_EQ(read("A:"), "-102");
    EXPECT_EQ(read("A::B"), "-102");
    EXPECT_EQ(read("*"), "-102");
    EXPECT_EQ(read("A 1,"), "-102");
    EXPECT_EQ(read("A 1,,2"), "-102");
    EXPECT_EQ(read("A #X1"), "-102");
    EXPECT_EQ(read("A 1 2"), "-103");
    EXPECT_EQ(read("A\"x\""), "-111");
    EXPECT_EQ(read("ABCDEFGHIJKL"), "{ABCDEFGHIJKL }");
    EXPECT_EQ(read("ABCDEFGHIJKLM"), "-112");
    EXPECT_EQ(read("A -"), "-121");
    EXPECT_EQ(read("A ."), "-121");
    EXPECT_EQ(read("A #H"), "-121");
    EXPECT_EQ(read("A 1E32000"), "{A |n1e32000}");
    EXPECT_EQ(read("A 1E32001"), "-123");
    EXPECT_EQ(read("A 1E99999999999999999999"), "-123");
    EXPECT_EQ(read("A " + std::string(300, '0') + std::string(255, '7')).substr(0, 3), "{A ");
    EXPECT_EQ(read("A " + std::string(256, '7')), "-124");
    EXPECT_EQ(read("A #H10000000000000000"), "-124");
    EXPECT_EQ(read("A 1ABCDEFGHIJKLM"), "-134");
    EXPECT_EQ(read("A ABCDEFGHIJKLM"), "-144");
    EXPECT_EQ(read("A 'x"), "-151");
    EXPECT_EQ(read("A 'x''"), "-151");
    EXPECT_EQ(read("A #0abc"), "-161");
    EXPECT_EQ(read("A #13ab"), "-161");
    EXPECT_EQ(read("A #2"), "-161");
    EXPECT_EQ(read("A #2x1ab"), "-161");
    EXPECT_EQ(read("A (1)"), "-178");
}

std::string match(std::string_view pattern, const std::vector<std::string>& nodes) {
    const auto found = HeaderPattern(pattern).match(nodes);
    std::string text = found.kind == HeaderPattern::Match::Kind::none    ? "none"
                       : found.kind == HeaderPattern::Match::Kind::whole ? "whole"
                                                                         : "range";
    for (const int suffix : found.suffixes) {
        text += ' ' + std::to_string(suffix);
    }
    return found.kind == HeaderPattern::Match::Kind::whole ? text : text.substr(0, 5);
}

TEST(Headers, AreTakenInShortAndLongFormAndInAnyCase) {
    EXPECT_EQ(match("SYSTem:ERRor[:NEXT]", {"SYST", "ERR"}), "whole");
    EXPECT_EQ(match("SYSTem:ERRor[:NEXT]", {"system", "Error", "nExT"}), "whole");
    EXPECT_EQ(match("SYSTem:ERRor[:NEXT]", {"SYSTE", "ERR"}), "none");
    EXPECT_EQ(match("SYSTem:ERRor[:NEXT]", {"SYST"}), "none");
    EXPECT_EQ(match("SYSTem:ERRor[:NEXT]", {"SYST", "ERR", "NEXT", "NEXT"}), "none");
    EXPECT_EQ(match("[:A]:B[:C]:D", {"B", "D"}), "whole");
    EXPECT_EQ(match("[:A]:B[:C]:D", {"A", "B", "C", "D"}), "whole");
    EXPECT_EQ(match("*IDN", {"*idn"}), "whole");
    EXPECT_EQ(match("*IDN", {"IDN"}), "none");
}

TEST(Headers, CarryNumbers) {
    EXPECT_EQ(match("TIMebase:DELay<n>:WHEel", {"TIM", "DEL2", "WHE"}), "whole 2");
    EXPECT_EQ(match("TIMebase:DELay<n>:WHEel", {"TIM", "DEL", "WHEEL"}), "whole 1");
    EXPECT_EQ(match("A<n>:B<1-3>", {"a2", "B3"}), "whole 2 3");
    EXPECT_EQ(match("A<n>:B<1-3>", {"a2", "B4"}), "range");
    EXPECT_EQ(match("A<n>:B<1-3>", {"a0", "B1"}), "range");
    EXPECT_EQ(match("A<n>:B<1-3>", {"a2", "C9"}), "none");
    EXPECT_EQ(match("A<n>", {"A99999999999999999999"}), "range");
    EXPECT_EQ(match("TIMebase", {"TIM1"}), "none");
}

using Value = std::variant<double, ScpiError>;

// What the parameter written as `text` is worth.
template <typename Read>
Value value_of(const std::string& text, Read read_value) {
    try {
        return static_cast<double>(
            read_value(MessageReader("A " + text).next()->parameters.front()));
    } catch (const Refused& refused) {
        return refused.error;
    }
}

Value in_seconds(const std::string& text) {
    return value_of(text, [](const Parameter& value) {
        return number_of(value, {25e-12, 100e-6, 20e-9, Quantity::seconds});
    });
}

TEST(Numbers, TakeUnitsAndPrefixesToTheLastBit) {
    EXPECT_EQ(in_seconds("20NS"), Value(20e-9));
    EXPECT_EQ(in_seconds("20 ns"), Value(20e-9));
    EXPECT_EQ(in_seconds("0.02e0 uS"), Value(20e-9));
    EXPECT_EQ(in_seconds("0.00002MS"), Value(20e-9));
    EXPECT_EQ(in_seconds("2E-8"), Value(2e-8));
    EXPECT_EQ(in_seconds("25PS"), Value(25e-12));
    EXPECT_EQ(in_seconds("2e-8s"), Value(2e-8));
    EXPECT_EQ(in_seconds("20NV"), Value(ScpiError::invalid_suffix));
    EXPECT_EQ(in_seconds("20N"), Value(ScpiError::invalid_suffix));
    EXPECT_EQ(in_seconds("20XS"), Value(ScpiError::invalid_suffix));
    EXPECT_EQ(in_seconds("24PS"), Value(ScpiError::data_out_of_range));
    EXPECT_EQ(in_seconds("1E9999"), Value(ScpiError::data_out_of_range));
    EXPECT_EQ(in_seconds("MIN"), Value(25e-12));
    EXPECT_EQ(in_seconds("maximum"), Value(100e-6));
    EXPECT_EQ(in_seconds("DEF"), Value(20e-9));
    EXPECT_EQ(in_seconds("MED"), Value(ScpiError::data_type_error));
    EXPECT_EQ(in_seconds("'20NS'"), Value(ScpiError::data_type_error));
}

TEST(Numbers, CountMilliAndMega) {
    const auto volts = [](const std::string& text) {
        return value_of(text, [](const Parameter& value) {
            return number_of(value, {-1e9, 1e9, 0, Quantity::volts});
        });
    };
    const auto hertz = [](const std::string& text) {
        return value_of(text, [](const Parameter& value) {
            return number_of(value, {0, 1e20, 0, Quantity::hertz});
        });
    };
    EXPECT_EQ(volts("50MV"), Value(0.05));
    EXPECT_EQ(volts("5MAV"), Value(5e6));
    EXPECT_EQ(volts("-1KV"), Value(-1000.0));
    EXPECT_EQ(hertz("5MHZ"), Value(5e6));
    EXPECT_EQ(hertz("5 kHz"), Value(5e3));
    EXPECT_EQ(hertz("15GHZ"), Value(15e9));
}

TEST(Numbers, AreRoundedWhereWholeOnesAreMeant) {
    const auto whole = [](const std::string& text) {
        return value_of(text, [](const Parameter& value) {
            return whole_of(value, {10, 255, 20});
        });
    };
    EXPECT_EQ(whole("12.4"), Value(12.0));
    EXPECT_EQ(whole("12.5"), Value(12.0));
    EXPECT_EQ(whole("9.6"), Value(10.0));
    EXPECT_EQ(whole("9.4"), Value(ScpiError::data_out_of_range));
    EXPECT_EQ(whole("255.5"), Value(ScpiError::data_out_of_range));
    EXPECT_EQ(whole("#HFF"), Value(255.0));
    EXPECT_EQ(whole("20V"), Value(ScpiError::invalid_suffix));
}

TEST(Values, AreOnOrOffOrOneOfTheChoices) {
    EXPECT_EQ(value_of("on", boolean_of), Value(1.0));
    EXPECT_EQ(value_of("OFF", boolean_of), Value(0.0));
    EXPECT_EQ(value_of("1", boolean_of), Value(1.0));
    EXPECT_EQ(value_of("0.4", boolean_of), Value(0.0));
    EXPECT_EQ(value_of("-3", boolean_of), Value(1.0));
    EXPECT_EQ(value_of("YES", boolean_of), Value(ScpiError::illegal_value));
    EXPECT_EQ(value_of("'ON'", boolean_of), Value(ScpiError::data_type_error));
    const std::vector<std::string_view> slopes = {"POSitive", "NEGative"};
    const auto slope = [&slopes](const Parameter& value) { return choice_of(value, slopes); };
    EXPECT_EQ(value_of("neg", slope), Value(1.0));
    EXPECT_EQ(value_of("POSITIVE", slope), Value(0.0));
    EXPECT_EQ(value_of("POSIT", slope), Value(ScpiError::illegal_value));
    EXPECT_EQ(value_of("1", slope), Value(ScpiError::data_type_error));
}

TEST(Replies, AreWrittenTheStandardsWay) {
    EXPECT_EQ(real_reply(-0.001234567), "-1.234567E-03");
    EXPECT_EQ(real_reply(0.0), "0.000000E+00");
    EXPECT_EQ(real_reply(-0.0), "0.000000E+00");
    EXPECT_EQ(real_reply(20e-9), "2.000000E-08");
    EXPECT_EQ(real_reply(1e100), "1.000000E+100");
    EXPECT_EQ(real_reply(std::numeric_limits<double>::quiet_NaN()), "9.91E+37");
    EXPECT_EQ(real_reply(std::numeric_limits<double>::infinity()), "9.9E+37");
    EXPECT_EQ(string_reply("a \"b\""), R"("a ""b""")");
    EXPECT_EQ(block_reply(""), "#10");
    EXPECT_EQ(block_reply("hello\n"), "#16hello\n");
    EXPECT_EQ(block_reply(std::string(1300, 'x')).substr(0, 6), "#41300");
}

} // namespace
} // namespace kv408
