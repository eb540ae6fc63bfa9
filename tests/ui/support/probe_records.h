// What the tests ask the probe library inside the program's process. The library serves them from a
// thread of its own: the tests put a record into memory that both sides share, set one event, and wait
// for another; then the record holds the answer. (One thread for all, since starting a thread in another
// process for each question can wait for ever in Wine while the thread of the question before ends.)
#pragma once

#include <cstdint>
#include <windows.h>

enum class ProbeRequest : std::int32_t { Menu, Scroll, Pixels, RecordTexts, TakeTexts, Use, Drop, Cursor };

constexpr std::size_t ProbeRecordBytes = 4 << 20; // for the pixels of a whole screen

struct ProbeChannel {
    ProbeRequest Request;
    bool Done; // whether the request could be carried out
    alignas(8) std::uint8_t Record[ProbeRecordBytes];
};

// Names of the shared memory and of the two events, each followed by the process id of the program.
constexpr char ProbeMemoryName[] = "kestovar-probe-memory-";
constexpr char ProbeAskName[] = "kestovar-probe-ask-";
constexpr char ProbeAnswerName[] = "kestovar-probe-answer-";

enum class ProbeMenuKind : std::int32_t { Bar, System };

// Menu: one item. Other processes cannot read a program's menus.
struct ProbeMenuRecord {
    HWND Frame = nullptr;
    ProbeMenuKind Menu = ProbeMenuKind::Bar;
    std::int32_t Popup = -1; // of the menu, by position; -1 = the menu itself
    std::uint32_t Item = 0;
    std::uint32_t Flags = MF_BYCOMMAND;
    // Answer.
    bool HasMenu = false;
    std::uint32_t State = 0; // as GetMenuState gives it; -1 = no such item
    std::int32_t ItemCount = 0;
    char Text[128] = "";
};

// Scroll: GetScrollInfo in the window's own process.
struct ProbeScrollRecord {
    HWND Window = nullptr;
    std::int32_t Bar = SB_VERT;
    // Answer.
    std::int32_t Min = 0;
    std::int32_t Max = 0;
    std::int32_t Position = 0;
};

// Pixels: a block of a window's client area, rows from the top, 0x00RRGGBB.
struct ProbePixelsRecord {
    HWND Window = nullptr;
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::uint32_t Pixels[1] = {}; // Width * Height of them
};

// One text that the program wrote on a window.
struct ProbeText {
    HWND Window = nullptr;
    std::int32_t X = 0;
    std::int32_t Y = 0;
    RECT Area = {}; // the opaque rectangle, if any
    COLORREF Foreground = 0;
    COLORREF Background = 0;
    std::int32_t Length = 0; // of which the first characters are kept
    char Text[200] = "";
};

constexpr std::int32_t MaxProbeTexts = 400;

// RecordTexts starts anew to keep what is written; with a window, that window is then repainted as a
// whole. TakeTexts gives what was kept and stops keeping.
struct ProbeTextsRecord {
    HWND Window = nullptr;
    // Answer.
    std::int32_t Count = 0;
    ProbeText Texts[MaxProbeTexts];
};

// Use: what the program uses and has done.
struct ProbeUseRecord {
    // Answer.
    std::int32_t HeapBytes = 0; // in use in the process heap
    std::int32_t GdiObjects = 0;
    std::int32_t Beeps = 0; // since the library was loaded
};

// Drop: drops files on a window. The block of names has to belong to the receiver's process.
struct ProbeDropRecord {
    HWND Window = nullptr;
    std::int32_t Bytes = 0;
    char Names[1] = ""; // Bytes of them: each with its zero byte, and one more behind the last
};

enum class ProbeCursorShape : std::int32_t { Other, Arrow, Wait, Ibeam };

// Cursor: the shape of the pointer on the screen.
struct ProbeCursorRecord {
    ProbeCursorShape Shape = ProbeCursorShape::Other;
};
