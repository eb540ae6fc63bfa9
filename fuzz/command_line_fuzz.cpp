// A command line, and the window rectangle it leads to.
//
// Input: command line, zero byte, saved rectangle.
#include "app/command_line.h"
#include "app/window_placement.h"
#include "fuzz_input.h"

#include <cstring>

namespace {

constexpr ScreenMeasures Screen = {1024, 768, 32, 19};

void CheckCommandLine(const CommandLine& line, const std::string& text)
{
    Require(strnlen(line.FileName, sizeof line.FileName) < sizeof line.FileName, "the file name ends");
    Require(strnlen(line.Rectangle, sizeof line.Rectangle) < sizeof line.Rectangle, "the rectangle ends");
    Require(strnlen(line.SectionName, sizeof line.SectionName) < sizeof line.SectionName, "the section name ends");
    Require(line.Error == (line.SectionName[0] == '\0'), "an error, and nothing else, leaves no section");
    if (line.Error) {
        Require(line.FileName[0] == '\0' && line.Rectangle[0] == '\0', "an error drops file and rectangle");
    }
    Require(strchr(line.FileName, ' ') == nullptr && line.FileName[0] != '-', "a file name is a token without a dash");
    Require(text.find(line.FileName) != std::string::npos, "the file name is part of the command line");
}

void CheckPlacement(const WindowPlacement& placement)
{
    const WindowRectangle& r = placement.Rectangle;
    Require(r.Left >= 0 && r.Left <= Screen.Width && r.Width >= 0 && r.Width <= Screen.Width, "within the width");
    Require(r.Top >= 0 && r.Top <= Screen.Height && r.Height >= 0 && r.Height <= Screen.Height, "within the height");
    Require(r.Width + r.Height > 0, "the window has an extent");
    Require(!(placement.Maximized && placement.Minimized), "not both");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const std::string text = input.Text();
    const std::string saved = input.Text();
    const CommandLine line = ParseCommandLine(text.c_str());
    CheckCommandLine(line, text);
    CheckPlacement(PlaceWindow(saved.c_str(), line.SectionName[0] != '\0', line.Rectangle, Screen));
    CheckPlacement(PlaceWindow(saved.c_str(), false, text.c_str(), Screen));
    return 0;
}
