#pragma once

#include "front_end/terminal/Colour.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace front_end {

/// Where a long text is truncated: the end of a path is more informative.
enum class CutAt { End, Beginning };

struct Cell {
    std::wstring text;
    Colour colour = Colour::None;
    CutAt cutAt = CutAt::End;
    /// The native path that the text links to; empty: none.
    std::wstring linkTo = {};
};

enum class ColumnKind {
    /// Always as wide as its widest cell.
    Whole,
    /// Same as `Whole`, right-aligned.
    Number,
    /// Shrinks if the table is too wide.
    Flexible
};

struct Column {
    std::wstring heading;
    ColumnKind kind = ColumnKind::Whole;
};

struct TableStyle {
    /// Maximum length of a line; nothing: unlimited.
    std::optional<std::size_t> width;
    bool hasColours = false;
    bool hasLinks = false;
};

/// The lines of a table without line ends: the headings, then one line per row. Each row has one cell per column;
/// control characters in cells are replaced.
std::vector<std::wstring> TableLines(const std::vector<Column>& columns, std::vector<std::vector<Cell>> rows,
                                     const TableStyle& style);

} // namespace front_end
