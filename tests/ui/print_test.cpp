// Printing with a real printer driver: what comes out of it is read back page by page.
#include "support/dialogs.h"
#include "support/marks.h"
#include "support/printed_pages.h"
#include "support/test_printer.h"
#include "support/ui_test.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>
#include <winspool.h>

namespace {

using Pages = std::vector<PrintedPage>;
using Texts = std::vector<std::string>;

constexpr char PrintTitle[] = "Print File";

// Where the driver's rounding can bring a text or a line.
constexpr int Near = 2;

// A user's setting of dates, times and measures, for as long as the object lives.
class IntlSetting {
public:
    IntlSetting(const char* key, const char* value) : Key(key)
    {
        char before[100] = "";
        GetProfileStringA(Section, key, None, before, sizeof before);
        Before = before;
        EXPECT_TRUE(WriteProfileStringA(Section, key, value)) << "error " << GetLastError();
    }
    ~IntlSetting() { WriteProfileStringA(Section, Key, Before == None ? nullptr : Before.c_str()); }
    IntlSetting(const IntlSetting&) = delete;
    IntlSetting& operator=(const IntlSetting&) = delete;

private:
    static constexpr char Section[] = "intl";
    static constexpr char None[] = "(none)";

    const char* Key;
    std::string Before;
};

// A font as the default printer has it. The size is in pixels of the screen.
class PrinterFont {
public:
    // The printer's own.
    PrinterFont() : Printer(DefaultPrinter()) {}
    explicit PrinterFont(const char* face, int size, int weight = FW_NORMAL, bool italic = false) : PrinterFont()
    {
        const HDC screen = GetDC(nullptr);
        const int height = -MulDiv(size, PrinterDpi, GetDeviceCaps(screen, LOGPIXELSY));
        ReleaseDC(nullptr, screen);
        Font = CreateFontA(height, 0, 0, 0, weight, italic ? 1 : 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, face);
        SelectObject(Printer, Font);
    }
    ~PrinterFont()
    {
        DeleteDC(Printer);
        if (Font != nullptr) {
            DeleteObject(Font);
        }
    }
    PrinterFont(const PrinterFont&) = delete;
    PrinterFont& operator=(const PrinterFont&) = delete;

    int LineHeight() const { return Metrics().tmHeight + Metrics().tmExternalLeading; }
    int Ascent() const { return Metrics().tmAscent; }
    int Width(const std::string& text) const
    {
        SIZE size = {};
        GetTextExtentPoint32A(Printer, text.c_str(), static_cast<int>(text.size()), &size);
        return size.cx;
    }

private:
    static HDC DefaultPrinter()
    {
        char name[100] = "";
        DWORD size = sizeof name;
        EXPECT_TRUE(GetDefaultPrinterA(name, &size));
        const HDC printer = CreateDCA(nullptr, name, nullptr, nullptr);
        EXPECT_NE(printer, nullptr);
        return printer;
    }
    TEXTMETRICA Metrics() const
    {
        TEXTMETRICA metrics = {};
        GetTextMetricsA(Printer, &metrics);
        return metrics;
    }

    HDC Printer;
    HFONT Font = nullptr;
};

// Margins that are different from each other, in the units of KeysOf and in those of the printer.
constexpr char Margins[] = "LeftMargin=1\nRightMargin=0.5\nTopMargin=0.3\nBottomMargin=0.75\n";
constexpr int LeftMargin = 600;
constexpr int RightMargin = 300;
constexpr int TopMargin = 180;
constexpr int BottomMargin = 450;

constexpr char Face[] = "Liberation Mono";
constexpr int Size = 15;
constexpr int LargeSize = 80; // few lines make many pages

// These keys, and what else every test has in common unless they say otherwise.
std::string KeysOf(const std::string& keys, int size = Size)
{
    return keys + "WindowSize=40 30 700 500\nFontName=" + Face + "\nFontSize=" + std::to_string(size) + "\n" + Margins;
}

// Lines of the body on a page with these parts.
int LinesPerPage(const PrinterFont& body, int parts, const PrinterFont* head = nullptr)
{
    const int part = body.LineHeight() + (head != nullptr ? head : &body)->LineHeight();
    return (PrintableHeight - parts * part - TopMargin - BottomMargin) / body.LineHeight();
}

// The lines first to last - 1 of a page.
PrintedPage Part(const PrintedPage& page, std::size_t first, std::size_t last)
{
    PrintedPage part;
    for (std::size_t i = first; i < std::min(last, page.Lines.size()); ++i) {
        part.Lines.push_back(page.Lines[i]);
    }
    return part;
}

// Rows of the body, the first of which stands at top; of an empty one nothing is to be seen.
void ExpectRows(const PrintedPage& page, const Texts& rows, const PrinterFont& font, int top, int left = LeftMargin)
{
    Texts seen = rows;
    std::erase(seen, "");
    ASSERT_EQ(TextsOf(page), seen);
    std::size_t line = 0;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (!rows[row].empty()) {
            EXPECT_NEAR(page.Lines[line].Left, left, Near) << rows[row];
            EXPECT_NEAR(page.Lines[line].Baseline, top + static_cast<int>(row) * font.LineHeight() + font.Ascent(),
                        Near)
                << rows[row];
            ++line;
        }
    }
}

Texts LineTexts(int first, int last)
{
    Texts texts;
    for (int number = first; number <= last; ++number) {
        texts.push_back("Line " + std::to_string(number));
    }
    return texts;
}

// Whether a line is drawn below all of the text.
bool IsUnderlined(const PrintedPicture& picture, const PrintedLine& line)
{
    constexpr int Lowest = 24;
    for (int y = line.Baseline + 1; y <= line.Baseline + Lowest; ++y) {
        bool all = true;
        for (int x = line.Left + Near; x < line.Right - Near; ++x) {
            all = all && picture.At(x, y) == 0;
        }
        if (all) {
            return true;
        }
    }
    return false;
}

// A number of two digits, as dates and times have them, with what stands in front of it.
std::string Two(const char* before, int number)
{
    return before + std::string(number < 10 ? "0" : "") + std::to_string(number);
}

std::string TwelveHourTime(const SYSTEMTIME& t)
{
    const int hour = t.wHour % 12 == 0 ? 12 : t.wHour % 12;
    return std::to_string(hour) + Two(":", t.wMinute) + Two(":", t.wSecond) + (t.wHour < 12 ? " vm" : " nm");
}

constexpr std::uint64_t TicksPerSecond = 10000000;

// The user's clock, in seconds.
std::uint64_t Seconds()
{
    SYSTEMTIME now = {};
    FILETIME ticks = {};
    GetLocalTime(&now);
    SystemTimeToFileTime(&now, &ticks);
    return (static_cast<std::uint64_t>(ticks.dwHighDateTime) << 32 | ticks.dwLowDateTime) / TicksPerSecond;
}

SYSTEMTIME TimeAt(std::uint64_t second)
{
    const std::uint64_t ticks = second * TicksPerSecond;
    const FILETIME parts = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME time = {};
    FileTimeToSystemTime(&parts, &time);
    return time;
}

// size bytes, all that there are from the first on.
std::string AnyBytes(int size)
{
    std::string bytes;
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(i);
    }
    return bytes;
}

// The rows first to last of the hex dump, from 0, as long as the paper has them.
Texts HexRows(const std::string& bytes, int first, int last)
{
    constexpr std::size_t Length = 76;
    constexpr char Digits[] = "0123456789ABCDEF";
    Texts rows;
    for (int row = first; row <= last; ++row) {
        std::string text(Length, ' ');
        const std::size_t offset = static_cast<std::size_t>(row) * 16;
        for (std::size_t i = 0; i < 8; ++i) {
            text[i] = Digits[offset >> (28 - 4 * i) & 15];
        }
        for (std::size_t i = 0; i < 16 && offset + i < bytes.size(); ++i) {
            const unsigned byte = static_cast<unsigned char>(bytes[offset + i]);
            text[10 + 3 * i] = Digits[byte >> 4];
            text[11 + 3 * i] = Digits[byte & 15];
            const bool isPlain = byte >= 0x1F && byte <= 0x80;
            const bool hasGlyph = byte != 0x1F && byte != 0x7F;
            text[60 + i] = !isPlain ? '.' : hasGlyph ? bytes[offset + i] : '\0';
        }
        text[33] = bytes.size() > offset + 7 ? '-' : ' ';
        rows.push_back(text);
    }
    return rows;
}

// Checks a box of the preferences.
void CheckPreference(const Program& program, int box)
{
    program.Post(WM_COMMAND, IDM_OPTIONS_PREFERENCES);
    const HWND dialog = WaitForDialog(program, "Preferences");
    ASSERT_NE(dialog, nullptr);
    program.Send(GetDlgItem(dialog, box), BM_SETCHECK, BST_CHECKED);
    PressControl(dialog, IDOK);
    EXPECT_TRUE(WaitUntilClosed(dialog));
}

struct DialogBox {
    int Control;
    bool Checked;
};

class PrintTest : public UiTest {
protected:
    void SetUp() override
    {
        UiTest::SetUp();
        Output = PrintedPath("job");
        Printer = std::make_unique<TestPrinter>(Output);
    }

    // Asks for a job and confirms the dialog, with its boxes and radio buttons set like this.
    Pages Print(const Program& program, const std::vector<DialogBox>& boxes = {})
    {
        program.Post(WM_COMMAND, IDM_FILE_PRINT);
        return Confirm(program, boxes);
    }

    // The same when the dialog is there already, or comes by itself.
    Pages Confirm(const Program& program, const std::vector<DialogBox>& boxes = {})
    {
        const HWND dialog = WaitForDialog(program, PrintTitle);
        if (dialog == nullptr) {
            return {};
        }
        DeleteFileA(Output.c_str());
        for (const DialogBox& box : boxes) {
            program.Send(GetDlgItem(dialog, box.Control), BM_SETCHECK, box.Checked ? BST_CHECKED : BST_UNCHECKED);
        }
        PressControl(dialog, IDOK);
        return WaitForPrinted(Output) ? ReadPrintedPages(Output) : Pages();
    }

    // A run of its own for one job.
    Pages PrintFile(const std::string& keys, const std::string& content, const std::string& name = "text.txt")
    {
        WriteSettings(keys);
        Program program(WriteScratch(name, content));
        return program.WaitForFrame() ? Print(program) : Pages();
    }

    // The job's name, as the driver was told it.
    std::string JobName() const
    {
        const std::string mark = "%%Title: ";
        const std::string content = ReadWholeFile(Output);
        const std::size_t begin = content.find(mark) + mark.size();
        return content.substr(begin, content.find_first_of("\r\n", begin) - begin);
    }

    std::string Output;
    std::unique_ptr<TestPrinter> Printer;
    const IntlSetting Inches{"iMeasure", "1"};
};

TEST_F(PrintTest, APageHoldsTheLinesThatFitBetweenTheMargins)
{
    const PrinterFont font(Face, Size);
    const int most = LinesPerPage(font, 0);
    const Pages one = PrintFile(KeysOf(""), NumberedLines(most));
    ASSERT_EQ(one.size(), 1u);
    ExpectRows(one[0], LineTexts(1, most), font, TopMargin);
    EXPECT_EQ(JobName(), "Kestovar - text.txt");

    const Pages two = PrintFile(KeysOf(""), NumberedLines(most + 1));
    ASSERT_EQ(two.size(), 2u);
    ExpectRows(two[0], LineTexts(1, most), font, TopMargin);
    ExpectRows(two[1], LineTexts(most + 1, most + 1), font, TopMargin);
}

TEST_F(PrintTest, EachOfTwoHundredPagesHasItsLinesAndItsNumber)
{
    const PrinterFont font; // which the driver is quick with
    constexpr int Top = 2880;
    constexpr int Bottom = 2940;
    const int most = (PrintableHeight - Top - Bottom - 4 * font.LineHeight()) / font.LineHeight();
    constexpr int Count = 200;
    const Pages pages =
        PrintFile(KeysOf("PrintHF=1\nHeader=Page &p\nFooter=/-&p-\nPrintDefFont=1\nTopMargin=4.8\nBottomMargin=4.9\n"),
                  NumberedLines(Count * most));
    ASSERT_EQ(pages.size(), static_cast<std::size_t>(Count));
    for (int page = 0; page < Count; ++page) {
        const std::string number = std::to_string(page + 1);
        Texts texts = LineTexts(page * most + 1, (page + 1) * most);
        texts.insert(texts.begin(), "Page " + number);
        texts.push_back("-" + number + "-");
        EXPECT_EQ(TextsOf(pages[static_cast<std::size_t>(page)]), texts);
    }
    const PrintedPage& last = pages.back();
    ExpectRows(Part(last, 1, last.Lines.size() - 1), LineTexts((Count - 1) * most + 1, Count * most), font,
               Top + 2 * font.LineHeight());
}

TEST_F(PrintTest, HeaderAndFooterHaveALeftACentreAndARightSection)
{
    const PrinterFont body(Face, LargeSize);
    const PrinterFont head(Face, 12);
    const int most = LinesPerPage(body, 2, &head);
    const Pages pages =
        PrintFile(KeysOf("PrintHF=1\nHeader=left/centre/right/more\nUseHeadFont=1\nHdFontSize=12\n", LargeSize),
                  NumberedLines(2 * most + 1));
    ASSERT_EQ(pages.size(), 3u);
    constexpr int Right = PrintableWidth - RightMargin;
    constexpr int Middle = (LeftMargin + Right) / 2;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const PrintedPage& page = pages[i];
        ASSERT_EQ(TextsOf(Part(page, 0, 3)), (Texts{"left", "centre", "rightmore"}));
        for (std::size_t section = 0; section < 3; ++section) {
            EXPECT_NEAR(page.Lines[section].Baseline, TopMargin + head.Ascent(), Near);
        }
        EXPECT_NEAR(page.Lines[0].Left, LeftMargin, Near);
        EXPECT_NEAR((page.Lines[1].Left + page.Lines[1].Right) / 2, Middle, Near);
        EXPECT_NEAR(page.Lines[2].Right, Right, Near);

        const int first = static_cast<int>(i) * most + 1;
        ExpectRows(Part(page, 3, page.Lines.size() - 1), LineTexts(first, i < 2 ? first + most - 1 : first), body,
                   TopMargin + head.LineHeight() + body.LineHeight());

        const PrintedLine& footer = page.Lines.back();
        EXPECT_EQ(footer.Text, "-" + std::to_string(i + 1) + "-");
        EXPECT_NEAR((footer.Left + footer.Right) / 2, Middle, Near);
        EXPECT_NEAR(footer.Baseline, PrintableHeight - BottomMargin - head.LineHeight() + head.Ascent(), Near);
    }
}

TEST_F(PrintTest, RulesSeparateHeaderAndFooterFromTheText)
{
    const PrinterFont font(Face, Size);
    constexpr int Right = PrintableWidth - RightMargin;
    const Pages pages = PrintFile(KeysOf("PrintHF=1\nFooter=&l&&&a/b\n"), "text");
    ASSERT_EQ(pages.size(), 1u);
    ASSERT_EQ(TextsOf(pages[0]), (Texts{"text.txt", "text", "&A", "b"}));
    const PrintedPicture picture = RenderPage(Output, 1, 2);
    const std::vector<PrintedRule> rules = RulesOf(picture);
    ASSERT_EQ(rules.size(), 2u);
    const int height = font.LineHeight();
    const int places[] = {TopMargin + height, PrintableHeight - BottomMargin - height - height / 4};
    for (std::size_t i = 0; i < rules.size(); ++i) {
        EXPECT_NEAR(rules[i].Left, LeftMargin, 2 * Near);
        EXPECT_NEAR(rules[i].Right, Right, 2 * Near);
        EXPECT_NEAR((rules[i].Top + rules[i].Bottom) / 2, places[i], Near);
        EXPECT_LE(rules[i].Bottom - rules[i].Top, 3 * picture.UnitsPerPixel);
    }
    EXPECT_FALSE(IsUnderlined(picture, pages[0].Lines[1]));
    PrintedLine marked = pages[0].Lines[2];
    EXPECT_FALSE(IsUnderlined(picture, marked));
    marked.Left += font.Width("&");
    EXPECT_TRUE(IsUnderlined(picture, marked)) << "the letter behind a single &";
}

TEST_F(PrintTest, OnlyHeadersAndFootersWithCodesTakeRoom)
{
    const PrinterFont font(Face, LargeSize);
    const int part = 2 * font.LineHeight();
    struct Case {
        const char* Header;
        const char* Footer;
        bool Printed;
        int Parts;
        bool Shifted;
    };
    // "/" is nothing but room.
    constexpr Case Cases[] = {{"", "", true, 0, false},
                              {"/", "", true, 1, true},
                              {"", "/", true, 1, false},
                              {"/", "/", true, 2, true},
                              {"head", "foot", false, 0, false}};
    const std::string path = WriteScratch("room.txt", NumberedLines(LinesPerPage(font, 0) + 1));
    for (const Case& room : Cases) {
        const std::string described = room.Header + std::string(" and ") + room.Footer;
        const int most = LinesPerPage(font, room.Parts);
        WriteSettings(KeysOf("Header=" + std::string(room.Header) + "\nFooter=" + room.Footer + "\n", LargeSize));
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        if (!room.Printed) {
            EXPECT_EQ(Print(program, {{IDC_PRINT_HEADERS, true}}).size(), 2u); // which leaves nothing behind
        }
        const Pages pages = Print(program, {{IDC_PRINT_HEADERS, room.Printed}});
        ASSERT_EQ(pages.size(), 2u) << described;
        SCOPED_TRACE(described);
        ExpectRows(pages[0], LineTexts(1, most), font, TopMargin + (room.Shifted ? part : 0));
    }
}

TEST_F(PrintTest, DateAndTimeAreWrittenAsTheUserDoes)
{
    struct Case {
        const char* Order;
        const char* DateSeparator;
        const char* Clock;
        const char* TimeSeparator;
        std::string (*Written)(const SYSTEMTIME& time);
    };
    static const char* const Days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    const Case cases[] = {
        {"0", "/", "0", ":",
         [](const SYSTEMTIME& t) {
             return std::to_string(t.wMonth) + Two("/", t.wDay) + Two("/", t.wYear % 100) + " " + TwelveHourTime(t);
         }},
        {"1", ".", "1", "h",
         [](const SYSTEMTIME& t) {
             return std::to_string(t.wDay) + Two(".", t.wMonth) + Two(".", t.wYear % 100) + Two(" ", t.wHour) +
                    Two("h", t.wMinute) + Two("h", t.wSecond);
         }},
        {"2", "-", "1", ".",
         [](const SYSTEMTIME& t) {
             return std::to_string(t.wYear % 100) + Two("-", t.wMonth) + Two("-", t.wDay) + Two(" ", t.wHour) +
                    Two(".", t.wMinute) + Two(".", t.wSecond);
         }},
    };
    const IntlSetting morning("s1159", "vm");
    const IntlSetting afternoon("s2359", "nm");
    for (const Case& user : cases) {
        const IntlSetting order("iDate", user.Order);
        const IntlSetting dates("sDate", user.DateSeparator);
        const IntlSetting clock("iTime", user.Clock);
        const IntlSetting times("sTime", user.TimeSeparator);
        const std::uint64_t before = Seconds();
        const Pages pages = PrintFile(KeysOf("PrintHF=1\nHeader=&d &t\n"), "text");
        ASSERT_EQ(pages.size(), 1u);
        ASSERT_FALSE(pages[0].Lines.empty());
        Texts possible;
        for (std::uint64_t second = before; second <= Seconds(); ++second) {
            const SYSTEMTIME time = TimeAt(second);
            possible.push_back(Days[time.wDayOfWeek] + std::string(" ") + user.Written(time));
        }
        const std::string& printed = pages[0].Lines[0].Text;
        EXPECT_NE(std::find(possible.begin(), possible.end(), printed), possible.end())
            << printed << " is none of " << testing::PrintToString(possible);
    }
}

TEST_F(PrintTest, TwentySixCharactersOfTheNameArePrinted)
{
    const std::pair<const char*, const char*> names[] = {
        {"abcdefghijklmnopqrstuv.txt", "abcdefghijklmnopqrstuv.txt"},        // 26
        {"abcdefghijklmnopqrstuvw.txt", "abcdefghijklmnopqrstuvw.tx..."},    // 27
        {"abcdefghijklmnopqrstuvwxyz.txt", "abcdefghijklmnopqrstuvwxyz..."}, // 30
    };
    for (const auto& [name, printed] : names) {
        const Pages pages = PrintFile(KeysOf("PrintHF=1\nHeader=&F\nFooter=//&f\n"), "text", name);
        ASSERT_EQ(pages.size(), 1u);
        EXPECT_EQ(TextsOf(pages[0]), (Texts{printed, "text", printed}));
        EXPECT_EQ(JobName(), std::string("Kestovar - ") + printed);
    }
}

TEST_F(PrintTest, FormFeedsBeginPagesWhenTheyAreProcessed)
{
    const PrinterFont font(Face, LargeSize);
    const int most = LinesPerPage(font, 0);
    WriteSettings(KeysOf("", LargeSize));
    Program program(WriteScratch("pages.txt", "\fone\r\ntwo\r\n\fthree\r\n\f\r\n\ffour\r\n" + NumberedLines(most - 1) +
                                                  "\ftop\r\nsix\r\nand\fthis\r\n"));
    ASSERT_TRUE(program.WaitForFrame());
    const Pages skipped = Print(program, {{IDC_PRINT_FORM_FEEDS, false}});
    Texts all = {"one", "two", "three", "", "four"};
    const Texts numbered = LineTexts(1, most - 1);
    all.insert(all.end(), numbered.begin(), numbered.end());
    const std::string inside("and\0this", 8); // no glyph
    for (const std::string& text : {std::string("top"), std::string("six"), inside}) {
        all.push_back(text);
    }
    ASSERT_EQ(skipped.size(), 2u);
    ExpectRows(skipped[0], Texts(all.begin(), all.begin() + most), font, TopMargin);
    ExpectRows(skipped[1], Texts(all.begin() + most, all.end()), font, TopMargin);

    const Pages pages = Print(program, {{IDC_PRINT_FORM_FEEDS, true}});
    ASSERT_EQ(pages.size(), 5u);
    ExpectRows(pages[0], {"one", "two"}, font, TopMargin);
    ExpectRows(pages[1], {"three"}, font, TopMargin);
    ExpectRows(pages[2], {}, font, TopMargin);
    Texts full = numbered;
    full.insert(full.begin(), "four");
    ExpectRows(pages[3], full, font, TopMargin);
    ExpectRows(pages[4], {"top", "six", inside}, font, TopMargin);
}

TEST_F(PrintTest, ADumpHasItsRowsOnThePages)
{
    constexpr int Small = 10; // for 76 columns
    const PrinterFont font(Face, Small);
    constexpr int Top = 2400;
    constexpr int Bottom = 1800;
    const int most = (PrintableHeight - Top - Bottom - 4 * font.LineHeight()) / font.LineHeight();
    const int first = Top + 2 * font.LineHeight();
    const std::string bytes = AnyBytes(16 * (most + 2) + 5);
    struct Case {
        int Bytes;
        int Rows;
        bool LastFooter; // of the last page
    };
    // Only a dump that ends in a full row on a page that is not full has no last footer.
    const Case cases[] = {{16 * 3, 3, false},
                          {16 * 3 + 5, 4, true},
                          {16 * most, most, true},
                          {16 * (most + 2), most + 2, false},
                          {16 * (most + 2) + 5, most + 3, true}};
    WriteSettings(KeysOf("PrintHF=1\nHeader=&f\nFooter=/-&p-\nTopMargin=4\nBottomMargin=3\n", Small));
    for (const Case& dump : cases) {
        SCOPED_TRACE(dump.Bytes);
        const std::string shown = bytes.substr(0, static_cast<std::size_t>(dump.Bytes));
        Program program(WriteScratch("dump.bin", shown));
        ASSERT_TRUE(program.WaitForFrame());
        program.Command(IDM_VIEW_HEX);
        const Pages pages = Print(program);
        const int count = (dump.Rows + most - 1) / most;
        ASSERT_EQ(pages.size(), static_cast<std::size_t>(count));
        for (int page = 0; page < count; ++page) {
            PrintedPage rest = pages[static_cast<std::size_t>(page)];
            ASSERT_GE(rest.Lines.size(), 2u);
            EXPECT_EQ(rest.Lines.front().Text, "dump.bin");
            rest.Lines.erase(rest.Lines.begin());
            if (page + 1 < count || dump.LastFooter) {
                EXPECT_EQ(rest.Lines.back().Text, "-" + std::to_string(page + 1) + "-");
                rest.Lines.pop_back();
            }
            ExpectRows(rest, HexRows(shown, page * most, std::min((page + 1) * most, dump.Rows) - 1), font, first);
        }
    }
}

TEST_F(PrintTest, ASelectionIsPrintedInWholeLines)
{
    WriteSettings(FixedFont + KeysOf("PrintHF=1\nHeader=&f\nProcFF=1\n"));
    Program program(WriteScratch("abcdefghijklmnopqrstuvwxyz.txt", "1\r\n2\r\n\fabc\r\ndef\r\n5\r\n6"));
    ASSERT_TRUE(program.WaitForFrame());
    ASSERT_TRUE(DragInView(program, PointOf(2, 2), PointOf(4, 1)));
    const Pages pages = Print(program);
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(TextsOf(pages[0]), (Texts{"abcdefghijklmnopqrstuvwxyz... (Selection)", "abc", "def", "5", "-1-"}));
    EXPECT_EQ(JobName(), "Kestovar - abcdefghijklmnopqrstuvwxyz... (Selection)");

    const Pages all = Print(program, {{IDC_PRINT_SELECTION, false}, {IDC_PRINT_ENTIRE, true}});
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(TextsOf(all[0]), (Texts{"abcdefghijklmnopqrstuvwxyz...", "1", "2", "-1-"}));
    EXPECT_EQ(TextsOf(all[1]), (Texts{"abcdefghijklmnopqrstuvwxyz...", "abc", "def", "5", "6", "-2-"}));
}

TEST_F(PrintTest, ASelectionOfADumpIsPrintedInWholeRows)
{
    const std::string bytes = AnyBytes(16 * 5 + 5);
    WriteSettings(FixedFont + KeysOf("PrintHF=1\nHeader=&f\n"));
    Program program(WriteScratch("dump.bin", bytes));
    ASSERT_TRUE(program.WaitForFrame());
    program.Command(IDM_VIEW_HEX);
    struct Case {
        int First;
        int Last;
    };
    // In the middle, up to the last row, and but a part of one.
    constexpr Case Cases[] = {{1, 2}, {3, 5}, {4, 4}};
    for (const Case& marked : Cases) {
        ASSERT_TRUE(DragInView(program, PointOf(marked.First, 13), PointOf(marked.Last, 20)));
        const Pages pages = Print(program);
        ASSERT_EQ(pages.size(), 1u);
        Texts texts = HexRows(bytes, marked.First, marked.Last);
        texts.insert(texts.begin(), "dump.bin (Selection)");
        texts.push_back("-1-");
        EXPECT_EQ(TextsOf(pages[0]), texts);
    }
}

TEST_F(PrintTest, LongLinesAreWrappedBetweenWords)
{
    // Room for 21 characters of 56 units each.
    const std::string margins = "LeftMargin=1\nRightMargin=5\n";
    const PrinterFont font(Face, Size);
    ASSERT_LE(font.Width(std::string(21, 'x')), PrintableWidth - 600 - 3000);
    ASSERT_GT(font.Width(std::string(22, 'x')), PrintableWidth - 600 - 3000);
    const std::string text = "alpha beta gamma delta epsilon zeta\r\n"
                             "123456789 123456789 1\r\n"
                             "123456789 1234567   2\r\n"
                             "123456789 123456789     5678\r\n"
                             "   indented by three blanks\r\n"
                             "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ end\r\n"
                             "behind                                       \r\n"
                             "\r\n"
                             "last";
    WriteSettings(margins + KeysOf(""));
    Program program(WriteScratch("wrap.txt", text));
    ASSERT_TRUE(program.WaitForFrame());
    const Pages wrapped = Print(program, {{IDC_PRINT_WRAP, true}});
    ASSERT_EQ(wrapped.size(), 1u);
    ExpectRows(wrapped[0],
               {"alpha beta gamma", "delta epsilon zeta", "123456789 123456789 1", "123456789 1234567   2",
                "123456789 123456789", "5678", "   indented by three", "blanks", "abcdefghijklmnopqrst",
                "uvwxyzABCDEFGHIJKLMN", "OPQRSTUVWXYZ end", "behind", "", "last"},
               font, TopMargin);

    const Pages whole = Print(program, {{IDC_PRINT_WRAP, false}});
    ASSERT_EQ(whole.size(), 1u);
    EXPECT_EQ(TextsOf(whole[0]),
              (Texts{"alpha beta gamma delta epsilon zeta", "123456789 123456789 1", "123456789 1234567   2",
                     "123456789 123456789     5678", "   indented by three blanks",
                     "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ end",
                     "behind                                       ", "last"}));
}

TEST_F(PrintTest, WordsAreMeasuredInTheFontTheyArePrintedIn)
{
    constexpr char Serif[] = "Liberation Serif";
    const PrinterFont font(Serif, 40);
    const int width = PrintableWidth - LeftMargin - RightMargin;
    std::string text = "A";
    for (int word = 1; word < 140; ++word) {
        text += " " + std::string(static_cast<std::size_t>(1 + word % 7), word % 3 == 0 ? 'W' : 'i');
    }
    const Pages pages = PrintFile(
        KeysOf("MaxLineLen=1024\nWrapOutput=1\nUseBodyFont=1\nBdFontSize=40\nBdFontName=" + std::string(Serif) + "\n"),
        text + "\r\n");
    ASSERT_EQ(pages.size(), 2u);
    std::vector<PrintedLine> lines = pages[0].Lines;
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(LinesPerPage(font, 0)));
    lines.insert(lines.end(), pages[1].Lines.begin(), pages[1].Lines.end());
    std::string seen;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_LE(font.Width(lines[i].Text), width);
        if (i + 1 < lines.size()) {
            const std::string next = lines[i + 1].Text.substr(0, lines[i + 1].Text.find(' '));
            EXPECT_GT(font.Width(lines[i].Text + " " + next), width) << next << " has room in line " << i;
        }
        seen += (i > 0 ? " " : "") + lines[i].Text;
    }
    EXPECT_EQ(seen, text);
}

TEST_F(PrintTest, WithoutRoomEachRowHasOneCharacter)
{
    const PrinterFont font(Face, Size);
    const Pages pages = PrintFile(KeysOf("WrapOutput=1\nLeftMargin=4\nRightMargin=4.5\n"), "abc de\r\nf");
    ASSERT_EQ(pages.size(), 1u);
    ExpectRows(pages[0], {"a", "b", "c", "d", "e", "f"}, font, TopMargin, 2400);
}

TEST_F(PrintTest, TextHeaderAndFooterHaveTheirFonts)
{
    const std::string chosen = "PrintHF=1\nHeader=head&l\nFooter=&lfoot\nUseHeadFont=1\nHdFontName=Liberation Serif\n"
                               "HdFontSize=30\nHdFontWeight=700\nUseBodyFont=1\nBdFontName=Liberation Sans\n"
                               "BdFontSize=70\nBdFontItalic=1\n";
    const PrinterFont head("Liberation Serif", 30, FW_BOLD);
    const PrinterFont body("Liberation Sans", 70, FW_NORMAL, true);
    const int most = LinesPerPage(body, 2, &head);
    WriteSettings(KeysOf(chosen));
    Program program(WriteScratch("fonts.txt", NumberedLines(most + 1)));
    ASSERT_TRUE(program.WaitForFrame());
    const Pages pages = Print(program);
    ASSERT_EQ(pages.size(), 2u);
    for (const PrintedPage& page : pages) {
        ASSERT_GE(page.Lines.size(), 3u);
        const PrintedPage lines = Part(page, 1, page.Lines.size() - 1);
        const int first = &page == &pages[0] ? 1 : most + 1;
        ExpectRows(lines, LineTexts(first, first == 1 ? most : first), body,
                   TopMargin + head.LineHeight() + body.LineHeight());
        for (const PrintedLine& line : page.Lines) {
            const bool isBody = line.Text.substr(0, 4) == "Line";
            EXPECT_EQ(line.Font, isBody ? "LiberationSans-Italic" : "LiberationSerif-Bold") << line.Text;
            EXPECT_NEAR(line.Size, isBody ? 438 : 188, 1) << line.Text;
        }
        EXPECT_NEAR(page.Lines.front().Baseline, TopMargin + head.Ascent(), Near);
        EXPECT_NEAR(page.Lines.back().Baseline, PrintableHeight - BottomMargin - head.LineHeight() + head.Ascent(),
                    Near);
    }
    const std::vector<PrintedRule> rules = RulesOf(RenderPage(Output, 2));
    ASSERT_EQ(rules.size(), 2u);
    EXPECT_NEAR(rules[0].Top, TopMargin + head.LineHeight(), 2 * Near);
    EXPECT_NEAR(rules[1].Top, PrintableHeight - BottomMargin - head.LineHeight() - head.LineHeight() / 4, 2 * Near);

    // The printer's own font is for everything.
    const PrinterFont own;
    const Pages plain = Print(program, {{IDC_PRINT_DEFAULT_FONT, true}});
    ASSERT_EQ(plain.size(), 1u);
    const PrintedPage& page = plain[0];
    ASSERT_GE(page.Lines.size(), 3u);
    ExpectRows(Part(page, 1, page.Lines.size() - 1), LineTexts(1, most + 1), own, TopMargin + 2 * own.LineHeight());
    for (const PrintedLine& line : page.Lines) {
        EXPECT_EQ(line.Font, page.Lines[0].Font) << line.Text;
        EXPECT_LT(line.Size, 20) << line.Text;
    }
    EXPECT_NEAR(page.Lines.back().Baseline, PrintableHeight - BottomMargin - own.LineHeight() + own.Ascent(), Near);
}

TEST_F(PrintTest, TheScreenFontIsAsLargeOnThePaper)
{
    const Pages pages = PrintFile(KeysOf("FontWeight=700\nFontItalic=1\nHdFontSize=30\nBdFontSize=30\n", 13), "text");
    ASSERT_EQ(pages.size(), 1u);
    ASSERT_EQ(TextsOf(pages[0]), Texts{"text"});
    const PrintedLine& line = pages[0].Lines[0];
    EXPECT_EQ(line.Font, "LiberationMono-BoldItalic");
    EXPECT_NEAR(line.Size, 81, 1); // 13 of 96 to the inch
    const PrinterFont font(Face, 13, FW_BOLD, true);
    ExpectRows(pages[0], {"text"}, font, TopMargin);
}

TEST_F(PrintTest, MarginsAreInTheUsersMeasure)
{
    struct Case {
        const char* Inches;
        const char* Margins;
        int Left;
        int Top;
        int Right;
        int Bottom;
    };
    constexpr Case Cases[] = {
        {"1", "LeftMargin=1.25\nTopMargin=2\nRightMargin=0.125\nBottomMargin=.5\n", 750, 1200, 72, 300},
        {"0", "LeftMargin=2.5\nTopMargin=1.27\nRightMargin=1\nBottomMargin=2\n", 590, 300, 236, 472},
        {"1", "", 600, 300, 0, 300},
        {"0", "", 590, 295, 0, 295},
    };
    const PrinterFont font(Face, LargeSize);
    const int height = font.LineHeight();
    for (const Case& paper : Cases) {
        SCOPED_TRACE(paper.Inches + std::string(" ") + paper.Margins);
        const IntlSetting measure("iMeasure", paper.Inches);
        const int most = (PrintableHeight - 4 * height - paper.Top - paper.Bottom) / height;
        const Pages pages = PrintFile("FontName=" + std::string(Face) + "\nFontSize=" + std::to_string(LargeSize) +
                                          "\nPrintHF=1\nHeader=//head\nFooter=foot\n" + paper.Margins,
                                      NumberedLines(most + 1));
        ASSERT_EQ(pages.size(), 2u);
        const PrintedPage& page = pages[0];
        ASSERT_GE(page.Lines.size(), 3u);
        ExpectRows(Part(page, 1, page.Lines.size() - 1), LineTexts(1, most), font, paper.Top + 2 * height, paper.Left);
        EXPECT_NEAR(page.Lines.front().Right, PrintableWidth - paper.Right, Near);
        EXPECT_NEAR(page.Lines.front().Baseline, paper.Top + font.Ascent(), Near);
        EXPECT_EQ(page.Lines.back().Text, "foot");
        EXPECT_NEAR(page.Lines.back().Left, paper.Left, Near);
        EXPECT_NEAR(page.Lines.back().Baseline, PrintableHeight - paper.Bottom - height + font.Ascent(), Near);
    }
}

TEST_F(PrintTest, JobsWithBadMarginsComeToAnEnd)
{
    const PrinterFont font(Face, Size);
    const std::string path = WriteScratch("margins.txt", std::string(40, 'x') + "\r\nLine 2\r\nLine 3");
    // What is no number counts as nothing.
    WriteSettings(KeysOf("LeftMargin=wide\nTopMargin=1.5.2\nRightMargin=-1\nBottomMargin=1 \"\n"));
    {
        Program program(path + " -P");
        ASSERT_TRUE(program.WaitForFrame());
        const Pages pages = Confirm(program);
        EXPECT_EQ(program.WaitForExit(), 0u);
        ASSERT_EQ(pages.size(), 1u);
        ExpectRows(pages[0], {std::string(40, 'x'), "Line 2", "Line 3"}, font, 0, 0);
    }
    // Without any room there is a line on each page.
    WriteSettings(KeysOf("BottomMargin=99999\n"));
    {
        Program program(path);
        ASSERT_TRUE(program.WaitForFrame());
        const Pages pages = Print(program);
        ASSERT_EQ(pages.size(), 3u);
        ExpectRows(pages[0], {std::string(40, 'x')}, font, TopMargin);
        ExpectRows(pages[2], {"Line 3"}, font, TopMargin);
        program.Command(IDM_VIEW_HEX);
        EXPECT_EQ(Print(program).size(), 4u) << "59 bytes";
    }
    WriteSettings(
        KeysOf("TopMargin=99999\nLeftMargin=99999\nRightMargin=99999\nWrapOutput=1\nPrintHF=1\nPrintDefFont=1\n"));
    Program program(path);
    ASSERT_TRUE(program.WaitForFrame());
    EXPECT_EQ(Print(program).size(), 50u) << "a page for each character";
}

TEST_F(PrintTest, CharactersAreTranslatedAsOnTheScreen)
{
    // "Hello" in EBCDIC, a letter that is another one in the OEM set, and bytes without a glyph.
    const std::string bytes = "\xC8\x85\x93\x93\x96 \x84\t\x01.\r\n";
    WriteSettings(KeysOf(""));
    Program program(WriteScratch("bytes.txt", bytes));
    ASSERT_TRUE(program.WaitForFrame());
    const auto firstLine = [this, &program] {
        const Pages pages = Print(program);
        return pages.size() == 1 && !pages[0].Lines.empty() ? pages[0].Lines[0].Text : std::string("(nothing)");
    };
    EXPECT_EQ(firstLine(), std::string("\xC8\x85\x93\x93\x96 \x84\0\0.", 10));
    CheckPreference(program, IDC_PREFER_OEM);
    EXPECT_EQ(firstLine(), std::string("+\xE0\xF4\xF4\xFB \xE4\0\0.", 10));
    CheckPreference(program, IDC_PREFER_EBCDIC);
    EXPECT_EQ(firstLine(), std::string("Hello d\0\0.", 10));
    program.Command(IDM_VIEW_HEX);
    EXPECT_EQ(firstLine(), "00000000  C8 85 93 93 96 20 84 09-01 2E 0D 0A               Hello d.....    ");
}

} // namespace
