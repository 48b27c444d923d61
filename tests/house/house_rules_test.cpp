#include "house/house_rules.h"

#include <gmock/gmock.h>

#include <string>

namespace kv408::house {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A text of `count` lines.
std::string lines(std::size_t count) {
    std::string text;
    for (std::size_t line = 0; line < count; ++line) {
        text += "x\n";
    }
    return text;
}

TEST(HouseRules, LengthIsHeldToTheLine) {
    EXPECT_THAT(check_lengths({{"src/link/a.cpp", lines(450)}}), IsEmpty());
    EXPECT_THAT(check_lengths({{"src/link/a.cpp", lines(451)}}),
                ElementsAre("src/link/a.cpp has 451 lines, 450 are the most"));
}

TEST(HouseRules, LengthOfTestsAndTextsIsFree) {
    EXPECT_THAT(check_lengths({{"tests/link/a.cpp", lines(451)}, {"src/link/a.txt", lines(451)}}),
                IsEmpty());
}

TEST(HouseRules, UnfinishedWorkIsFoundWithItsPlace) {
    const std::string mark = std::string("TO") + "DO";
    EXPECT_THAT(check_unfinished({{"src/link/a.cpp", "int a;\n// " + mark + ": more\n"}}),
                ElementsAre("src/link/a.cpp:2: " + mark));
}

TEST(HouseRules, EveryMarkIsFound) {
    for (const std::string& line :
         {std::string("// FIX") + "ME", std::string("// XX") + "X later",
          std::string("GTEST_") + "SKIP() << 1;", std::string("Q") + "SKIP(1);",
          std::string("TEST(A, DIS") + "ABLED_B) {", std::string("#if ") + "0",
          std::string("int a; // NO") + "LINT", std::string("// NO") + "LINTNEXTLINE"}) {
        EXPECT_THAT(check_unfinished({{"tests/link/a.cpp", line + "\n"}}), SizeIs(1)) << line;
    }
}

TEST(HouseRules, WhatOnlyResemblesAMarkIsNone) {
    for (const std::string line :
         {"int METHOD"
          "OLOGY;",
          "int todo;", "#if 01 // no zero", "char name[] = \"aXXXXXX\";"}) {
        EXPECT_THAT(check_unfinished({{"src/link/a.cpp", line + "\n"}}), IsEmpty()) << line;
    }
    const std::string reasoned = std::string("int a; // NO") + "LINT(one-check): why";
    EXPECT_THAT(check_unfinished({{"src/link/a.cpp", reasoned}}), IsEmpty());
}

TEST(HouseRules, QtIsFoundOutsideTheWindow) {
    for (const std::string include : {"<QWidget>", "<QtCore/QString>", "\"QString\""}) {
        const std::string text = "#include " + include + "\n";
        EXPECT_THAT(check_qt({{"src/panel/a.h", text}}), ElementsAre(HasSubstr("src/panel/a.h:1")));
        EXPECT_THAT(check_qt({{"tests/panel/a.cpp", text}}), SizeIs(1));
        EXPECT_THAT(check_qt({{"src/ui/a.h", text}, {"tests/ui/a.cpp", text}}), IsEmpty());
        EXPECT_THAT(check_qt({{"src/demo/a.h", text}, {"tests/demo/a.cpp", text}}), IsEmpty());
    }
}

TEST(HouseRules, BenchmarksMayUseQt) {
    EXPECT_THAT(check_qt({{"bench/a.cpp", "#include <QPainter>\n"}}), IsEmpty());
}

TEST(HouseRules, OtherIncludesAreNoQt) {
    EXPECT_THAT(check_qt({{"src/panel/a.h", "#include <queue>\n#include \"link/queue.h\"\n"}}),
                IsEmpty());
}

TEST(HouseRules, FolderWithoutATestIsFound) {
    const SourceTree tree = {{"src/link/a.h", ""},
                             {"src/panel/a.h", ""},
                             {"tests/link/a.cpp", "TEST(A, B) {\n"},
                             {"tests/panel/a.cpp", "// TEST(A, B) is missing\n"}};
    EXPECT_THAT(check_tested(tree), ElementsAre("src/panel has no test in tests/panel"));
}

TEST(HouseRules, AMirrorIsFoundInAScript) {
    for (const std::string line :
         {"debootstrap bookworm root http://ftp.somewhere.net/debian",
          "wget https://snapshot.somewhere.org/package/qt6-base/", "mirror=deb.somewhere.org",
          "mirror=ftp.somewhere.net/debian", "wget packages.somewhere.com",
          "git clone git@code.somewhere.io:a/b.git", "nc mirror.somewhere.org. 80",
          "http://www.w3.org/2000/svg http://files.somewhere.org/a"}) {
        EXPECT_THAT(check_hosts({{"packaging/a/b", "# one\n" + line + "\n"}}),
                    ElementsAre(HasSubstr("packaging/a/b:2: names a host: ")))
            << line;
    }
}

TEST(HouseRules, NamesOfFormatsAndWhatTheMachineSaysAreNoHosts) {
    for (const std::string line :
         {"<svg xmlns=\"http://www.w3.org/2000/svg\">", "xmlns='http://schemas.microsoft.com/SMI/'",
          "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/",
          "export http_proxy=http://$host/", "site=${list#mirror+file://}",
          "Maintainer: The Kv408 authors <kv408@users.kv408.org>", "org.kv408.Kv408.desktop",
          "x.org.y z.commit"}) {
        EXPECT_THAT(check_hosts({{"packaging/a", line}}), IsEmpty()) << line;
    }
}

} // namespace
} // namespace kv408::house
