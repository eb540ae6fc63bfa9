#include "base/messages.h"

#include "base/load_text.h"
#include "base/text.h"

#include <cstdarg>
#include <cstdio>

namespace {

constexpr char Caption[] = "Kestovar";
constexpr int MessageLength = 200;

// The longest message with a whole path in it.
char MessageText[MessageLength + MaxPathSize];

void FormatMessageText(UINT stringId, va_list arguments)
{
    char format[MessageLength];
    LoadText(stringId, format);
    // The formats are the program's own string table.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    vsnprintf(MessageText, sizeof MessageText, format, arguments);
#pragma GCC diagnostic pop
}

int Ask(HWND owner, UINT stringId, ...)
{
    va_list arguments;
    va_start(arguments, stringId);
    FormatMessageText(stringId, arguments);
    va_end(arguments);
    return MessageBoxA(owner, MessageText, Caption, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2);
}

} // namespace

void ReportMessage(HWND owner, UINT stringId, ...)
{
    va_list arguments;
    va_start(arguments, stringId);
    FormatMessageText(stringId, arguments);
    va_end(arguments);
    MessageBoxA(owner, MessageText, Caption, MB_OK | MB_ICONEXCLAMATION);
}

int AskMessage(HWND owner, UINT stringId, const char* argument)
{
    return Ask(owner, stringId, argument);
}

int AskMessage(HWND owner, UINT stringId, int argument)
{
    return Ask(owner, stringId, argument);
}
