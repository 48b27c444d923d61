#include "house/links.h"

#include <gmock/gmock.h>

namespace kv408::house {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Arrows two_folders = {{"low", {"top/value.h"}}, {"top", {"low"}}, {"top/value.h", {}}};

/// The tree of two folders whose link lines are `low` and `top`.
SourceTree tree_of(const std::string& low, const std::string& top) {
    return {{"src/low/CMakeLists.txt", low},
            {"src/low/low.h", "#include \"top/value.h\"\n"},
            {"src/top/CMakeLists.txt", "add_library(kv408_values INTERFACE value.h)\n" + top},
            {"src/top/top.cpp", "#include \"low/low.h\"\n#include \"top/value.h\"\n"},
            {"src/top/value.h", ""}};
}

const std::string low_line = "kv408_library(low kv408_values ${CMAKE_DL_LIBS})\n";
const std::string top_line = "kv408_library(top kv408_values\n    kv408_low)\n";

TEST(Links, LinesThatFollowTheTableHaveNoFindings) {
    const SourceTree tree = tree_of(low_line, top_line);
    EXPECT_THAT(check_links(two_folders, tree), IsEmpty());
    EXPECT_THAT(check_linked(two_folders, tree), IsEmpty());
}

TEST(Links, LibraryWithoutAnArrowIsFound) {
    const SourceTree tree = tree_of("kv408_library(low kv408_values kv408_top)\n", top_line);
    EXPECT_THAT(check_links(two_folders, tree),
                ElementsAre("src/low/CMakeLists.txt links low with kv408_top: "
                            "no arrow from low to top"));
}

TEST(Links, TargetLinkLibrariesIsReadToo) {
    const SourceTree tree = tree_of(
        low_line + "target_link_libraries(kv408_low PUBLIC kv408_options kv408_top)\n", top_line);
    EXPECT_THAT(check_links(two_folders, tree), ElementsAre(HasSubstr("no arrow from low to top")));
}

TEST(Links, ProgramOfAFolderIsHeldToItsFolder) {
    const SourceTree tree =
        tree_of(low_line + "target_link_libraries(program PRIVATE kv408_top)\n", top_line);
    EXPECT_THAT(check_links(two_folders, tree), ElementsAre(HasSubstr("no arrow from low to top")));
}

TEST(Links, LibraryOfOneHeaderIsHeldToItsRow) {
    const SourceTree tree =
        tree_of(low_line, top_line + "target_link_libraries(kv408_values INTERFACE kv408_low)\n");
    EXPECT_THAT(check_links(two_folders, tree),
                ElementsAre(HasSubstr("no arrow from top/value.h to low")));
}

TEST(Links, UnknownLibraryIsFound) {
    const SourceTree tree = tree_of("kv408_library(low kv408_values kv408_else)\n", top_line);
    EXPECT_THAT(check_links(two_folders, tree),
                ElementsAre(HasSubstr("unknown library kv408_else")));
}

TEST(Links, CommentIsNoLine) {
    const SourceTree tree =
        tree_of("# kv408_library(low kv408_top) would go round\n" + low_line, top_line);
    EXPECT_THAT(check_links(two_folders, tree), IsEmpty());
}

TEST(Links, IncludeThatNoLineNamesIsFound) {
    const SourceTree tree = tree_of(low_line, "kv408_library(top kv408_values)\n");
    EXPECT_THAT(check_linked(two_folders, tree),
                ElementsAre("src/top/top.cpp includes low/low.h, but no link line of top names "
                            "its library"));
}

TEST(Links, FolderWithoutLinesMayUseItself) {
    const SourceTree tree = {{"src/top/CMakeLists.txt", "kv408_library(top)\n"},
                             {"src/top/top.cpp", "#include \"top/value.h\"\n"},
                             {"src/top/value.h", ""}};
    EXPECT_THAT(check_linked(two_folders, tree), IsEmpty());
}

} // namespace
} // namespace kv408::house
