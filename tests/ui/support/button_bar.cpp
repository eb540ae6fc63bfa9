#include "support/button_bar.h"

#include "support/input.h"
#include "support/marks.h"
#include "support/windows_path.h"

#include <iterator>

const BarButton BarButtons[BarButtonCount] = {
    {IDM_FILE_OPEN, "Open file", "Open a new file"},
    {IDM_FILE_PREVIOUS, "View previous file", "View the previous file"},
    {IDM_FILE_NEXT, "View next file", "View the next file"},
    {IDM_FILE_PRINT, "Print file", "Print from the current file"},
    {IDM_FILE_INFORMATION, "Show file info", "Display information about the current file"},
    {IDM_EDIT_COPY, "Copy to Clipboard", "Copy selected text to the clipboard"},
    {IDM_SEARCH_FIND, "Find", "Search the file for a character string"},
    {IDM_SEARCH_FIND_NEXT, "Repeat find", "Find the next match"},
    {IDM_VIEW_TEXT, "Select text view", "Select the text viewing mode"},
    {IDM_VIEW_HEX, "Select hex view", "Select the hex viewing mode"},
    {IDM_VIEW_ZIP, "View Zip contents", "View information about files contained within a ZIP file"},
    {IDM_OPTIONS_FONT, "Select font", "Select from a list of available fonts"},
    {IDM_OPTIONS_COLOURS, "Select colours", "Define your colour preferences"},
    {IDM_HELP_CONTENTS, "Help contents", "Display the Kestovar help contents"},
    {IDM_FILE_LAUNCH, "Launch file", "Launch the current file with it's associated application "},
    {IDM_VIEW_REDISPLAY_ZIP, "View previous Zip", "Redisplay the previous ZIP file"},
    {IDM_FILE_CLOSE, "Close & Iconize", "Close the current file and Iconize"},
    {IDM_FILE_EXIT, "Exit Kestovar!", "Exit Kestovar !"},
    {IDM_SEARCH_GOTO, "Goto", "Goto to a specified file position"},
    {IDM_EDIT_FILE, "Edit file", "Edit the current file"},
    {IDM_FILE_DELETE, "Delete file", "Delete the curent file"},
    {IDM_VIEW_LOCK, "Lock/Unlock text", "Lock/Unlock row and column headings"},
    {IDM_FONT_INCREASE, "Increase font size", "Increase current font size"},
    {IDM_FONT_DECREASE, "Decrease font size", "Decrease current font size"},
};

const char BarSettings[] = "WindowSize=40 30 900 500\nFontName=Courier\nFontSize=15\n";

namespace {

constexpr std::uint32_t Grey = 0x808080;
constexpr int FaceWidth = 26;
constexpr int FaceHeight = 21;

// The strip of faces that the program's file has.
Pixels LoadFaces()
{
    Pixels faces{BarButtonCount * FaceWidth, FaceHeight, {}};
    faces.Values.resize(static_cast<std::size_t>(faces.Width) * FaceHeight);
    const HMODULE program = LoadLibraryExA(ProgramPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    EXPECT_NE(program, nullptr);
    const HANDLE strip =
        LoadImageA(program, MAKEINTRESOURCEA(IDB_BUTTON_FACES), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = faces.Width;
    info.bmiHeader.biHeight = -FaceHeight; // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(GetDIBits(screen, static_cast<HBITMAP>(strip), 0, FaceHeight, faces.Values.data(), &info, DIB_RGB_COLORS),
              FaceHeight);
    ReleaseDC(nullptr, screen);
    DeleteObject(strip);
    FreeLibrary(program);
    for (std::uint32_t& pixel : faces.Values) {
        pixel &= 0xFFFFFF;
    }
    return faces;
}

std::uint32_t FacePixel(int button, int x, int y)
{
    static const Pixels Faces = LoadFaces();
    return Faces.At(button * FaceWidth + x, y);
}

bool IsInk(int button, int x, int y)
{
    const bool inside = x >= 0 && x < FaceWidth && y >= 0 && y < FaceHeight;
    return inside && FacePixel(button, x, y) != LightGrey && FacePixel(button, x, y) != White;
}

struct Picture {
    Pixels Image{SlotWidth, SlotHeight, std::vector<std::uint32_t>(SlotWidth* SlotHeight, BarColour())};

    void Set(int x, int y, std::uint32_t colour) { Image.Values[static_cast<std::size_t>(y * SlotWidth + x)] = colour; }
    void Fill(int x, int y, int width, int height, std::uint32_t colour)
    {
        for (int i = 0; i < width * height; ++i) {
            Set(x + i % width, y + i / width, colour);
        }
    }
};

void DrawEdges(Picture& picture, bool pressed)
{
    picture.Fill(1, 0, 32, 28, Black);
    picture.Fill(0, 1, 34, 26, Black);
    picture.Fill(1, 1, 32, 26, LightGrey);
    if (pressed) {
        picture.Fill(1, 1, 1, 26, Grey);
        picture.Fill(1, 1, 32, 1, Grey);
        return;
    }
    picture.Fill(1, 1, 1, 25, White);
    picture.Fill(1, 1, 31, 1, White);
    picture.Fill(32, 1, 1, 26, Grey);
    picture.Fill(1, 26, 32, 1, Grey);
    picture.Fill(31, 2, 1, 24, Grey);
    picture.Fill(2, 25, 30, 1, Grey);
}

// Paints a face where its ink is, or all of it for no colour.
void DrawFaceAt(Picture& picture, int button, int left, int top, const std::uint32_t* colour)
{
    for (int y = 0; y < FaceHeight; ++y) {
        for (int x = 0; x < FaceWidth; ++x) {
            if (colour == nullptr) {
                picture.Set(left + x, top + y, FacePixel(button, x, y));
            } else if (IsInk(button, x, y)) {
                picture.Set(left + x, top + y, *colour);
            }
        }
    }
}

Pixels DrawnButton(int button, char look)
{
    Picture picture;
    if (look == '.') {
        return picture.Image;
    }
    const bool pressed = look == 'v';
    DrawEdges(picture, pressed);
    const int shift = pressed ? 1 : 0;
    DrawFaceAt(picture, button, 4 + shift, 3 + shift, nullptr);
    if (look == '-') {
        DrawFaceAt(picture, button, 5, 4, &White);
        DrawFaceAt(picture, button, 4, 3, &Grey);
    }
    return picture.Image;
}

bool ShowsInSlot(const Pixels& bar, int slot, const Pixels& button)
{
    for (int y = 0; y < SlotHeight; ++y) {
        for (int x = 0; x < SlotWidth; ++x) {
            if ((bar.At(slot * SlotPitch + x, SlotTop + y) & 0xFFFFFF) != button.At(x, y)) {
                return false;
            }
        }
    }
    return true;
}

char LookOfSlot(const Pixels& bar, int slot, int button)
{
    for (const char look : {'.', '+', '-', 'v'}) {
        if (ShowsInSlot(bar, slot, DrawnButton(button, look))) {
            return look;
        }
    }
    return '?';
}

INPUT ShiftKey(DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = VK_SHIFT;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(VK_SHIFT, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return input;
}

INPUT LeftButton(DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    return input;
}

} // namespace

BarOrder FirstButtons(int count)
{
    BarOrder order;
    for (int button = 0; button < count; ++button) {
        order.push_back(button);
    }
    return order;
}

std::string OrderText(const BarOrder& order)
{
    std::string text;
    for (const int button : order) {
        text += std::to_string(100 + button).substr(1);
    }
    return text;
}

void BarTest::SetUp()
{
    UiTest::SetUp();
    UseSettings("");
    const int right = GetSystemMetrics(SM_CXSCREEN);
    const int bottom = GetSystemMetrics(SM_CYSCREEN);
    EXPECT_TRUE(MovePointer(GetDesktopWindow(), right - 3, bottom - 3));
}

void BarTest::UseSettings(const std::string& keys)
{
    WriteSettings(BarSettings + ("Buttons=" + OrderText(FirstButtons(BarButtonCount)) + "\n" + keys));
}

std::uint32_t BarColour()
{
    const COLORREF colour = GetSysColor(COLOR_BTNFACE);
    return static_cast<std::uint32_t>(GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour));
}

Pixels ReadBar(Program& program)
{
    EXPECT_TRUE(WaitUntil([&] { return IsPainted(program, program.Buttons()); }));
    const SIZE size = ClientSize(program.Buttons());
    return program.Inside().Read(program.Buttons(), 0, 0, size.cx, size.cy);
}

std::string LooksOfBar(Program& program, const BarOrder& order)
{
    const Pixels bar = ReadBar(program);
    if (bar.Height != BarHeight || bar.Width < SlotsInSight * SlotPitch) {
        return std::string(SlotsInSight, '?');
    }
    std::string looks;
    for (int slot = 0; slot < SlotsInSight; ++slot) {
        looks +=
            LookOfSlot(bar, slot, slot < static_cast<int>(order.size()) ? order[static_cast<std::size_t>(slot)] : 0);
    }
    return looks;
}

std::string LooksOfButtons(Program& program)
{
    return LooksOfBar(program, FirstButtons(BarButtonCount)).substr(0, BarButtonCount);
}

void ExpectBar(Program& program, const BarOrder& order, std::string looks)
{
    looks.resize(SlotsInSight, '.');
    EXPECT_TRUE(WaitUntil([&] { return LooksOfBar(program, order) == looks; }))
        << LooksOfBar(program, order) << " instead of " << looks;
}

void ExpectButton(Program& program, int button, char look)
{
    const std::size_t place = static_cast<std::size_t>(button);
    EXPECT_TRUE(WaitUntil([&] { return LooksOfButtons(program)[place] == look; }))
        << button << ": " << LooksOfButtons(program)[place] << " instead of " << look;
}

void ExpectStatus(Program& program, const std::string& text)
{
    EXPECT_TRUE(WaitUntil([&] { return program.StatusText() == text; }))
        << '"' << program.StatusText() << "\" instead of \"" << text << '"';
}

bool PointAtSlot(const Program& program, int slot)
{
    return BringToForeground(program.Frame()) &&
           MovePointer(program.Buttons(), slot * SlotPitch + SlotWidth / 2, BarHeight / 2);
}

bool PressSlot(const Program& program, int slot)
{
    if (!PointAtSlot(program, slot)) {
        return false;
    }
    PressLeft();
    return WaitUntil([&] { return CaptureOf(program) == program.Buttons(); });
}

bool ReleaseSlot(const Program& program)
{
    const HWND bar = program.Buttons();
    ReleaseLeft();
    return WaitUntil([&] { return !IsWindow(bar) || CaptureOf(program) != bar; });
}

bool ClickSlot(const Program& program, int slot)
{
    return PressSlot(program, slot) && ReleaseSlot(program);
}

bool ShiftClickSlot(const Program& program, int slot)
{
    if (!PointAtSlot(program, slot)) {
        return false;
    }
    INPUT inputs[] = {ShiftKey(0), LeftButton(MOUSEEVENTF_LEFTDOWN), LeftButton(MOUSEEVENTF_LEFTUP),
                      ShiftKey(KEYEVENTF_KEYUP)}; // in one go: nothing can come between them
    return SendInput(static_cast<UINT>(std::size(inputs)), inputs, sizeof(INPUT)) == std::size(inputs);
}
