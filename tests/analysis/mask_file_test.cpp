#include "analysis/mask_file.h"
#include "analysis/shipped_masks.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace kv408 {
namespace {

const std::string good = "# a remark\n"
                         "name: \"Two: parts\"  # of which one has a name\n"
                         "source: IEEE Std 802.3, clause 52\n"
                         "x: ns\n"
                         "y: V\n"
                         "hit ratio: 5e-5\n"
                         "\n"
                         "polygons:\n"
                         "  - name: inner\n"
                         "    points:\n"
                         "      - [1, 0.25]\n"
                         "      - [2.5, -0.25]  # low\n"
                         "      - [ 3 , 0.5 ]\n"
                         "  - points:\n"
                         "      - [0, 0]\n"
                         "      - [1, 0]\n"
                         "      - [1, 1]\n"
                         "      - [0, 1]\n";

std::string replaced(const std::string& what, const std::string& with) {
    std::string text = good;
    const std::size_t place = text.find(what);
    EXPECT_NE(place, std::string::npos) << what;
    return text.replace(place, what.size(), with);
}

MaskFileError error_in(const std::string& text) {
    const auto found = mask_in(text);
    const auto* const error = std::get_if<MaskFileError>(&found);
    return error != nullptr ? *error : MaskFileError{};
}

TEST(MaskFile, HoldsNameUnitsRatioAndPolygons) {
    const auto found = mask_in(good);
    const auto* const mask = std::get_if<Mask>(&found);
    ASSERT_NE(mask, nullptr) << error_in(good).line << error_in(good).what;
    EXPECT_EQ(mask->name, "Two: parts");
    EXPECT_EQ(mask->source, "IEEE Std 802.3, clause 52");
    EXPECT_EQ(mask->units, MaskUnits::time_level);
    EXPECT_EQ(mask->hit_ratio, 5e-5);
    ASSERT_EQ(mask->polygons.size(), 2U);
    EXPECT_EQ(mask->polygons[0].name, "inner");
    EXPECT_EQ(mask->polygons[0].points,
              (std::vector<MaskPoint>{{1000.0, 250.0}, {2500.0, -250.0}, {3000.0, 500.0}}));
    EXPECT_EQ(mask->polygons[1].name, "");
    EXPECT_EQ(mask->polygons[1].points.size(), 4U);
}

TEST(MaskFile, LineEndsOfOtherSystemsAreLineEnds) {
    std::string text;
    for (const char letter : good) {
        text += letter == '\n' ? "\r\n" : std::string(1, letter);
    }
    EXPECT_EQ(std::get<Mask>(mask_in(text)), std::get<Mask>(mask_in(good)));
}

TEST(MaskFile, TellsInWhichLineSomethingIsWrong) {
    const struct {
        const char* what;
        const char* with;
        int line;
        const char* error;
    } cases[] = {
        {"x: ns", "x: furlongs", 4, "x is ui, s, ns or ps"},
        {"y: V", "y: amplitude", 8, "ui goes with amplitude, times go with V or mV"},
        {"y: V", "y:V", 5, "A key with a colon and a blank behind it is expected"},
        {"y: V\n", "", 7, "x and y stand before the polygons"},
        {"y: V", "x: ns", 5, "This key stands there twice"},
        {"y: V", "yy: V", 5, "There is no such key"},
        {"y: V", "  y: V", 5, "The indentation does not fit"},
        {"y: V", "\ty: V", 5, "A tab: indent with blanks"},
        {"y: V", "y: V\x01", 5, "A character that is no text"},
        {"\"Two: parts\"", "\"Two: parts", 2, "The quotes do not fit"},
        {"\"Two: parts\"", "Two: parts", 2, "Such a text has to stand in quotes"},
        {"\"Two: parts\"", "&anchor", 2, "Such a text has to stand in quotes"},
        {"\"Two: parts\"", "", 2, "A text is missing behind the colon"},
        {"5e-5", "1.5", 6, "The hit ratio is from 0 to 1"},
        {"5e-5", "few", 6, "A number from -1e9 to 1e9 is expected"},
        {"[1, 0.25]", "[1, 1e10]", 11, "A number from -1e9 to 1e9 is expected"},
        {"[1, 0.25]", "[1, nan]", 11, "A number from -1e9 to 1e9 is expected"},
        {"[1, 0.25]", "[1, 2, 3]", 11, "A number from -1e9 to 1e9 is expected"},
        {"[1, 0.25]", "[1 0.25]", 11, "A point is written [x, y]"},
        {"      - [1, 0.25]\n", "", 10, "A polygon has at least three points, each as - [x, y]"},
        {"      - [1, 0.25]", "       - [1, 0.25]", 12, "The indentation does not fit"},
        {"    points:\n", "    corners:\n", 10, "A polygon has a name and points"},
        {"  - points", "   - points", 14, "A polygon begins with \"- \", each indented alike"},
        {"polygons:", "polygons: none", 8, "The polygons follow in lines of their own"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(error_in(replaced(one.what, one.with)), (MaskFileError{one.line, one.error}))
            << one.what << " -> " << one.with << ": " << error_in(replaced(one.what, one.with)).line
            << " " << error_in(replaced(one.what, one.with)).what;
    }
    EXPECT_EQ(error_in(""), (MaskFileError{1, "There is no \"name\""}));
    EXPECT_EQ(error_in("name: a\nx: ui\ny: amplitude\n"),
              (MaskFileError{3, "There is no \"polygons\""}));
    EXPECT_EQ(error_in(good + "name: again\n"), (MaskFileError{19, "This key stands there twice"}));
    EXPECT_EQ(error_in("x: ui\ny: amplitude\npolygons:\n  - name: a\n"),
              (MaskFileError{4, "The polygon's points are missing"}));
    EXPECT_EQ(error_in(std::string(most_mask_bytes + 1, '#')),
              (MaskFileError{1, "The file has more than 64 KiB"}));
}

TEST(MaskFile, TakesSoManyPolygonsAndPointsAndNoMore) {
    const std::string head = "name: many\nx: ui\ny: amplitude\npolygons:\n";
    const std::string points = "      - [0, 0]\n      - [1, 0]\n      - [1, 1]\n";
    std::string many = head;
    for (std::size_t polygon = 0; polygon < most_mask_polygons; ++polygon) {
        many += "  - points:\n" + points;
    }
    EXPECT_TRUE(std::holds_alternative<Mask>(mask_in(many)));
    EXPECT_EQ(error_in(many + "  - points:\n" + points).what, "There are more than 64 polygons");
    std::string long_one = head + "  - points:\n";
    for (std::size_t point = 0; point < most_mask_points; ++point) {
        long_one += "      - [0, 0.5]\n";
    }
    EXPECT_TRUE(std::holds_alternative<Mask>(mask_in(long_one)));
    EXPECT_EQ(error_in(long_one + "      - [0, 0]\n").what, "The polygon has more than 256 points");
}

TEST(MaskFile, TheSixThatComeWithTheProgramCanBeRead) {
    for (const std::string_view name : shipped_masks) {
        std::ifstream file(std::filesystem::path(KV408_MASK_FOLDER) / name);
        std::ostringstream text;
        text << file.rdbuf();
        const auto found = mask_in(text.str());
        const auto* const mask = std::get_if<Mask>(&found);
        ASSERT_NE(mask, nullptr) << name << ":" << error_in(text.str()).line << " "
                                 << error_in(text.str()).what;
        EXPECT_FALSE(mask->name.empty());
        EXPECT_FALSE(mask->source.empty());
    }
    const auto files = std::filesystem::directory_iterator(KV408_MASK_FOLDER);
    EXPECT_EQ(std::distance(begin(files), end(files)), std::ssize(shipped_masks));
}

TEST(ShippedMasks, AreLookedForWhereTheProgramMayHaveBeenPut) {
    EXPECT_EQ(shipped_mask_paths("/usr/bin", "stm-1.yaml"),
              (std::vector<std::filesystem::path>{"/usr/bin/masks/stm-1.yaml",
                                                  "/usr/share/kv408/masks/stm-1.yaml",
                                                  "/packaging/masks/stm-1.yaml"}));
}

} // namespace
} // namespace kv408
