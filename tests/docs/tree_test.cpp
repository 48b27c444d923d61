// The Markdown of the tree: no dead link, and the manual's pictures are those that lie there.

#include <filesystem>
#include <set>

#include <gmock/gmock.h>

#include "docs/documents.h"

namespace kv408::docs {
namespace {

using testing::Gt;
using testing::IsEmpty;
using testing::SizeIs;

/// The files that `page`, a Markdown file, leads to and that do not exist.
Findings dead_links(const std::filesystem::path& page) {
    Findings dead;
    for (const std::string& target : links(read_text(page))) {
        const std::string file = target.substr(0, target.find('#'));
        const bool outside = target.find("://") != std::string::npos;
        if (!outside && !file.empty() && !std::filesystem::exists(page.parent_path() / file)) {
            dead.push_back(page.filename().string() + ": " + target);
        }
    }
    return dead;
}

TEST(Tree, HasNoDeadLinkInItsDocuments) {
    Findings dead;
    for (const char* const page :
         {"README.md", "CONTRIBUTING.md", "CHANGELOG.md", "bench/README.md", "docs/accuracy.md"}) {
        const Findings more = dead_links(root / page);
        dead.insert(dead.end(), more.begin(), more.end());
    }
    for (const auto& [name, text] : read_pages(root / "docs" / "manual")) {
        const Findings more = dead_links(root / "docs" / "manual" / (name + ".md"));
        dead.insert(dead.end(), more.begin(), more.end());
    }
    EXPECT_THAT(dead, IsEmpty());
}

TEST(Tree, HasNoPictureThatNoPageShows) {
    std::set<std::string> shown;
    for (const auto& [name, text] : read_pages(root / "docs" / "manual")) {
        for (const std::string& target : links(text)) {
            shown.insert(std::filesystem::path(target).filename().string());
        }
    }
    std::set<std::string> kept;
    Findings unused;
    for (const auto& entry :
         std::filesystem::directory_iterator(root / "docs" / "manual" / "images")) {
        kept.insert(entry.path().filename().string());
        if (!shown.contains(entry.path().filename().string())) {
            unused.push_back(entry.path().filename().string());
        }
    }
    EXPECT_THAT(unused, IsEmpty());
    EXPECT_THAT(kept, SizeIs(Gt(40U)));
}

} // namespace
} // namespace kv408::docs
