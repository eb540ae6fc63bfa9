// A printer of the system, for the tests: a PostScript driver that writes to a file.
#pragma once

#include <string>

// The system's default printer for as long as the object lives, and the only one. The test has failed when the system
// does not take it.
class TestPrinter {
public:
    // What is printed goes to the file at port, a new one for each job.
    explicit TestPrinter(const std::string& port, const std::string& name = "Test Printer");
    ~TestPrinter();
    TestPrinter(const TestPrinter&) = delete;
    TestPrinter& operator=(const TestPrinter&) = delete;

    // As somebody does who takes the printer away while the program runs.
    void Remove();

private:
    void* Handle = nullptr;
};

// The directory in which the system keeps what is printed, out of its reach for as long as the object lives: documents
// are refused.
class NoSpoolDirectory {
public:
    NoSpoolDirectory();
    ~NoSpoolDirectory();
    NoSpoolDirectory(const NoSpoolDirectory&) = delete;
    NoSpoolDirectory& operator=(const NoSpoolDirectory&) = delete;

private:
    std::string Directory;
    std::string Aside;
};
