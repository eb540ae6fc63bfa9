// Numbers that are typed into dialogs.
#pragma once

#include <windows.h>

struct NumberField {
    int Control;
    int Digits; // that are read, at most 8; what follows them does not count
    int Least;
    int Most;
    UINT Complaint; // the string that says what is wrong with another number
};

// Reads the number in a field: digits as far as they go, so "8x" is 8. False, and that is reported, when it is out of
// range or none.
bool ReadNumber(HWND dialog, const NumberField& field, int& number);
