#include "base/dialog_number.h"

#include "base/messages.h"

#include <cstdlib>

bool ReadNumber(HWND dialog, const NumberField& field, int& number)
{
    char text[9] = "";
    GetDlgItemTextA(dialog, field.Control, text, field.Digits + 1);
    number = atoi(text);
    if (number < field.Least || number > field.Most) {
        ReportMessage(dialog, field.Complaint);
        return false;
    }
    return true;
}
