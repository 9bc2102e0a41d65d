#include "front_end/output/Table.h"

#include <gtest/gtest.h>

namespace {

using front_end::Cell;
using front_end::Colour;
using front_end::ColumnKind;
using front_end::CutAt;
using front_end::TableLines;

using Lines = std::vector<std::wstring>;
using Rows = std::vector<std::vector<Cell>>;

const std::vector<front_end::Column> columns = {
    {L"No", ColumnKind::Number}, {L"State", ColumnKind::Whole}, {L"Where", ColumnKind::Flexible}};

TEST(TableTest, ColumnsAreAsWideAsTheirWidestCell) {
    EXPECT_EQ(TableLines(columns, Rows{{{L"7"}, {L"Running"}, {L"/a"}}, {{L"1234"}, {L"Q"}, {L""}}}, {}),
              (Lines{L"  No  State    Where", L"   7  Running  /a", L"1234  Q"}));
}

TEST(TableTest, NoRowsLeaveTheHeadings) {
    EXPECT_EQ(TableLines(columns, {}, {}), Lines{L"No  State  Where"});
}

TEST(TableTest, AFlexibleColumnGivesWay) {
    EXPECT_EQ(TableLines(columns, Rows{{{L"7"}, {L"Running"}, {L"a long explanation"}}}, {23, false}),
              (Lines{L"No  State    Where", L" 7  Running  a long ex\x2026"}));
}

TEST(TableTest, APathKeepsItsEnd) {
    EXPECT_EQ(TableLines(columns,
                         Rows{{{L"7"}, {L"Running"}, {L"/home/ann/reports/part", Colour::None, CutAt::Beginning}},
                              {{L"8"}, {L"Running"}, {L"/home/ann/reports/gear", Colour::None, CutAt::Beginning}}},
                         {23, false}),
              (Lines{L"No  State    Where", L" 7  Running  \x2026orts/part", L" 8  Running  \x2026orts/gear"}));
}

TEST(TableTest, TheWidestFlexibleColumnGivesWayFirst) {
    const std::vector<front_end::Column> flexible = {{L"A", ColumnKind::Flexible}, {L"B", ColumnKind::Flexible}};
    EXPECT_EQ(TableLines(flexible, Rows{{{L"1234567"}, {L"1234567890"}}}, {16, false}).at(1), L"1234567  123456\x2026");
    EXPECT_EQ(TableLines(flexible, Rows{{{L"1234567"}, {L"1234567890"}}}, {14, false}).at(1),
              L"12345\x2026  12345\x2026");
}

TEST(TableTest, WideCharactersTakeTwoColumns) {
    EXPECT_EQ(TableLines(columns, Rows{{{L"7"}, {L"\x4e16\x754c"}, {L"/a"}}, {{L"8"}, {L"ab"}, {L"/b"}}}, {}),
              (Lines{L"No  State  Where", L" 7  \x4e16\x754c   /a", L" 8  ab     /b"}));
}

TEST(TableTest, WhatFindsNoRoomIsLeftOut) {
    EXPECT_EQ(TableLines(columns, Rows{{{L"7"}, {L"Running"}, {L"/a"}}}, {9, false}),
              (Lines{L"No  State", L" 7  Runn\x2026"}));
}

TEST(TableTest, ColoursTakeNoRoom) {
    EXPECT_EQ(TableLines(columns, Rows{{{L"7"}, {L"Failed", Colour::Red}, {L"/a"}}}, {80, true}).at(1),
              L" 7  \x1b[31mFailed\x1b[0m  /a");
}

TEST(TableTest, ACellIsOneLineThatSteersNothing) {
    EXPECT_EQ(TableLines(columns, Rows{{{L"7"}, {L"a\nb"}, {L"\x1b[2J"}}}, {}).at(1), L" 7  a b     [2J");
}

} // namespace
