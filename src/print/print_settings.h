// What print jobs are made with, as kept in the settings file.
#pragma once

#include <cstdint>

struct PrintFont {
    char Name[32] = "";
    std::int32_t Use = 0;  // print with this font instead of the screen font
    std::int32_t Size = 0; // logical height, held negative
    std::int32_t Weight = 0;
    std::int32_t Italic = 0;
};

struct PrintSettings {
    char Header[60] = ""; // empty: the strings and the four options are not loaded yet
    char Footer[60] = "";
    char LeftMargin[6] = ""; // inches or centimetres
    char TopMargin[6] = "";
    char BottomMargin[6] = "";
    char RightMargin[6] = "";
    PrintFont HeadFont; // of headers and footers
    PrintFont BodyFont;
    std::int32_t PrintHF = 0; // print headers and footers
    std::int32_t PrintDefFont = 0;
    std::int32_t ProcFF = 0;
    std::int32_t WrapOutput = 0;
};

inline PrintSettings PrintOptions;
