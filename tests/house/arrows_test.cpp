#include "house/arrows.h"

#include <gmock/gmock.h>

namespace kv408::house {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Three folders, and one header of `top` that `low` may include too.
const Arrows arrows = {
    {"low", {"top/value.h"}}, {"top", {"low"}}, {"top/value.h", {}}, {"window", {"top", "low"}}};

const SourceTree clean = {
    {"src/low/low.cpp", "#include \"low/low.h\"\n"},
    {"src/low/low.h", "#include \"top/value.h\"\n"},
    {"src/top/top.h", "#include <vector>\n\n#include \"low/low.h\"\n#include \"top/value.h\"\n"},
    {"src/top/value.h", "#pragma once\n"},
    {"src/window/window.h", "#include \"top/value.h\"\n#include \"low/low.h\"\n"},
};

SourceTree with(SourceFile file) {
    SourceTree tree = clean;
    tree.push_back(std::move(file));
    return tree;
}

TEST(ArrowTable, ReadsTheTableHeadedFolder) {
    const char* markdown = "# Title\n\n"
                           "| what | where |\n|---|---|\n| `x` | `y` |\n\n"
                           "| folder | may include |\n|---|---|\n"
                           "| `low` | `top/value.h` |\n"
                           "| `top/value.h` | nothing |\n"
                           "| `top` | `low` |\n"
                           "| `window` | `top`, `low` |\n\n"
                           "| later | also |\n|---|---|\n| `z` | `low` |\n";
    EXPECT_EQ(arrow_table(markdown), arrows);
}

TEST(ArrowTable, NoTableGivesNoArrows) {
    EXPECT_THAT(arrow_table("| a | b |\n|---|---|\n| c | d |\n"), IsEmpty());
}

TEST(Arrows, CleanTreeHasNoFindings) {
    EXPECT_THAT(check_table(arrows, clean), IsEmpty());
    EXPECT_THAT(check_includes(arrows, clean), IsEmpty());
    EXPECT_THAT(check_circles(clean), IsEmpty());
}

TEST(Arrows, IncludeAgainstTheArrowsIsFound) {
    const SourceTree tree = with({"src/low/bad.cpp", "#include \"top/top.h\"\n"});
    EXPECT_THAT(check_includes(arrows, tree),
                ElementsAre("src/low/bad.cpp includes top/top.h: no arrow from low to top"));
}

TEST(Arrows, HeaderWithItsOwnRowMayNotUseItsFolder) {
    const SourceTree tree = {{"src/low/low.h", ""},
                             {"src/top/top.h", ""},
                             {"src/top/value.h", "#include \"top/top.h\"\n"},
                             {"src/window/window.h", ""}};
    EXPECT_THAT(
        check_includes(arrows, tree),
        ElementsAre("src/top/value.h includes top/top.h: no arrow from top/value.h to top"));
}

TEST(Arrows, IncludeWithBlanksIsRead) {
    const SourceTree tree = with({"src/low/bad.h", "  #  include  \"window/window.h\"\n"});
    EXPECT_THAT(check_includes(arrows, tree), ElementsAre(HasSubstr("from low to window")));
}

TEST(Arrows, IncludeThatNamesNoFileFromSrcOnIsFound) {
    const SourceTree tree = with({"src/low/bad.cpp", "#include \"low.h\"\n"});
    EXPECT_THAT(check_includes(arrows, tree),
                ElementsAre(HasSubstr("includes low.h, which names")));
}

TEST(Arrows, CommentedIncludeIsNone) {
    const SourceTree tree = with({"src/low/good.cpp", "// #include \"top/top.h\"\n"});
    EXPECT_THAT(check_includes(arrows, tree), IsEmpty());
}

TEST(Arrows, FolderWithoutARowIsFound) {
    const SourceTree tree = with({"src/fresh/CMakeLists.txt", "kv408_library(fresh)\n"});
    EXPECT_THAT(check_table(arrows, tree),
                ElementsAre("src/fresh has no row in the table of arrows"));
}

TEST(Arrows, IncludeFromAFolderWithoutARowIsFound) {
    const SourceTree tree = with({"src/fresh/fresh.h", "#include \"low/low.h\"\n"});
    EXPECT_THAT(check_includes(arrows, tree), ElementsAre(HasSubstr("no arrow from fresh to low")));
}

TEST(Arrows, RowForWhatIsNotThereIsFound) {
    Arrows more = arrows;
    more["gone"] = {"low"};
    more["top/gone.h"] = {};
    EXPECT_THAT(check_table(more, clean),
                ElementsAre(HasSubstr("a row for gone,"), HasSubstr("a row for top/gone.h,")));
}

TEST(Arrows, CellThatNamesNoRowIsFound) {
    Arrows more = arrows;
    more["top"].insert("nowhere");
    EXPECT_THAT(check_table(more, clean), ElementsAre(HasSubstr("row of top names nowhere")));
}

TEST(Arrows, ArrowThatNobodyGoesAlongIsFound) {
    const SourceTree tree = {{"src/low/low.h", ""},
                             {"src/top/top.cpp", "#include \"low/low.h\"\n"},
                             {"src/top/value.h", ""},
                             {"src/window/window.cpp", "#include \"top/value.h\"\n"}};
    const Arrows used = {{"low", {}}, {"top", {"low"}}, {"window", {"top"}}};
    EXPECT_THAT(check_unused(used, tree), IsEmpty());
    Arrows more = used;
    more["window"].insert("low");
    EXPECT_THAT(check_unused(more, tree),
                ElementsAre("the row of window allows low, which nothing there includes"));
}

TEST(Arrows, TableThatGoesRoundIsFound) {
    Arrows more = arrows;
    more["low"].insert("window");
    EXPECT_THAT(check_table(more, clean), ElementsAre(HasSubstr("low -> window -> low")));
}

TEST(Arrows, FilesThatIncludeEachOtherAreFound) {
    const SourceTree tree = {{"src/low/a.h", "#include \"low/b.h\"\n"},
                             {"src/low/b.h", "#include \"low/c.h\"\n"},
                             {"src/low/c.h", "#include \"low/a.h\"\n"}};
    EXPECT_THAT(check_circles(tree),
                ElementsAre("files include each other: low/a.h -> low/b.h -> low/c.h -> low/a.h"));
}

TEST(Arrows, FileThatIncludesItselfIsFound) {
    const SourceTree tree = {{"src/low/a.h", "#include \"low/a.h\"\n"}};
    EXPECT_THAT(check_circles(tree), ElementsAre(HasSubstr("low/a.h -> low/a.h")));
}

TEST(Arrows, DiamondIsNoCircle) {
    EXPECT_EQ(circle_in({{"a", {"b", "c"}}, {"b", {"d"}}, {"c", {"d"}}, {"d", {}}}), "");
}

} // namespace
} // namespace kv408::house
