#include "files/associations.h"

#include "base/text.h"

#include <cstring>
#include <windows.h>

namespace {

AssociationTable AssocTable;

constexpr DWORD KeyNameSize = 81;

// The default value of a class; false when it has none that is a text.
bool QueryClassValue(const char* key, char* value, LONG size)
{
    LONG bytes = size - 1;
    memset(value, 0, static_cast<std::size_t>(size)); // the registry may hold a text without its end
    return RegQueryValueA(HKEY_CLASSES_ROOT, key, value, &bytes) == ERROR_SUCCESS;
}

void AddRegisteredExtension(const char* name)
{
    char dotted[KeyNameSize];
    CopyText(dotted, name);
    CharUpperA(dotted);
    if (!CanAddExtension(AssocTable, dotted)) {
        return;
    }
    char className[KeyNameSize];
    const bool named = QueryClassValue(name, className, sizeof className);
    AddExtension(AssocTable, dotted, named ? InternDescription(AssocTable, className) : std::uint16_t{0});
}

void ReadRegisteredExtensions()
{
    char name[KeyNameSize];
    // Most registries hold thousands of keys, and far more extensions than the table.
    for (DWORD i = 0; AssocTable.ExtensionCount < MaxExtensions; ++i) {
        const LONG result = RegEnumKeyA(HKEY_CLASSES_ROOT, i, name, sizeof name);
        if (result == ERROR_MORE_DATA) {
            continue; // far too long for an extension
        }
        if (result != ERROR_SUCCESS) {
            return;
        }
        if (name[0] == '.') {
            AddRegisteredExtension(name);
        }
    }
}

// So far the descriptions are names of classes: the friendly name of a class takes its place.
void TakeFriendlyNames()
{
    for (int i = 0; i < AssocTable.DescriptionCount; ++i) {
        char friendly[512];
        if (QueryClassValue(AssocTable.Descriptions[i], friendly, sizeof friendly) && friendly[0] != '\0' &&
            strlen(friendly) < DescriptionSize) {
            CopyText(AssocTable.Descriptions[i], friendly);
        }
    }
}

void ReadProfileExtensions()
{
    char keys[512];
    GetProfileStringA("Extensions", nullptr, "", keys, sizeof keys);
    for (const char* key = keys; *key != '\0'; key += strlen(key) + 1) {
        char dotted[KeyNameSize] = ".";
        AppendText(dotted, key);
        CharUpperA(dotted);
        AddExtension(AssocTable, dotted, 0);
    }
}

} // namespace

void BuildAssociations()
{
    AssocTable = AssociationTable{};
    ReadRegisteredExtensions();
    TakeFriendlyNames();
    ReadProfileExtensions();
}

bool LookupAssociation(const char* extension, char (&description)[DescriptionSize])
{
    char upper[ExtensionSize + 1]; // one more than fits, so that a longer one is not taken for its beginning
    CopyText(upper, extension);
    CharUpperA(upper);
    return FindAssociation(AssocTable, upper, description);
}
