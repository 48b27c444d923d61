#include "host/shown_text.h"

#include <gtest/gtest.h>

#include "host/path_text.h"

namespace kv408 {
namespace {

TEST(ShownText, WhatIsReadStaysAsItIs) {
    for (const char* const text :
         {"", "lm4rxa-SIM00001", "C:\\new\\x1b", "M\xC3\xA4rz", "\xE4\xB8\xAD\xD0\x96",
          "\xF0\x9F\x98\x80", "\xC2\xA0 \xEF\xBF\xBD"}) {
        EXPECT_EQ(shown_line(text), text);
        EXPECT_EQ(shown_lines(text), text);
    }
}

TEST(ShownText, WhatSteersTheScreenIsShownByteForByte) {
    EXPECT_EQ(shown_line("a\x1B[2Jb"), "a\\x1b[2Jb");
    EXPECT_EQ(shown_line("x\r\nThe instrument answers."), "x\\x0d\\x0aThe instrument answers.");
    EXPECT_EQ(shown_line(std::string_view("\0\x7F", 2)), "\\x00\\x7f");
    // A control character of 8 bits, one that turns the writing, and one that is not seen.
    EXPECT_EQ(shown_line("\xC2\x9B\xE2\x80\xAE\xE2\x80\x8B"),
              "\\xc2\\x9b\\xe2\\x80\\xae\\xe2\\x80\\x8b");
    EXPECT_EQ(shown_line("\xE2\x81\xA6\xEF\xBB\xBF\xF3\xA0\x80\x81"),
              "\\xe2\\x81\\xa6\\xef\\xbb\\xbf\\xf3\\xa0\\x80\\x81");
}

TEST(ShownText, BytesThatAreNoTextAreShown) {
    EXPECT_EQ(shown_line("\xFF\x80z"), "\\xff\\x80z");
    EXPECT_EQ(shown_line("\xC3"), "\\xc3");
    EXPECT_EQ(shown_line("\xC0\xAF"), "\\xc0\\xaf");          // too long for what it is
    EXPECT_EQ(shown_line("\xED\xA0\x80"), "\\xed\\xa0\\x80"); // half a pair
    EXPECT_EQ(shown_line("\xF4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80");
}

TEST(ShownText, OfAPathEveryByteIsSeenAndTheRestStays) {
    EXPECT_EQ(shown_path(path_of_text("/home/me/M\xC3\xA4rz 1/a\\b.bmp")),
              "/home/me/M\xC3\xA4rz 1/a\\b.bmp");
    EXPECT_EQ(shown_path("/a\n\tSaved./b\x1B"), "/a\\x0a\\x09Saved./b\\x1b");
}

TEST(ShownText, OfSeveralLinesTheLinesStay) {
    EXPECT_EQ(shown_lines("one\n\ttwo\r\n\x1B"), "one\n\ttwo\\x0d\n\\x1b");
}

} // namespace
} // namespace kv408
