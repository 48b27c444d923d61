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
    EXPECT_THAT(check_unused(arrows_, tree_), IsEmpty());
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
    SourceTree scripts =
        read_tree(root_, {".ci", "bench", "cmake", "docs", "packaging", "src", "tests"});
    for (const auto& entry : std::filesystem::directory_iterator(root_)) {
        if (entry.is_regular_file()) {
            scripts.push_back({entry.path().filename().string(), read_text(entry.path())});
        }
    }
    std::erase_if(scripts, [](const SourceFile& file) {
        return file.path.ends_with(".md") || file.path.ends_with(".png") ||
               file.path.find("_corpus/") != std::string::npos;
    });
    for (const char* const path :
         {"run", ".ci/run", "docs/make-pictures", "packaging/windows/RELINK.txt"}) {
        EXPECT_THAT(scripts, Contains(Field(&SourceFile::path, path)));
    }
    EXPECT_THAT(check_hosts(scripts), IsEmpty());
}

} // namespace
} // namespace kv408::house
