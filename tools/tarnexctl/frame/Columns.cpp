#include "frame/Columns.h"

#include <algorithm>

#include "frame/Text.h"

namespace tarnexctl {

void Columns::Add(std::vector<std::string> row) {
    for (std::string& cell : row) cell = Printable(ValidUtf8(cell));
    row.resize(headings_.size());
    rows_.push_back(std::move(row));
}

bool Columns::IsRight(std::size_t column) const {
    return std::find(right_.begin(), right_.end(), column) != right_.end();
}

std::string Columns::Line(const std::vector<std::string>& row,
                          const std::vector<std::size_t>& widths) const {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::string blanks(widths[i] - DisplayWidth(row[i]), ' ');
        if (i > 0) line += "  ";
        line += IsRight(i) ? blanks + row[i] : row[i] + blanks;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

void Columns::Print(Writer& out) const {
    std::vector<std::size_t> widths;
    for (const std::string& heading : headings_) widths.push_back(DisplayWidth(heading));
    for (const std::vector<std::string>& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], DisplayWidth(row[i]));
        }
    }
    out << out.Paint(Style::kBold, Line(headings_, widths)) << "\n";
    for (const std::vector<std::string>& row : rows_) out << Line(row, widths) << "\n";
}

}  // namespace tarnexctl
