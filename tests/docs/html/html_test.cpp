// The manual's HTML pages lead only to what is there, and need nothing from elsewhere.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>

#include <gmock/gmock.h>

namespace kv408::docs {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;

using Pages = std::map<std::string, std::string>;

std::vector<std::string> attributes(const std::string& page, const std::string& name) {
    std::vector<std::string> values;
    const std::regex attribute("[\\s]" + name + "=\"([^\"]*)\"");
    for (std::sregex_iterator at(page.begin(), page.end(), attribute), end; at != end; ++at) {
        values.push_back((*at)[1]);
    }
    return values;
}

/// The links and pictures of `pages` that lead to none of them, to no place in them and to no file
/// of `files`.
std::vector<std::string> dead_ends(const Pages& pages, const std::set<std::string>& files) {
    std::map<std::string, std::set<std::string>> places;
    for (const auto& [name, text] : pages) {
        const auto ids = attributes(text, "id");
        places[name] = {ids.begin(), ids.end()};
    }
    std::vector<std::string> dead;
    for (const auto& [name, text] : pages) {
        auto targets = attributes(text, "href");
        const auto pictures = attributes(text, "src");
        targets.insert(targets.end(), pictures.begin(), pictures.end());
        for (const std::string& target : targets) {
            const auto hash = std::min(target.find('#'), target.size());
            const std::string file = hash == 0 ? name : target.substr(0, hash);
            const std::string place = target.substr(std::min(hash + 1, target.size()));
            const bool there = files.contains(file) || places.contains(file);
            if (!there || (!place.empty() && !places[file].contains(place))) {
                dead.push_back(name + ": " + target);
            }
        }
    }
    return dead;
}

TEST(Html, TellsDeadEnds) {
    const Pages pages = {{"a.html", R"(<h1 id="one"></h1><a href="b.html#two">x</a>
        <a href="#one">y</a><img src="p.png"> <link href="s.css">)"},
                         {"b.html", R"(<h2 id="two"></h2><a href="a.html">z</a>)"}};
    EXPECT_THAT(dead_ends(pages, {"p.png", "s.css"}), IsEmpty());
    EXPECT_THAT(dead_ends(pages, {"s.css"}), ElementsAre("a.html: p.png"));
    const Pages wrong = {{"a.html", R"(<a href="#no"></a><a href="c.html"></a>
        <img src="https://somewhere/p.png">)"}};
    EXPECT_THAT(dead_ends(wrong, {}),
                ElementsAre("a.html: #no", "a.html: c.html", "a.html: https://somewhere/p.png"));
}

class HtmlManual : public testing::Test {
protected:
    HtmlManual() {
        const std::filesystem::path folder = KV408_MANUAL;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            const auto name = entry.path().lexically_relative(folder).generic_string();
            if (entry.path().extension() == ".html") {
                std::ifstream file(entry.path(), std::ios::binary);
                pages_[name] = {std::istreambuf_iterator<char>(file), {}};
            } else {
                files_.insert(name);
            }
        }
    }

    Pages pages_;
    std::set<std::string> files_;
};

TEST_F(HtmlManual, HasItsPages) {
    EXPECT_THAT(pages_, SizeIs(Ge(14U)));
    EXPECT_THAT(pages_, Contains(Key("index.html")));
    EXPECT_THAT(files_, Contains("manual.css"));
    EXPECT_THAT(files_, Contains("images/main-window.png"));
}

TEST_F(HtmlManual, HasNoDeadEnd) {
    EXPECT_THAT(dead_ends(pages_, files_), IsEmpty());
}

TEST_F(HtmlManual, EachPageIsReachedFromTheIndex) {
    const auto& index = pages_["index.html"];
    const auto links = attributes(index.substr(index.find("<main>")), "href");
    for (const auto& [name, text] : pages_) {
        if (name != "index.html") {
            EXPECT_THAT(links, Contains(name));
        }
    }
}

} // namespace
} // namespace kv408::docs
