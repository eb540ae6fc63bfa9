// Which extensions have a program of their own, and what their files are called.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr int MaxExtensions = 199;
constexpr int MaxDescriptions = 200;
constexpr std::size_t ExtensionSize = 8;    // 1 to 7 characters and the terminator
constexpr std::size_t DescriptionSize = 40; // 1 to 39 characters and the terminator

struct AssociationTable {
    char Extensions[MaxExtensions][ExtensionSize] = {}; // in upper case, without their dots
    std::uint16_t DescriptionOf[MaxExtensions] = {};    // number of the description, from 1; 0 = none
    int ExtensionCount = 0;
    char Descriptions[MaxDescriptions][DescriptionSize] = {};
    int DescriptionCount = 0;
};

// Enters an extension, in upper case and with its dot, and the number of its description. Not when it is
// known already, does not fit, or the table is full.
bool AddExtension(AssociationTable& table, const char* dottedName, std::uint16_t description);

// Whether AddExtension would enter it.
bool CanAddExtension(const AssociationTable& table, const char* dottedName);

// The number, from 1, of a description of 2 to 39 characters, entered if need be; 0 when it does not fit.
std::uint16_t InternDescription(AssociationTable& table, const char* description);

// What files of that extension (in upper case, without its dot) are called: their description, else the
// extension and " File". False when the extension is not known.
bool FindAssociation(const AssociationTable& table, const char* extension, char (&description)[DescriptionSize]);
