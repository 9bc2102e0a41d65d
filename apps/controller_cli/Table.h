#pragma once

#include "controller_cli/Colour.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace controller_cli {

/// Where a text that is too long is cut: of a path the end tells more.
enum class CutAt { End, Beginning };

struct Cell {
    std::wstring text;
    Colour colour = Colour::None;
    CutAt cutAt = CutAt::End;
};

enum class ColumnKind {
    /// Always as wide as its widest cell.
    Whole,
    /// As `Whole`, with its cells to the right.
    Number,
    /// Gives way where the table is too wide.
    Flexible
};

struct Column {
    std::wstring heading;
    ColumnKind kind = ColumnKind::Whole;
};

struct TableStyle {
    /// No line is longer; nothing: as long as it takes.
    std::optional<std::size_t> width;
    bool hasColours = false;
};

/// The lines of a table without line ends: the headings, then one line a row. Each row has a cell a column; control
/// characters in cells are made harmless.
std::vector<std::wstring> TableLines(const std::vector<Column>& columns, std::vector<std::vector<Cell>> rows,
                                     const TableStyle& style);

} // namespace controller_cli
