// How documents and sources are read for the checks.

#include "docs/documents.h"

#include <gmock/gmock.h>

namespace kv408::docs {
namespace {

using testing::ElementsAre;

TEST(Documents, ArePlainWithoutMarks) {
    EXPECT_EQ(plain("Press **Set  Cal**\nor `a\\_b` \\<Retry\\>! "),
              "Press Set Cal or a_b <Retry>!");
}

TEST(Documents, HaveTablesOfCells) {
    EXPECT_THAT(table_rows("text\n| a | **b** |\n|---|---|\n| `c d` | |\n"),
                ElementsAre(ElementsAre("a", "b"), ElementsAre("c d", "")));
}

TEST(Documents, HaveLinksAndPictures) {
    EXPECT_THAT(links("[a](b.md#c) ![d](e.png) <img src=\"f.png\" width=\"3\">"),
                ElementsAre("b.md#c", "e.png", "f.png"));
}

TEST(Literals, AreJoinedAndFoundOutsideComments) {
    EXPECT_THAT(literals("#include \"no\"\n// \"nor this\"\nf(\"a \"\n  \"b\\n<\", \"c\", '\"');"),
                ElementsAre("a b <", "c"));
}

TEST(Literals, ForUsersAreSentencesAndWords) {
    EXPECT_TRUE(is_for_users("Error Sending Data."));
    EXPECT_TRUE(is_for_users(" CALDELPS failed"));
    EXPECT_TRUE(is_for_users("Running"));
    EXPECT_TRUE(is_for_users("Restore..."));
    EXPECT_FALSE(is_for_users("scopech1f"));
    EXPECT_FALSE(is_for_users("SI_Open"));
    EXPECT_FALSE(is_for_users("Bitmap (*.BMP)|*.bmp"));
    EXPECT_FALSE(is_for_users("%02d:%02d, %02d"));
}

} // namespace
} // namespace kv408::docs
