#pragma once

// Plain readers of the forms in which drawings are written. Each answers what is wrong, or nothing.

#include <string>
#include <vector>

namespace tooltest {

// Well-formed XML of the sort that needs no document type: characters, tags, attributes, entities.
std::string XmlProblem(const std::string& text);

// One digraph whose statements are attributes, nodes and edges, every edge between nodes.
std::string DotProblem(const std::string& text);

// The content of every element of that name, unescaped.
std::vector<std::string> XmlTexts(const std::string& text, const std::string& element);

// The rows of comma-separated values; a problem of the form is a row that says so.
std::vector<std::vector<std::string>> CsvRows(const std::string& text);

}  // namespace tooltest
