#include "compositions/StructureNode.h"

#include <gtest/gtest.h>

#include <utility>

#include "support/SmallStack.h"

using compositions::StructureNode;
using compositions::UpperName;

namespace {

StructureNode Node(const wchar_t* name) {
    return StructureNode(UpperName(name));
}

// A chain that alternates between both lists, so that both are walked.
StructureNode Chain(int levels) {
    StructureNode root = Node(L"root");
    StructureNode* last = &root;
    for (int i = 0; i < levels; ++i) {
        auto& children = i % 2 == 0 ? last->inputs : last->secondary;
        children.push_back(Node(L"x"));
        last = &children.back();
    }
    return root;
}

}  // namespace

TEST(StructureNode, CopiesCompareEqualUntilOneChanges) {
    StructureNode root = Node(L"a");
    root.inputs.push_back(Node(L"b"));
    root.inputs.back().secondary.push_back(Node(L"c"));
    root.secondary.push_back(Node(L"d"));
    StructureNode copy = root;
    EXPECT_TRUE(copy == root);
    copy.inputs[0].secondary[0].name = UpperName(L"e");
    EXPECT_FALSE(copy == root);
    copy = root;
    EXPECT_TRUE(copy == root);
    copy.secondary.clear();
    EXPECT_FALSE(copy == root);
}

TEST(StructureNode, TheListThatHoldsAChildMatters) {
    StructureNode left = Node(L"a");
    left.inputs.push_back(Node(L"b"));
    StructureNode right = Node(L"a");
    right.secondary.push_back(Node(L"b"));
    EXPECT_FALSE(left == right);
}

TEST(StructureNode, CanBeReplacedByAPartOfItself) {
    StructureNode root = Chain(4);
    root = std::move(root.inputs[0]);
    EXPECT_TRUE(root.name == std::wstring_view(L"X"));
    ASSERT_EQ(root.secondary.size(), 1u);
    const StructureNode& part = root.secondary[0];
    root = part;
    EXPECT_EQ(root.inputs.size(), 1u);
}

TEST(StructureNode, AMillionLevelsNeedNoStack) {
    RunOnSmallStack([] {
        StructureNode deep = Chain(1'000'000);
        StructureNode copy = deep;
        EXPECT_TRUE(copy == deep);
        StructureNode moved = std::move(copy);
        moved.name = UpperName(L"other");
        EXPECT_FALSE(moved == deep);
        deep = moved;
        EXPECT_TRUE(moved == deep);
    });
}

TEST(StructureNode, AMillionChildrenAreTakenDownInOnePass) {
    StructureNode wide = Node(L"a");
    for (int i = 0; i < 1'000'000; ++i) wide.inputs.emplace_back();
    const StructureNode copy = wide;
    EXPECT_TRUE(copy == wide);
}
