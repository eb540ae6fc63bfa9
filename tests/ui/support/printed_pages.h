// What the printer was sent, as Ghostscript makes it: the text of each page with its place, and pictures.
//
// Places are in the printer's device units, 600 to the inch, from the upper left corner of what it can print on, as the
// program reckons.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

constexpr int PrinterDpi = 600;
constexpr int PrintableWidth = 4800; // of the test printer's default paper
constexpr int PrintableHeight = 6000;

struct PrintedLine {
    // Of the same font and baseline, as it is read from left to right; a glyph that is no character's is a zero byte.
    std::string Text;
    int Left;
    int Right;
    int Baseline;
    std::string Font; // such as "LiberationMono-Bold"
    int Size;         // of the font's em
};

struct PrintedPage {
    std::vector<PrintedLine> Lines; // from the top, on one baseline from the left
};

// Where jobs go to: a file of this name beside the tests, which is removed first.
std::string PrintedPath(const std::string& name);

// Waits until the job is in the file; false, and the test has failed, when it does not come.
bool WaitForPrinted(const std::string& path);

// The pages in the order in which they come out. The test has failed when the file cannot be read as pages.
std::vector<PrintedPage> ReadPrintedPages(const std::string& path);

// The text of a page, line by line.
std::vector<std::string> TextsOf(const PrintedPage& page);

// A page in shades of grey, with pixels of some device units each.
struct PrintedPicture {
    int Width = 0;
    int Height = 0;
    int UnitsPerPixel = 1;
    std::vector<std::uint8_t> Values; // rows from the top, 255 is white

    // The pixel at a place in device units, black when it is 0.
    std::uint8_t At(int x, int y) const;
};

// A horizontal line on a picture, in device units; Right and Bottom are the first places without it.
struct PrintedRule {
    int Left;
    int Top;
    int Right;
    int Bottom;
};

// The lines longer than any letter is wide, from the top.
std::vector<PrintedRule> RulesOf(const PrintedPicture& picture);

PrintedPicture RenderPage(const std::string& path, int page, int unitsPerPixel = 4);
