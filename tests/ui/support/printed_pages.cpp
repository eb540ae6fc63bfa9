#include "support/printed_pages.h"

#include "support/test_files.h"
#include "support/wait.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

// The test printer's borders, in device units.
constexpr int BorderLeft = 150;
constexpr int BorderTop = 300;

constexpr DWORD RenderLimit = 60000; // milliseconds

// As the system below Windows names it.
std::string HostPath(const std::string& path)
{
    std::string name = path.substr(2); // without the drive, which is the root directory
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

// Runs Ghostscript, a program of the system below, which gives no process to wait for; what it has made is complete
// when the file appears that the shell makes behind it.
bool RunGhostscript(const std::string& options, const std::string& path)
{
    const std::string mark = path + ".done";
    DeleteFileA(mark.c_str());
    std::string command = "sh -c \"/usr/bin/gs -q -dNOPAUSE -dBATCH -dSAFER " + options + " '" + HostPath(path) +
                          "' > '" + HostPath(path) + ".log' 2>&1; echo $? > '" + HostPath(mark) + ".new'; mv '" +
                          HostPath(mark) + ".new' '" + HostPath(mark) + "'\"";
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA("Z:\\bin\\sh", command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        return false;
    }
    if (!WaitUntil([&] { return FileExists(mark); }, RenderLimit)) {
        return false;
    }
    const bool good = ReadWholeFile(mark) == "0\n";
    EXPECT_TRUE(good) << ReadWholeFile(path + ".log");
    DeleteFileA(mark.c_str());
    DeleteFileA((path + ".log").c_str());
    return good;
}

// Whether the whole job is in the file. It is asked again and again, so that all of a long file would be too much.
bool IsComplete(const std::string& path)
{
    constexpr LONG Last = 64; // bytes
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    char text[Last] = "";
    DWORD read = 0;
    SetFilePointer(file, -Last, nullptr, FILE_END); // a shorter file is read from its beginning
    ReadFile(file, text, sizeof text, &read, nullptr);
    CloseHandle(file);
    return std::string(text, read).find("%%EOF") != std::string::npos;
}

struct GlyphFont {
    std::string Name;
    int Size = 0; // device units
};

struct Glyph {
    int Left;
    int Right;
    int Baseline;
    std::string Text;
};

// Characters that XML has names for, and others by their number; in the system's ANSI code page.
std::string Unescaped(const std::string& text)
{
    constexpr std::pair<const char*, const char*> Entities[] = {
        {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}};
    for (const auto& [name, character] : Entities) {
        if (text == name) {
            return character;
        }
    }
    unsigned number = 0;
    if (sscanf(text.c_str(), "&#x%x;", &number) != 1) {
        return text;
    }
    const wchar_t wide = static_cast<wchar_t>(number);
    char character = '\0';
    WideCharToMultiByte(CP_ACP, 0, &wide, 1, &character, 1, nullptr, nullptr);
    return std::string(1, character);
}

// A line such as <span bbox="250 413 260 413" font="LiberationSans" size="11.2800">, the size in points.
bool ReadFont(const std::string& line, GlyphFont& font)
{
    constexpr double PointsPerInch = 72;
    char name[100] = "";
    double points = 0;
    if (sscanf(line.c_str(), "<span bbox=\"%*[^\"]\" font=\"%99[^\"]\" size=\"%lf\"", name, &points) != 2) {
        return false;
    }
    font = {name, static_cast<int>(std::lround(points * PrinterDpi / PointsPerInch))};
    return true;
}

// A line such as <char bbox="250 413 260 413" c="H"/>.
bool ReadGlyph(const std::string& line, Glyph& glyph)
{
    int bottom = 0;
    if (sscanf(line.c_str(), "<char bbox=\"%d %d %d %d\"", &glyph.Left, &glyph.Baseline, &glyph.Right, &bottom) != 4) {
        return false;
    }
    const std::size_t begin = line.find(" c=\"") + 4;
    glyph.Text = Unescaped(line.substr(begin, line.rfind("\"/>") - begin));
    return true;
}

// Glyphs of one string come one by one; a gap that no letter leaves begins another line.
void AddGlyph(PrintedPage& page, const Glyph& glyph, const GlyphFont& font)
{
    const int left = glyph.Left - BorderLeft;
    const int right = glyph.Right - BorderLeft;
    const int baseline = glyph.Baseline - BorderTop;
    constexpr int Gap = 12;
    if (!page.Lines.empty() && page.Lines.back().Baseline == baseline && page.Lines.back().Font == font.Name &&
        page.Lines.back().Size == font.Size && std::abs(page.Lines.back().Right - left) <= Gap) {
        page.Lines.back().Text += glyph.Text;
        page.Lines.back().Right = right;
    } else {
        page.Lines.push_back({glyph.Text, left, right, baseline, font.Name, font.Size});
    }
}

struct PixelRun {
    int Begin = 0;
    int End = 0;
};

PixelRun LongestDarkRun(const PrintedPicture& picture, int row)
{
    constexpr std::uint8_t Dark = 128;
    const std::size_t start = static_cast<std::size_t>(row) * static_cast<std::size_t>(picture.Width);
    PixelRun longest;
    int begin = 0;
    for (int x = 0; x < picture.Width; ++x) {
        if (picture.Values[start + static_cast<std::size_t>(x)] >= Dark) {
            begin = x + 1;
        } else if (x + 1 - begin > longest.End - longest.Begin) {
            longest = {begin, x + 1};
        }
    }
    return longest;
}

void SortLines(PrintedPage& page)
{
    std::stable_sort(page.Lines.begin(), page.Lines.end(), [](const PrintedLine& a, const PrintedLine& b) {
        return a.Baseline != b.Baseline ? a.Baseline < b.Baseline : a.Left < b.Left;
    });
}

} // namespace

std::string PrintedPath(const std::string& name)
{
    char directory[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof directory, directory);
    const std::string printed = directory + std::string("\\printed");
    CreateDirectoryA(printed.c_str(), nullptr);
    const std::string path = printed + "\\" + name + ".ps";
    DeleteFileA(path.c_str());
    return path;
}

bool WaitForPrinted(const std::string& path)
{
    const bool printed = WaitUntil([&] { return IsComplete(path); });
    EXPECT_TRUE(printed) << "nothing is printed to " << path;
    return printed;
}

std::vector<PrintedPage> ReadPrintedPages(const std::string& path)
{
    const std::string text = path + ".xml";
    std::vector<PrintedPage> pages;
    if (!RunGhostscript("-r600 -sDEVICE=txtwrite -dTextFormat=0 -sOutputFile='" + HostPath(text) + "'", path)) {
        ADD_FAILURE() << "no pages in " << path;
        return pages;
    }
    const std::string content = ReadWholeFile(text);
    DeleteFileA(text.c_str());
    GlyphFont font;
    std::size_t begin = 0;
    while (begin < content.size()) {
        const std::size_t end = std::min(content.find('\n', begin), content.size());
        const std::string line = content.substr(begin, end - begin);
        Glyph glyph;
        if (line == "<page>") {
            pages.emplace_back();
        } else if (!pages.empty() && !ReadFont(line, font) && ReadGlyph(line, glyph)) {
            AddGlyph(pages.back(), glyph, font);
        }
        begin = end + 1;
    }
    for (PrintedPage& page : pages) {
        SortLines(page);
    }
    return pages;
}

std::vector<std::string> TextsOf(const PrintedPage& page)
{
    std::vector<std::string> texts;
    for (const PrintedLine& line : page.Lines) {
        texts.push_back(line.Text);
    }
    return texts;
}

std::uint8_t PrintedPicture::At(int x, int y) const
{
    const int column = (x + BorderLeft) / UnitsPerPixel;
    const int row = (y + BorderTop) / UnitsPerPixel;
    return Values[static_cast<std::size_t>(row * Width + column)];
}

std::vector<PrintedRule> RulesOf(const PrintedPicture& picture)
{
    constexpr int LongerThanLetters = 1000;
    const int scale = picture.UnitsPerPixel;
    std::vector<PrintedRule> rules;
    for (int row = 0; row < picture.Height; ++row) {
        const PixelRun run = LongestDarkRun(picture, row);
        if ((run.End - run.Begin) * scale < LongerThanLetters) {
            continue;
        }
        const PrintedRule rule = {run.Begin * scale - BorderLeft, row * scale - BorderTop, run.End * scale - BorderLeft,
                                  (row + 1) * scale - BorderTop};
        if (!rules.empty() && rules.back().Bottom == rule.Top) {
            rules.back().Bottom = rule.Bottom;
        } else {
            rules.push_back(rule);
        }
    }
    return rules;
}

PrintedPicture RenderPage(const std::string& path, int page, int unitsPerPixel)
{
    PrintedPicture picture;
    picture.UnitsPerPixel = unitsPerPixel;
    const std::string file = path + ".pgm";
    const std::string number = std::to_string(page);
    const std::string options = "-r" + std::to_string(PrinterDpi / unitsPerPixel) + " -dFirstPage=" + number +
                                " -dLastPage=" + number + " -sDEVICE=pgmraw -sOutputFile='" + HostPath(file) + "'";
    if (!RunGhostscript(options, path)) {
        return picture;
    }
    const std::string content = ReadWholeFile(file);
    DeleteFileA(file.c_str());
    int most = 0;
    int headerLength = 0;
    // A comment stands on the second line.
    const bool read =
        sscanf(content.c_str(), "P5 #%*[^\n] %d %d %d%n", &picture.Width, &picture.Height, &most, &headerLength) == 3;
    const std::size_t size = static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height);
    EXPECT_TRUE(read && most == 255 && content.size() == headerLength + 1 + size) << content.substr(0, 60);
    if (read && content.size() == headerLength + 1 + size) {
        picture.Values.assign(content.end() - static_cast<std::ptrdiff_t>(size), content.end());
    }
    return picture;
}
