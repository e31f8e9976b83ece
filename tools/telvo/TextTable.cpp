#include "TextTable.h"

#include <algorithm>
#include <cstddef>

namespace telvo
{

namespace
{

void appendPrintable(std::string& line, const std::string& cell)
{
    for (const char character : cell) {
        const bool isControl = (character >= 0 && character < ' ') || character == '\x7F';
        line += isControl ? '?' : character;
    }
}

} // namespace

std::string formatTable(const std::vector<std::vector<std::string>>& rows)
{
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            appendPrintable(line, row[i]);
            line.append(widths[i] - row[i].size() + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

} // namespace telvo
