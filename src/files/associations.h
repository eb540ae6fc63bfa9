// The system's file associations, read once at start.
#pragma once

#include "files/association_table.h"

// Reads the registered extensions and the [Extensions] of WIN.INI.
void BuildAssociations();

// What files of that extension (without its dot, in any case) are called; false when it has no association.
bool LookupAssociation(const char* extension, char (&description)[DescriptionSize]);
