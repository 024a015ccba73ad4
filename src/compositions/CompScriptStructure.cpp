#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compositions/CompScriptSections.h"
#include "compositions/HashIndex.h"
#include "compositions/language/Symbols.h"
#include "helpers/report/Report.h"
#include "helpers/scripting/SmallList.h"

namespace compositions {
namespace {

using namespace std::string_view_literals;

// The names that STRUCTURE may wire.
class Declarations {
public:
    explicit Declarations(const CompositionDescription& description)
        : description_(description), declaredMixes_(description.mixes.size()) {
        Index(description.inputs, inputs_);
        Index(description.mixes, mixes_);
    }

    bool Contains(const UpperName& name) const {
        return description_.effectInstances.contains(name) ||
               IsListed(name, description_.inputs, description_.inputs.size(), inputs_) ||
               description_.mediaSources.contains(name) ||
               description_.numberedInputs.contains(name) ||
               IsListed(name, description_.mixes, declaredMixes_, mixes_);
    }

private:
    static constexpr std::size_t kScanLimit = 8;  // shorter lists are looked through

    static void Index(const Names& names, HashIndex& index) {
        if (names.size() <= kScanLimit) return;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const auto equals = [&](std::size_t other) { return names[other] == names[i]; };
            index.Insert(HashOf(names[i].View()), i, equals);
        }
    }

    static bool IsListed(const UpperName& name, const Names& names, std::size_t count,
                         const HashIndex& index) {
        const auto matches = [&](std::size_t i) { return names[i] == name; };
        if (count > kScanLimit) return index.Contains(HashOf(name.View()), matches);
        for (std::size_t i = 0; i < count; ++i) {
            if (matches(i)) return true;
        }
        return false;
    }

    const CompositionDescription& description_;
    const std::size_t declaredMixes_;  // those behind them were made by STRUCTURE and have no name
                                       // that a script can use
    HashIndex inputs_;
    HashIndex mixes_;
};

// Grows the tree lexem by lexem.
class TreeBuilder {
public:
    void AddName(UpperName&& name) {
        std::vector<StructureNode>& siblings = open_.empty() ? roots_ : open_.back()->inputs;
        if (siblings.empty()) siblings.reserve(kFewNodes);
        last_ = &siblings.emplace_back(std::move(name));
    }
    void AddComma() { last_ = nullptr; }
    // Only directly behind a name.
    bool Open() {
        if (!last_) return false;
        open_.push_back(std::exchange(last_, nullptr));
        return true;
    }
    bool Close() {
        last_ = nullptr;
        if (open_.empty()) return false;
        open_.pop_back();
        return true;
    }

    bool IsClosed() const { return open_.empty(); }
    std::vector<StructureNode>& Roots() { return roots_; }

private:
    static constexpr std::size_t kFewNodes = 2;  // many lists have no more

    std::vector<StructureNode> roots_;
    // The nodes whose parentheses are open. Each is the last of its list, which grows again only
    // when it is closed: the addresses hold.
    helpers::scripting::SmallList<StructureNode*, 8> open_;
    StructureNode* last_ = nullptr;  // the node just named
};

// Declares a mixing node. Names that the script gave are in upper case and the candidate is not
// when it is compared with them, so the first candidate is taken even if a mix is called so.
UpperName MakeMix(Names& mixes) {
    std::array<char, 24> text{'m', 'i', 'x'};
    char* const end = std::to_chars(text.data() + 3, text.data() + text.size(), mixes.size()).ptr;
    std::array<wchar_t, 24> wide;
    std::copy(text.data(), end, wide.data());
    UpperName name({wide.data(), static_cast<std::size_t>(end - text.data())});
    mixes.push_back(name);
    return name;
}

std::int32_t ReadNodes(ScriptCursor& cursor, CompositionDescription& description,
                       TreeBuilder& tree) {
    const Declarations declarations(description);
    Pieces& pieces = cursor.Scratch();
    for (;;) {
        const TextForm form = cursor.NextForm();
        if (CanBe(form, TextForm::kComma) && cursor.Match(LxComma, pieces)) {
            tree.AddComma();
        } else if (CanBe(form, TextForm::kOpenParen) && cursor.Match(LxOpenParen, pieces)) {
            if (!tree.Open()) return cursor.Refused(status::kFaultyStatement, pieces[0]);
        } else if (CanBe(form, TextForm::kCloseParen) && cursor.Match(LxCloseParen, pieces)) {
            if (!tree.Close()) return cursor.Refused(status::kFaultyStatement, pieces[0]);
        } else if (CanBe(form, TextForm::kWord) && cursor.Match(LxIdent, pieces)) {
            UpperName name(pieces[0]);
            if (name == L"MIX"sv) {
                name = MakeMix(description.mixes);
            } else if (!declarations.Contains(name)) {
                return cursor.Refused(status::kUnknownName, pieces[0]);
            }
            tree.AddName(std::move(name));
        } else {
            return tree.IsClosed() ? status::kRead : status::kFaultyStatement;
        }
        cursor.Taken();
    }
}

}  // namespace

std::int32_t ReadStructure(ScriptCursor& cursor, CompositionDescription& description) {
    if (!cursor.FindHeader(Section::kStructure, R38)) {
        return status::kNoStructure;
    }
    Pieces& pieces = cursor.Scratch();
    if (!cursor.Match(R39, pieces)) return status::kNoOutput;
    cursor.Taken();

    TreeBuilder tree;
    const std::int32_t result = ReadNodes(cursor, description, tree);
    if (result != status::kRead) return result;
    std::vector<StructureNode>& roots = tree.Roots();
    if (roots.size() != 1) {
        helpers::ReportAssertion("CompScript", 491,
                                 "compositions::CompositionScript::ReadStructureSection");
    }
    if (!roots.empty()) description.structure = std::move(roots.back());
    return status::kRead;
}

}  // namespace compositions
