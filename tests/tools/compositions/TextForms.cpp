#include "compositions/TextForms.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <set>
#include <utility>

#include "frame/Text.h"

namespace tooltest {
namespace {

const std::vector<std::pair<std::string, std::string>> kEntities = {
    {"&amp;", "&"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}};

bool StartsWithEntity(const std::string& text, std::size_t at) {
    for (const auto& [entity, character] : kEntities) {
        if (text.compare(at, entity.size(), entity) == 0) return true;
    }
    return false;
}

// Text between tags, or an attribute's value.
std::string ContentProblem(const std::string& content) {
    for (std::size_t i = 0; i < content.size(); ++i) {
        if (content[i] == '<' || content[i] == '>') return "markup in " + content;
        if (content[i] == '&' && !StartsWithEntity(content, i)) return "bare & in " + content;
    }
    return "";
}

std::string CharacterProblem(const std::string& text) {
    if (!tarnexctl::IsValidUtf8(text)) return "no UTF-8";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x20 && byte != '\n' && byte != '\t') return "a control character";
        if (text.compare(i, 3, "\xEF\xBF\xBE") == 0 || text.compare(i, 3, "\xEF\xBF\xBF") == 0) {
            return "no character of XML";
        }
    }
    return "";
}

std::string AttributesProblem(std::string rest) {
    static const std::regex kAttribute("^\\s+([A-Za-z][A-Za-z0-9-]*)=\"([^\"]*)\"");
    std::set<std::string> names;
    std::smatch match;
    while (std::regex_search(rest, match, kAttribute)) {
        if (!names.insert(match[1]).second) return "twice: " + match[1].str();
        const std::string problem = ContentProblem(match[2]);
        if (!problem.empty()) return problem;
        rest = match.suffix();
    }
    return rest.empty() ? "" : "no attribute: " + rest;
}

// A tag's inside, without its brackets.
std::string TagProblem(std::string tag, std::vector<std::string>& open) {
    if (tag.starts_with('/')) {
        if (open.empty() || open.back() != tag.substr(1)) return "closes nothing: " + tag;
        open.pop_back();
        return "";
    }
    const bool isEmpty = tag.ends_with('/');
    if (isEmpty) tag.pop_back();
    const std::size_t end = tag.find_first_of(" \n");
    const std::string name = tag.substr(0, end);
    if (name.empty() || !std::isalpha(static_cast<unsigned char>(name[0]))) return "name: " + tag;
    if (!isEmpty) open.push_back(name);
    return end == std::string::npos ? "" : AttributesProblem(tag.substr(end));
}

}  // namespace

std::string XmlProblem(const std::string& text) {
    if (const std::string problem = CharacterProblem(text); !problem.empty()) return problem;
    static const std::string kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    if (!text.starts_with(kHead)) return "no head";
    std::vector<std::string> open;
    std::size_t at = kHead.size();
    while (at < text.size()) {
        const std::size_t tag = std::min(text.find('<', at), text.size());
        const std::string content = text.substr(at, tag - at);
        if (const std::string problem = ContentProblem(content); !problem.empty()) return problem;
        if (open.empty() && content.find_first_not_of(" \n") != std::string::npos) {
            return "text outside: " + content;
        }
        if (tag == text.size()) break;
        const std::size_t end = text.find('>', tag);
        if (end == std::string::npos) return "an open tag";
        const std::string problem = TagProblem(text.substr(tag + 1, end - tag - 1), open);
        if (!problem.empty()) return problem;
        at = end + 1;
    }
    return open.empty() ? "" : "not closed: " + open.back();
}

std::string DotProblem(const std::string& text) {
    // Quoted strings become one letter, so that what is left can be matched line by line.
    static const std::regex kQuoted("\"(?:[^\"\\\\\\n]|\\\\.)*\"");
    static const std::regex kAttributes("\\[[a-z]+=[A-Za-z]+(?:, [a-z]+=[A-Za-z]+)*\\]");
    const std::string plain = std::regex_replace(text, kQuoted, "S");
    if (plain.find('"') != std::string::npos) return "an open string";
    std::set<std::string> nodes;
    std::size_t number = 0;
    for (std::size_t at = 0; at < plain.size(); ++number) {
        const std::size_t end = plain.find('\n', at);
        if (end == std::string::npos) return "no last line end";
        const std::string line = std::regex_replace(plain.substr(at, end - at), kAttributes, "A");
        at = end + 1;
        std::smatch match;
        static const std::regex kNode("    (n\\d+) A;");
        static const std::regex kEdge("    (n\\d+) -> (n\\d+)(?: A)?;");
        static const std::regex kOther("    (?:rankdir=LR|label=S|(?:node|edge) A);");
        if (std::regex_match(line, match, kNode)) {
            if (!nodes.insert(match[1]).second) return "twice: " + match[1].str();
        } else if (std::regex_match(line, match, kEdge)) {
            if (!nodes.contains(match[1]) || !nodes.contains(match[2])) return "edge: " + line;
        } else if (number == 0 ? line != "digraph S {" : line == "}" && at != plain.size()) {
            return "line: " + line;
        } else if (number > 0 && line != "}" && !std::regex_match(line, kOther)) {
            return "line: " + line;
        }
    }
    return plain.ends_with("}\n") ? "" : "no end";
}

std::vector<std::string> XmlTexts(const std::string& text, const std::string& element) {
    std::vector<std::string> texts;
    const std::regex kElement("<" + element + "(?: [^>]*)?>([^<]*)</" + element + ">");
    for (std::sregex_iterator it(text.begin(), text.end(), kElement), end; it != end; ++it) {
        std::string content = (*it)[1];
        for (auto entity = kEntities.rbegin(); entity != kEntities.rend(); ++entity) {
            for (std::size_t at = 0; (at = content.find(entity->first, at)) != content.npos; ++at) {
                content.replace(at, entity->first.size(), entity->second);
            }
        }
        texts.push_back(content);
    }
    return texts;
}

std::vector<std::vector<std::string>> CsvRows(const std::string& text) {
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> row{""};
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted && c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
            row.back() += text[++i];
        } else if (c == '"') {
            quoted = !quoted;
        } else if (quoted || (c != ',' && c != '\n')) {
            row.back() += c;
        } else if (c == ',') {
            row.emplace_back();
        } else {
            rows.push_back(std::exchange(row, {""}));
        }
    }
    if (quoted || row != std::vector<std::string>{""}) rows.push_back({"not closed"});
    return rows;
}

}  // namespace tooltest
