#include "app/command_line.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char DefaultSection[] = "Kestovar";

// Hands out the blank-separated tokens of a buffer; nullptr behind the last.
struct Tokens {
    char* Next;

    const char* Take()
    {
        char* token = Next + strspn(Next, " ");
        if (*token == '\0') {
            return nullptr;
        }
        Next = token + strcspn(token, " ");
        if (*Next != '\0') {
            *Next++ = '\0';
        }
        return token;
    }
};

// Whether parsing goes on.
enum class Parsing { GoesOn, Stops };

Parsing Fail(CommandLine& result)
{
    result.Error = true;
    return Parsing::Stops;
}

std::int32_t NumberFrom(const char* token, std::int32_t less)
{
    const long long number = std::clamp<long long>(strtoll(token, nullptr, 10), INT32_MIN, INT32_MAX);
    return static_cast<std::int32_t>(std::max<long long>(number - less, INT32_MIN));
}

Parsing ParseSection(const char* name, CommandLine& result)
{
    if (strlen(name) >= SectionNameSize) {
        return Fail(result);
    }
    if (*name != '\0') {
        CopyText(result.SectionName, name);
    }
    return Parsing::GoesOn;
}

Parsing ParseLock(const char* joined, Tokens& tokens, CommandLine& result)
{
    if (*joined != '\0') {
        return Fail(result);
    }
    const char* numbers[4];
    for (const char*& number : numbers) {
        number = tokens.Take();
        if (number == nullptr) {
            result.Error = true;
            return Parsing::GoesOn;
        }
    }
    result.Lock = {NumberFrom(numbers[0], 1), NumberFrom(numbers[1], 1), NumberFrom(numbers[2], 0),
                   NumberFrom(numbers[3], 0)};
    return Parsing::GoesOn;
}

Parsing ParseRectangle(const char* left, Tokens& tokens, CommandLine& result)
{
    CopyText(result.Rectangle, left);
    for (int i = 0; i < 3; ++i) {
        const char* number = tokens.Take();
        if (number == nullptr) {
            result.Error = true;
            return Parsing::GoesOn;
        }
        AppendText(result.Rectangle, " ");
        AppendText(result.Rectangle, number);
    }
    return Parsing::GoesOn;
}

Parsing ParseSwitch(const char* body, Tokens& tokens, CommandLine& result)
{
    if (*body == '\0') {
        body = tokens.Take(); // a dash standing alone: the next token is the switch
        if (body == nullptr) {
            return Fail(result);
        }
    }
    switch (toupper(static_cast<unsigned char>(*body))) {
    case 'I': return ParseSection(body + 1, result);
    case 'P': result.PrintAndExit = true; return Parsing::GoesOn;
    case 'L': return ParseLock(body + 1, tokens, result);
    default: return ParseRectangle(body, tokens, result);
    }
}

} // namespace

CommandLine ParseCommandLine(const char* text)
{
    char buffer[MaxPathSize];
    CopyText(buffer, text);
    CommandLine result;
    Tokens tokens{buffer};
    Parsing parsing = Parsing::GoesOn;
    const char* token = tokens.Take();
    while (token != nullptr && parsing == Parsing::GoesOn) {
        if (*token == '-') {
            parsing = ParseSwitch(token + 1, tokens, result);
        } else {
            CopyText(result.FileName, token);
        }
        token = tokens.Take();
    }
    if (result.SectionName[0] == '\0') {
        CopyText(result.SectionName, DefaultSection);
    }
    // Only after the default: a command line in error runs on the section without a name.
    if (result.Error) {
        result.FileName[0] = '\0';
        result.Rectangle[0] = '\0';
        result.SectionName[0] = '\0';
    }
    return result;
}
