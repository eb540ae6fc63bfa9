// Finding once more, as plain as can be: lines are read one after the other through the plain document and
// compared character by character, hex rows in the windows of 512 bytes they are searched in. What it finds is
// what the program must find.
#pragma once

#include "support/plain_document.h"

#include <cstdint>
#include <string>

// What the Find dialog, the view and the settings say.
struct PlainFind {
    std::string Text; // at most one of the two is not empty
    std::string Hex;  // pairs of digits, in capitals
    bool MatchCase = false;
    bool Backwards = false;
    bool FromCurrent = false;
    bool HexMode = false;
    bool Ebcdic = false;
    std::int32_t TopLine = 0;
    std::int32_t ClientHeight = 0;
    std::int32_t LineHeight = 16;
    std::int32_t LockTopLine = 0;
};

// Has find look for pattern, as a text or as its bytes; in a text, which has none, forZero stands for a zero byte.
void SetPattern(PlainFind& find, const std::string& pattern, bool bytes, char forZero);

struct PlainMatch {
    std::int32_t Line = 0; // 0 = none
    std::int32_t Column = 0;
    std::int32_t Length = 0;
};

// Turns count bytes of text into capitals, in place.
using PlainCapitals = void (*)(char* text, std::int32_t count);

class PlainSearch {
public:
    PlainSearch(PlainDocument& document, PlainCapitals toCapitals) : Document(document), ToCapitals(toCapitals) {}

    void Start();    // from where the Find dialog starts
    void Next();     // on from the match
    void Previous(); // back from the match
    void Run(std::int32_t line, std::int32_t column);

    // The line as it is displayed; it is read.
    std::string DisplayLine(std::int32_t line);

    std::int32_t RowCount() const;

    PlainDocument& Document;
    PlainFind Options;
    PlainMatch Match;

private:
    std::string Capitals(std::string text) const;
    std::string Pattern() const;
    bool SearchTextLines(const std::string& pattern, std::int64_t line, std::int64_t column);
    bool SearchHexRows(const std::string& pattern, std::int64_t row, std::int64_t column);
    void Repeat();

    PlainCapitals ToCapitals;
};

// One search, in the plain way and in the program.
enum class SearchFrom {
    Origin, // as the Find dialog starts it
    Place,  // Line and Column
    Next,   // these two: the match
    Previous,
};

struct SearchStep {
    SearchFrom From = SearchFrom::Origin;
    std::int32_t Line = 0;
    std::int32_t Column = 0;
};

// Hands plain's options and match to the program, searches in both, and says what differs, or nothing.
std::string CompareSearch(PlainSearch& plain, const SearchStep& step);

// The options and the step, to name a search that went wrong.
std::string DescribeSearch(const PlainSearch& plain, const SearchStep& step);
