#include "front_end/output/Table.h"

#include <algorithm>
#include <numeric>

#include "front_end/output/DisplayText.h"
#include "front_end/terminal/Links.h"

namespace front_end {
namespace {

using Widths = std::vector<std::size_t>;

constexpr std::size_t gap = 2;
/// Minimum width of a flexible column.
constexpr std::size_t narrowest = 6;

Widths NaturalWidths(const std::vector<Column>& columns, const std::vector<std::vector<Cell>>& rows) {
    Widths widths;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        std::size_t width = DisplayWidth(columns[column].heading);
        for (const auto& row : rows) {
            width = std::max(width, DisplayWidth(row[column].text));
        }
        widths.push_back(width);
    }
    return widths;
}

std::size_t LineWidth(const Widths& widths) {
    return std::accumulate(widths.begin(), widths.end(), gap * (widths.size() - 1));
}

/// The widest flexible column above the minimum width.
std::size_t* WidestFlexible(const std::vector<Column>& columns, Widths& widths) {
    std::size_t* widest = nullptr;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const bool canShrink = columns[column].kind == ColumnKind::Flexible && widths[column] > narrowest;
        if (canShrink && (widest == nullptr || widths[column] >= *widest)) {
            widest = &widths[column];
        }
    }
    return widest;
}

void Narrow(const std::vector<Column>& columns, std::size_t limit, Widths& widths) {
    for (std::size_t excess = LineWidth(widths) - std::min(limit, LineWidth(widths)); excess > 0; --excess) {
        std::size_t* const widest = WidestFlexible(columns, widths);
        if (widest == nullptr) {
            return;
        }
        --*widest;
    }
}

std::wstring CellText(const Cell& cell, ColumnKind kind, std::size_t width, const TableStyle& style) {
    const std::wstring text = cell.cutAt == CutAt::End ? Cut(cell.text, width) : CutBeginning(cell.text, width);
    const std::wstring blanks(width - DisplayWidth(text), L' ');
    const std::wstring coloured = style.hasColours ? Coloured(text, cell.colour) : text;
    const bool isLink = style.hasLinks && !cell.linkTo.empty() && !text.empty();
    const std::wstring shown = isLink ? LinkTo(cell.linkTo, coloured) : coloured;
    return kind == ColumnKind::Number ? blanks + shown : shown + blanks;
}

/// One line; cells that do not fit are omitted.
std::wstring Line(const std::vector<Column>& columns, const std::vector<Cell>& row, const Widths& widths,
                  const TableStyle& style) {
    std::wstring line;
    std::size_t used = 0;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const std::size_t before = column == 0 ? 0 : gap;
        if (style.width && used + before >= *style.width) {
            break;
        }
        const std::size_t room = style.width ? *style.width - used - before : widths[column];
        const std::size_t width = std::min(room, widths[column]);
        line += std::wstring(before, L' ') + CellText(row[column], columns[column].kind, width, style);
        used += before + width;
    }
    line.erase(line.find_last_not_of(L' ') + 1);
    return line;
}

std::vector<Cell> Headings(const std::vector<Column>& columns) {
    std::vector<Cell> headings;
    headings.reserve(columns.size());
    for (const Column& column : columns) {
        headings.push_back({column.heading, Colour::Bold});
    }
    return headings;
}

} // namespace

std::vector<std::wstring> TableLines(const std::vector<Column>& columns, std::vector<std::vector<Cell>> rows,
                                     const TableStyle& style) {
    for (auto& row : rows) {
        for (Cell& cell : row) {
            cell.text = OneLine(cell.text);
        }
    }
    Widths widths = NaturalWidths(columns, rows);
    if (style.width) {
        Narrow(columns, *style.width, widths);
    }
    std::vector<std::wstring> lines = {Line(columns, Headings(columns), widths, style)};
    for (const auto& row : rows) {
        lines.push_back(Line(columns, row, widths, style));
    }
    return lines;
}

} // namespace front_end
