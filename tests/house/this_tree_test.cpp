// The rules of the house, read against the tree that this test was built from.

#include <gmock/gmock.h>

#include "house/arrows.h"
#include "house/house_rules.h"
#include "house/links.h"

namespace kv408::house {
namespace {

using testing::Contains;
using testing::Field;
using testing::IsEmpty;

class ThisTree : public testing::Test {
protected:
    const std::filesystem::path root_ = KV408_SOURCE_ROOT;
    const SourceTree tree_ = read_tree(root_, {"src", "tests", "bench"});
    const Arrows arrows_ = arrow_table(read_text(root_ / "CONTRIBUTING.md"));
};

TEST_F(ThisTree, IsReadAtAll) {
    EXPECT_THAT(tree_, Contains(Field(&SourceFile::path, "src/link/bridge.h")));
    EXPECT_TRUE(allowed(arrows_, "panel", "link"));
    EXPECT_FALSE(allowed(arrows_, "link", "panel"));
}

TEST_F(ThisTree, TableOfArrowsNamesEveryFolder) {
    EXPECT_THAT(check_table(arrows_, tree_), IsEmpty());
}

TEST_F(ThisTree, IncludesFollowTheArrows) {
    EXPECT_THAT(check_includes(arrows_, tree_), IsEmpty());
}

TEST_F(ThisTree, NoFilesIncludeEachOther) {
    EXPECT_THAT(check_circles(tree_), IsEmpty());
}

TEST_F(ThisTree, LinkLinesFollowTheArrows) {
    EXPECT_THAT(check_links(arrows_, tree_), IsEmpty());
}

TEST_F(ThisTree, LinkLinesNameWhatIsIncluded) {
    EXPECT_THAT(check_linked(arrows_, tree_), IsEmpty());
}

TEST_F(ThisTree, NoSourceFileIsTooLong) {
    EXPECT_THAT(check_lengths(tree_), IsEmpty());
}

TEST_F(ThisTree, NothingIsLeftUnfinished) {
    EXPECT_THAT(check_unfinished(tree_), IsEmpty());
}

TEST_F(ThisTree, OnlyTheWindowUsesQt) {
    EXPECT_THAT(check_qt(tree_), IsEmpty());
}

TEST_F(ThisTree, EveryFolderHasTests) {
    EXPECT_THAT(check_tested(tree_), IsEmpty());
}

TEST_F(ThisTree, NoScriptNamesAHost) {
    SourceTree scripts = read_tree(root_, {".ci", "cmake", "packaging", "tests"});
    for (const char* const path : {"run", "test", "bench/compare-programs",
                                   "bench/compare_programs.py", "docs/make-pictures"}) {
        scripts.push_back({path, read_text(root_ / path)});
    }
    EXPECT_THAT(check_hosts(scripts), IsEmpty());
}

} // namespace
} // namespace kv408::house
