// What extensions are associated with, as an installation leaves it behind, for as long as these exist. The program
// reads it when it starts.
#pragma once

#include <string>

struct Association {
    std::string Extension; // without its dot
    std::string Class;     // "" = none: the command is that of the extension itself
    std::string FriendlyName;
    std::string Command; // of the verb "open"; "" = none
};

// In the registry.
class RegisteredExtension {
public:
    explicit RegisteredExtension(const Association& association);
    ~RegisteredExtension();
    RegisteredExtension(const RegisteredExtension&) = delete;
    RegisteredExtension& operator=(const RegisteredExtension&) = delete;

private:
    std::string ExtensionKey;
    std::string ClassKey;
};

// An entry of the section "Extensions" of WIN.INI.
class ProfileExtension {
public:
    ProfileExtension(const std::string& extension, const std::string& command);
    ~ProfileExtension();
    ProfileExtension(const ProfileExtension&) = delete;
    ProfileExtension& operator=(const ProfileExtension&) = delete;

private:
    std::string Extension;
};
