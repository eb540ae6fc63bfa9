#include "files/file_texts.h"

#include "base/intl.h"
#include "files/associations.h"
#include "harness/system_calls.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <windows.h>

namespace {

std::string AttributesOf(std::uint16_t attributes)
{
    FileInfo info;
    info.Attributes = attributes;
    char text[AttributeTextSize];
    AttributeText(info, text);
    return text;
}

std::string TypeOf(std::int16_t type, const char* path)
{
    FileInfo info;
    info.FileType = type;
    char text[TypeTextSize] = "as before";
    return TypeText(info, path, text) ? text : std::string("unknown: ") + text;
}

// The user's time zone, two hours ahead, and no other one.
BOOL WINAPI TwoHoursLater(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* utc, SYSTEMTIME* local)
{
    *local = *utc;
    local->wHour = static_cast<WORD>(utc->wHour + (zone == nullptr ? 2 : 0));
    return TRUE;
}

class FileTexts : public testing::Test {
protected:
    ~FileTexts() override
    {
        RegDeleteKeyA(HKEY_CLASSES_ROOT, ".kva");
        RegDeleteKeyA(HKEY_CLASSES_ROOT, "KvaClass");
        BuildAssociations();
        Intl = IntlSettings{};
    }

    static void Associate(const char* friendlyName)
    {
        RegSetValueA(HKEY_CLASSES_ROOT, ".kva", REG_SZ, "KvaClass", 8);
        RegSetValueA(HKEY_CLASSES_ROOT, "KvaClass", REG_SZ, friendlyName, static_cast<DWORD>(strlen(friendlyName)));
        BuildAssociations();
    }

    // The text of a modification at that local time.
    static std::string Modified(WORD year, WORD month, WORD day, WORD hour, WORD minute)
    {
        SYSTEMTIME local = {};
        local.wYear = year;
        local.wMonth = month;
        local.wDay = day;
        local.wHour = hour;
        local.wMinute = minute;
        SYSTEMTIME utc;
        FILETIME time;
        EXPECT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc));
        EXPECT_TRUE(SystemTimeToFileTime(&utc, &time));
        const std::uint64_t ticks = (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
        FileInfo info;
        info.Time = static_cast<std::int32_t>(ticks / 10000000 - 11644473600);
        char text[FileDateSize];
        ModificationText(info, text);
        return text;
    }
};

} // namespace

TEST_F(FileTexts, EachAttributeHasItsWordWithABlankBehind)
{
    EXPECT_EQ("Read-only ", AttributesOf(1));
    EXPECT_EQ("Hidden ", AttributesOf(2));
    EXPECT_EQ("System ", AttributesOf(4));
    EXPECT_EQ("Archive ", AttributesOf(32));
    EXPECT_EQ("", AttributesOf(0));
}

TEST_F(FileTexts, TheWordsStandInTheirOwnOrder)
{
    EXPECT_EQ("Read-only Archive System Hidden ", AttributesOf(39));
    EXPECT_EQ("Archive Hidden ", AttributesOf(34));
}

TEST_F(FileTexts, ARecognisedTypeHasItsName)
{
    const char* const names[] = {
        "Windows 16 bit Program",    "Windows 16 bit DLL ",
        "Windows VxD Driver",        "Windows 32 bit DLL",
        "Windows 32 bit Executable", "OS/2 1.x Executable",
        "OS/2 2.x Executable",       "DOS Executable",
        "Self Extracting ZIP",       "Zip File",
        "Compressed File",
    };
    std::int16_t type = 0;
    for (const char* const name : names) {
        ++type;
        EXPECT_EQ(name, TypeOf(type, "c:\\file.kva")) << type;
    }
    EXPECT_EQ(CompressedFile, type);
}

TEST_F(FileTexts, AnotherFileIsCalledByItsExtension)
{
    Associate("Friendly Name");
    EXPECT_EQ("Friendly Name", TypeOf(NotRecognised, "c:\\dir\\file.kva"));
    EXPECT_EQ("Friendly Name", TypeOf(NotRecognised, "c:\\dir\\file.x.KVA"));
    EXPECT_EQ("Windows 32 bit DLL", TypeOf(Windows32Dll, "c:\\dir\\file.kva"));
}

TEST_F(FileTexts, ANameOf39CharactersIsShownWhole)
{
    const std::string name(39, 'f');
    Associate(name.c_str());
    EXPECT_EQ(name, TypeOf(NotRecognised, "file.kva"));
}

TEST_F(FileTexts, AFileThatIsNeitherIsUnknownAndLeavesNoText)
{
    Associate("Friendly Name");
    EXPECT_EQ("unknown: ", TypeOf(NotRecognised, "c:\\dir\\file.kvq"));
    EXPECT_EQ("unknown: ", TypeOf(NotRecognised, "c:\\dir\\file"));
    EXPECT_EQ("unknown: ", TypeOf(NotRecognised, "c:\\dir\\file."));
    EXPECT_EQ("unknown: ", TypeOf(NotRecognised, "c:\\dir.kva\\file"));
    EXPECT_EQ("unknown: ", TypeOf(NotRecognised, ""));
}

TEST_F(FileTexts, TheModificationIsShownInLocalTimeAsTheUserWritesIt)
{
    EXPECT_EQ("07/15/95  02:05", Modified(1995, 7, 15, 14, 5));
    Intl.Order = DayMonthYear;
    Intl.TimeFormat = 1;
    strcpy(Intl.DateSeparator, ".");
    strcpy(Intl.TimeSeparator, "-");
    EXPECT_EQ("15.07.95  14-05", Modified(1995, 7, 15, 14, 5));
    Intl.Order = YearMonthDay;
    EXPECT_EQ("126.01.31  00-00", Modified(2026, 1, 31, 0, 0));
}

TEST_F(FileTexts, TheHourIsThatOfTheUsersTimeZone)
{
    const ReplacedCall replaced("SystemTimeToTzSpecificLocalTime", reinterpret_cast<void*>(TwoHoursLater));
    Intl.TimeFormat = 1;
    FileInfo info;
    info.Time = 805809900; // 15 July 1995, 12:05 in UTC
    char text[FileDateSize];
    ModificationText(info, text);
    EXPECT_STREQ("07/15/95  14:05", text);
}

TEST_F(FileTexts, SummerTimeIsThatOfTheDayOfTheModification)
{
    Intl.TimeFormat = 1;
    EXPECT_EQ("01/15/99  12:00", Modified(1999, 1, 15, 12, 0));
    EXPECT_EQ("07/15/99  12:00", Modified(1999, 7, 15, 12, 0));
}

TEST_F(FileTexts, TheLongTextsAreOfTheUsersTimeZoneToo)
{
    const ReplacedCall replaced("SystemTimeToTzSpecificLocalTime", reinterpret_cast<void*>(TwoHoursLater));
    FileInfo info;
    info.Time = 805809907; // 15 July 1995, 12:05:07 in UTC
    char date[LongDateSize];
    char time[LongTimeSize];
    LongDateText(info, date);
    LongTimeText(info, time);
    EXPECT_STREQ("Sat 15 Jul, 1995", date);
    EXPECT_STREQ("at 02:05:07 PM", time);
}

TEST_F(FileTexts, TheLongTextsDoNotFollowTheUsersSettings)
{
    const ReplacedCall replaced("SystemTimeToTzSpecificLocalTime", reinterpret_cast<void*>(TwoHoursLater));
    Intl.Order = YearMonthDay;
    Intl.TimeFormat = 1;
    FileInfo info;
    info.Time = 0;
    char date[LongDateSize];
    char time[LongTimeSize];
    LongDateText(info, date);
    LongTimeText(info, time);
    EXPECT_STREQ("Thu 01 Jan, 1970", date);
    EXPECT_STREQ("at 02:00:00 AM", time);
}

TEST_F(FileTexts, TheLastTimeThereIsCanBeShown)
{
    FileInfo info;
    info.Time = INT32_MAX;
    char text[FileDateSize];
    ModificationText(info, text);
    EXPECT_TRUE(strstr(text, "/138  ") != nullptr) << text;
    char date[LongDateSize];
    LongDateText(info, date);
    EXPECT_TRUE(strstr(date, "Jan, 2038") != nullptr) << date;
}
