// Where the nodes of a graph stand, and how long texts are made short.

#include "drawing/Layout.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "compositions/Files.h"
#include "description/LoadedDescription.h"

namespace {

using namespace tarnexctl;

// Every node behind the one that it feeds, as a structure gives it: depth first.
Graph Generated(unsigned seed, std::size_t nodes) {
    std::mt19937 random(seed);
    Graph graph;
    graph.nodes.push_back({DrawnKind::kOutput, "OUTPUT", "", 0, ""});
    std::vector<std::size_t> open{0};  // from the output to the last node
    while (graph.nodes.size() < nodes) {
        if (open.size() > 1 + (graph.nodes.size() == 1)) {
            for (auto up = random() % open.size(); up > 0 && open.size() > 1; --up) open.pop_back();
        }
        const bool detail = random() % 2 == 0;
        graph.nodes.push_back({DrawnKind::kEffect, std::string(1 + random() % 60, 'N'),
                               detail ? "Detail" : "", open.back(),
                               random() % 3 == 0 ? "Label" : ""});
        open.push_back(graph.nodes.size() - 1);
    }
    return graph;
}

void ExpectGoodLayout(const Graph& graph) {
    const Layout layout = LayOut(graph);
    ASSERT_EQ(layout.boxes.size(), graph.nodes.size());
    std::map<std::size_t, std::vector<std::size_t>> feeders;
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const Box& box = layout.boxes[i];
        EXPECT_GE(box.x, 0);
        EXPECT_GE(box.y, 0);
        EXPECT_LE(box.Right(), layout.width);
        EXPECT_LE(box.Bottom(), layout.height);
        if (i == 0) continue;
        EXPECT_LT(box.Right(), layout.boxes[graph.nodes[i].feeds].x) << i;
        feeders[graph.nodes[i].feeds].push_back(i);
    }
    for (const auto& [node, list] : feeders) {
        for (std::size_t i = 1; i < list.size(); ++i) {
            EXPECT_LT(layout.boxes[list[i - 1]].Bottom(), layout.boxes[list[i]].y);
        }
        const int middle =
            (layout.boxes[list.front()].Middle() + layout.boxes[list.back()].Middle()) / 2;
        EXPECT_NEAR(layout.boxes[node].Middle(), middle, 1);
    }
    for (std::size_t i = 0; i < layout.boxes.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const Box& a = layout.boxes[i];
            const Box& b = layout.boxes[j];
            const bool apart =
                a.Right() <= b.x || b.Right() <= a.x || a.Bottom() <= b.y || b.Bottom() <= a.y;
            ASSERT_TRUE(apart) << i << " and " << j;
        }
    }
}

TEST(Layout, BoxesKeepApartAndStandLeftOfWhatTheyFeedInTheScriptsOrder) {
    for (unsigned seed = 0; seed < 30; ++seed) ExpectGoodLayout(Generated(seed, 2 + seed * 9));
    for (const std::string& path : tooltest::ExampleScripts()) {
        ExpectGoodLayout(MakeGraph(LoadDescription(path).Get()));
    }
}

TEST(Layout, TheOutputAloneHasItsPlace) {
    Graph graph;
    graph.nodes.push_back({DrawnKind::kOutput, "OUTPUT", "", 0, ""});
    ExpectGoodLayout(graph);
}

TEST(Layout, AMillionLevelsAndAMillionFeedersAreLaidOut) {
    Graph chain;
    Graph fan;
    for (std::size_t i = 0; i < 1'000'000; ++i) {
        chain.nodes.push_back({DrawnKind::kMix, "M", "", i == 0 ? 0 : i - 1, ""});
        fan.nodes.push_back({DrawnKind::kMix, "M", "", 0, ""});
    }
    EXPECT_EQ(LayOut(chain).boxes.size(), 1'000'000u);
    EXPECT_EQ(LayOut(fan).boxes.size(), 1'000'000u);
}

TEST(Layout, LongTextsEndInAnEllipsisBetweenCharacters) {
    EXPECT_EQ(ShortText("short"), "short");
    EXPECT_EQ(ShortText(std::string(36, 'x')), std::string(36, 'x'));
    EXPECT_EQ(ShortText(std::string(37, 'x')), std::string(36, 'x') + "\xE2\x80\xA6");
    std::string wide;
    for (int i = 0; i < 19; ++i) wide += "\xE6\xBC\xA2";
    EXPECT_EQ(ShortText(wide), wide.substr(0, 18 * 3) + "\xE2\x80\xA6");
    EXPECT_EQ(TextWidth("\xE6\xBC\xA2"), 2 * TextWidth("x"));
    EXPECT_EQ(TextWidth("\xC3\xA4"), TextWidth("x"));
}

}  // namespace
