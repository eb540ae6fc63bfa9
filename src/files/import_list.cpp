#include "files/import_list.h"

#include "base/text.h"
#include "document/identify.h"

namespace {

void AddName(void* list, const char* name)
{
    SendMessageA(static_cast<HWND>(list), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
}

void AddModuleName(void* list, const char* name)
{
    char file[ImportNameSize];
    CopyText(file, name);
    CharLowerA(file);
    AppendText(file, ".dll");
    const LPARAM text = reinterpret_cast<LPARAM>(file);
    if (SendMessageA(static_cast<HWND>(list), LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), text) == LB_ERR) {
        AddName(list, file);
    }
}

} // namespace

void FillImportList(HWND dialog, int listBox, const char* path)
{
    ListImports(path, ImportSink{Imports16Bit() ? AddModuleName : AddName, GetDlgItem(dialog, listBox)});
}
