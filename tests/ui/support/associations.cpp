#include "support/associations.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

constexpr char Section[] = "Extensions";

// Makes the key with what it needs to exist.
void SetDefaultValue(const std::string& key, const std::string& value)
{
    EXPECT_EQ(RegSetValueA(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, value.c_str(), static_cast<DWORD>(value.size())),
              ERROR_SUCCESS)
        << key;
}

void CreateKey(const std::string& key)
{
    HKEY created = nullptr;
    EXPECT_EQ(RegCreateKeyA(HKEY_CLASSES_ROOT, key.c_str(), &created), ERROR_SUCCESS) << key;
    RegCloseKey(created);
}

// A key goes only when nothing is below it.
void DeleteWithCommand(const std::string& key)
{
    for (const char* const below : {"\\shell\\open\\command", "\\shell\\open", "\\shell", ""}) {
        RegDeleteKeyA(HKEY_CLASSES_ROOT, (key + below).c_str());
    }
}

} // namespace

RegisteredExtension::RegisteredExtension(const Association& association)
    : ExtensionKey("." + association.Extension), ClassKey(association.Class)
{
    CreateKey(ExtensionKey);
    if (!ClassKey.empty()) {
        SetDefaultValue(ExtensionKey, ClassKey);
        CreateKey(ClassKey);
        if (!association.FriendlyName.empty()) {
            SetDefaultValue(ClassKey, association.FriendlyName);
        }
    }
    if (!association.Command.empty()) {
        SetDefaultValue((ClassKey.empty() ? ExtensionKey : ClassKey) + "\\shell\\open\\command", association.Command);
    }
}

RegisteredExtension::~RegisteredExtension()
{
    DeleteWithCommand(ExtensionKey);
    if (!ClassKey.empty()) {
        DeleteWithCommand(ClassKey);
    }
}

ProfileExtension::ProfileExtension(const std::string& extension, const std::string& command) : Extension(extension)
{
    EXPECT_TRUE(WriteProfileStringA(Section, Extension.c_str(), command.c_str())) << "error " << GetLastError();
}

ProfileExtension::~ProfileExtension()
{
    WriteProfileStringA(Section, Extension.c_str(), nullptr);
}
