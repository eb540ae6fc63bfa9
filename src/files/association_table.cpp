#include "files/association_table.h"

#include "base/text.h"

#include <cstring>

namespace {

int IndexOf(const AssociationTable& table, const char* extension)
{
    for (int i = 0; i < table.ExtensionCount; ++i) {
        if (strcmp(table.Extensions[i], extension) == 0) {
            return i;
        }
    }
    return -1;
}

} // namespace

bool CanAddExtension(const AssociationTable& table, const char* dottedName)
{
    const std::size_t length = strlen(dottedName);
    return table.ExtensionCount < MaxExtensions && length >= 2 && length <= ExtensionSize &&
           IndexOf(table, dottedName + 1) < 0;
}

bool AddExtension(AssociationTable& table, const char* dottedName, std::uint16_t description)
{
    if (!CanAddExtension(table, dottedName)) {
        return false;
    }
    CopyText(table.Extensions[table.ExtensionCount], dottedName + 1);
    table.DescriptionOf[table.ExtensionCount] = description;
    ++table.ExtensionCount;
    return true;
}

std::uint16_t InternDescription(AssociationTable& table, const char* description)
{
    const std::size_t length = strlen(description);
    if (length < 2 || length >= DescriptionSize) {
        return 0;
    }
    for (int i = 0; i < table.DescriptionCount; ++i) {
        if (strcmp(table.Descriptions[i], description) == 0) {
            return static_cast<std::uint16_t>(i + 1);
        }
    }
    if (table.DescriptionCount == MaxDescriptions) {
        return 0;
    }
    CopyText(table.Descriptions[table.DescriptionCount], description);
    return static_cast<std::uint16_t>(++table.DescriptionCount);
}

bool FindAssociation(const AssociationTable& table, const char* extension, char (&description)[DescriptionSize])
{
    description[0] = '\0';
    const int index = IndexOf(table, extension);
    if (index < 0) {
        return false;
    }
    const int number = table.DescriptionOf[index];
    if (number > 0) {
        CopyText(description, table.Descriptions[number - 1]);
    } else {
        CopyText(description, extension);
        AppendText(description, " File");
    }
    return true;
}
