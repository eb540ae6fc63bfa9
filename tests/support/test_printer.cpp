#include "support/test_printer.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <windows.h>
#include <winspool.h>

namespace {

constexpr char DriverName[] = "Generic PostScript";

// A name as the system's functions take it, which write nothing to it.
char* Name(const std::string& text)
{
    return const_cast<char*>(text.c_str());
}

std::string DescriptionPath()
{
    std::string path = KESTOVAR_TEST_DATA "/printer/generic.ppd";
    std::replace(path.begin(), path.end(), '/', '\\');
    return "Z:" + path;
}

// The driver stays in the system; to add it again is no error.
bool AddDriver()
{
    const std::string description = DescriptionPath();
    const std::string module = "wineps.drv";
    const std::string environment = "Windows NT x86";
    const std::string name = DriverName;
    DRIVER_INFO_3A driver = {};
    driver.cVersion = 3;
    driver.pName = Name(name);
    driver.pEnvironment = Name(environment);
    driver.pDriverPath = Name(module);
    driver.pDataFile = Name(description);
    driver.pConfigFile = Name(module);
    return AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&driver),
                               APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY) ||
           GetLastError() == ERROR_PRINTER_DRIVER_ALREADY_INSTALLED;
}

} // namespace

TestPrinter::TestPrinter(const std::string& port, const std::string& name)
{
    EXPECT_TRUE(AddDriver()) << "error " << GetLastError();
    const std::string driver = DriverName;
    const std::string processor = "wineps";
    const std::string type = "RAW";
    PRINTER_INFO_2A printer = {};
    printer.pPrinterName = Name(name);
    printer.pPortName = Name(port);
    printer.pDriverName = Name(driver);
    printer.pPrintProcessor = Name(processor);
    printer.pDatatype = Name(type);
    Handle = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
    EXPECT_NE(Handle, nullptr) << "error " << GetLastError();
    EXPECT_TRUE(SetDefaultPrinterA(name.c_str())) << "error " << GetLastError();
}

TestPrinter::~TestPrinter()
{
    Remove();
}

void TestPrinter::Remove()
{
    if (Handle != nullptr) {
        EXPECT_TRUE(DeletePrinter(Handle)) << "error " << GetLastError();
        ClosePrinter(Handle);
        Handle = nullptr;
    }
}

NoSpoolDirectory::NoSpoolDirectory()
{
    char system[MAX_PATH] = "";
    GetSystemDirectoryA(system, sizeof system);
    Directory = system + std::string("\\spool\\PRINTERS");
    Aside = Directory + ".aside";
    EXPECT_TRUE(MoveFileA(Directory.c_str(), Aside.c_str())) << "error " << GetLastError();
}

NoSpoolDirectory::~NoSpoolDirectory()
{
    EXPECT_TRUE(MoveFileA(Aside.c_str(), Directory.c_str())) << "error " << GetLastError();
}
