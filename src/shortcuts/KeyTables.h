#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace velmorand {

/// One row of a key table: a virtual key code and the text that stands for it.
struct KeyTableRow {
    std::uint32_t keyCode;
    std::string_view text;
};

/// Keys that have a name of their own, whatever the layout.
inline constexpr std::array<KeyTableRow, 9> keyNames{{
    {36, "Return"},
    {48, "Tab"},
    {49, "Space"},
    {51, "Backspace"},
    {53, "Escape"},
    {123, "Left Arrow"},
    {124, "Right Arrow"},
    {125, "Down Arrow"},
    {126, "Up Arrow"},
}};

/// What is drawn on the key cap of a named key.
inline constexpr std::array<KeyTableRow, 9> keyGlyphs{{
    {36, "↩"},
    {48, "⇥"},
    {49, "␣"},
    {51, "⌫"},
    {53, "⎋"},
    {123, "←"},
    {124, "→"},
    {125, "↓"},
    {126, "↑"},
}};

/// The menu key equivalents of the named keys. The arrows have the platform's function-key characters
/// (`NSUpArrowFunctionKey` and its neighbours, U+F700 to U+F703).
inline constexpr std::array<KeyTableRow, 9> namedKeyEquivalents{{
    {36, "\r"},
    {48, "\t"},
    {49, " "},
    {51, "\b"},
    {53, "\x1b"},
    {123, "\uF702"},
    {124, "\uF703"},
    {125, "\uF701"},
    {126, "\uF700"},
}};

/// The characters of the US layout by key code, for when the characters of the user's layout are not known.
inline constexpr std::array<KeyTableRow, 47> layoutIndependentLetters{{
    {0, "A"},   {1, "S"},  {2, "D"},  {3, "F"},  {4, "H"},  {5, "G"},  {6, "Z"},  {7, "X"},  {8, "C"},  {9, "V"},
    {11, "B"},  {12, "Q"}, {13, "W"}, {14, "E"}, {15, "R"}, {16, "Y"}, {17, "T"}, {18, "1"}, {19, "2"}, {20, "3"},
    {21, "4"},  {22, "6"}, {23, "5"}, {24, "="}, {25, "9"}, {26, "7"}, {27, "-"}, {28, "8"}, {29, "0"}, {30, "]"},
    {31, "O"},  {32, "U"}, {33, "["}, {34, "I"}, {35, "P"}, {37, "L"}, {38, "J"}, {39, "'"}, {40, "K"}, {41, ";"},
    {42, "\\"}, {43, ","}, {44, "/"}, {45, "N"}, {46, "M"}, {47, "."}, {50, "`"},
}};

}  // namespace velmorand
