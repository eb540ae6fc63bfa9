// The texts of a settings file: button order, recent files and the paths of menus.
//
// Input: button order, zero byte, then up to nine recent files, each with a zero byte behind it.
#include "app/recent_files.h"
#include "base/format.h"
#include "base/text.h"
#include "buttonbar/button_order.h"
#include "fuzz_input.h"

#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

// Whether the slots all hold the buttons that their digits say.
bool HoldsWhatItReads(const ButtonBarState& bar, const std::string& text)
{
    for (int slot = 0; 2 * static_cast<std::size_t>(slot) + 1 < text.size() && slot < bar.ButtonCount; ++slot) {
        if (atoi(text.substr(2 * static_cast<std::size_t>(slot), 2).c_str()) != bar.ButtonOrder[slot]) {
            return false;
        }
    }
    return true;
}

void CheckWrittenButtons(const ButtonBarState& bar, bool isExact)
{
    char text[ButtonTextSize];
    FormatButtonOrder(bar, text);
    Require(strlen(text) == 2 * static_cast<std::size_t>(bar.ButtonCount), "a button is written with two digits");
    ButtonBarState read;
    ParseButtonOrder(text, read);
    Require(read.ButtonCount == bar.ButtonCount, "as many buttons are read back");
    for (int i = 0; i < ButtonTotal; ++i) {
        Require(read.ButtonOrder[i] == bar.ButtonOrder[i], "a slot is read back");
        Require(!isExact || read.Position[i] == bar.Position[i], "a position is read back");
    }
}

void CheckButtons(const std::string& text)
{
    ButtonBarState bar;
    ParseButtonOrder(text.c_str(), bar);
    Require(bar.ButtonCount >= 1 && bar.ButtonCount <= ButtonTotal, "a bar holds 1 to 24 buttons");
    for (int i = 0; i < ButtonTotal; ++i) {
        Require(bar.ButtonOrder[i] >= 0 && bar.ButtonOrder[i] < ButtonTotal, "a slot holds a button");
        const int slot = bar.Position[i];
        Require(slot <= bar.ButtonCount, "a button stands on the bar");
        Require(slot == 0 || bar.ButtonOrder[slot - 1] == i, "a button stands where it says");
    }
    CheckWrittenButtons(bar, HoldsWhatItReads(bar, text));
}

void CheckShortened(const std::string& path, std::size_t limit)
{
    // Exactly as large as the path: shortening needs no room of its own.
    std::vector<char> text(path.c_str(), path.c_str() + path.size() + 1);
    ShortenPath(text.data(), text.size(), limit, '\\');
    const std::size_t length = strlen(text.data());
    Require(length <= path.size(), "a path does not grow");
    Require(path.size() > limit || path == text.data(), "a short path stays");
}

void CheckRecentFiles(FuzzInput& input)
{
    RecentFiles recent;
    for (auto& path : recent.Paths) {
        CopyText(path, input.Text().c_str());
    }
    CompactRecentFiles(recent);
    const std::string added = input.Text();
    if (!added.empty()) {
        AddRecentPath(recent, added.c_str());
        Require(!AddRecentPath(recent, recent.Paths[recent.Count - 1]), "a path in the list is not added again");
    }
    Require(recent.Count >= 0 && recent.Count <= MaxRecentFiles, "up to nine files");
    for (int i = 0; i < recent.Count; ++i) {
        Require(recent.Paths[i][0] != '\0', "counted entries are not empty");
        char text[MaxPathSize + 8];
        FormatRecentText(recent, i, text, sizeof text);
        Require(text[0] == '&' && text[1] == '1' + i && text[2] == ' ', "a menu text is numbered");
        CheckShortened(recent.Paths[i], input.Byte());
    }
}

void CheckGrouped(std::int32_t number)
{
    char text[GroupedSize];
    FormatGrouped(number, text);
    std::string digits;
    for (const char* c = text; *c != '\0'; ++c) {
        if (*c != ',') {
            digits += *c;
        }
    }
    Require(digits == std::to_string(number), "commas leave the number as it is");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    CheckButtons(input.Text());
    CheckRecentFiles(input);
    CheckGrouped(input.Number32());
    return 0;
}
