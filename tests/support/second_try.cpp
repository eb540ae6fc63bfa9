#include "support/second_try.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

namespace {

constexpr std::size_t MostTried = 3; // more than that is no accident
const char Wanted[] = "KESTOVAR_SECOND_TRY";

std::vector<std::string> FailedTests()
{
    std::vector<std::string> names;
    const testing::UnitTest& all = *testing::UnitTest::GetInstance();
    for (int i = 0; i < all.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *all.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j) {
            const testing::TestInfo& test = *suite.GetTestInfo(j);
            if (test.should_run() && test.result()->Failed()) {
                names.push_back(std::string(suite.name()) + "." + test.name());
            }
        }
    }
    return names;
}

// The exit status of a new process of this program that runs these tests; failed when it could not be started.
int RunAlone(const std::vector<std::string>& names, int failed)
{
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string commandLine = "\"" + std::string(path) + "\" --gtest_filter=";
    for (const std::string& name : names) {
        commandLine += name + ":";
    }
    for (const char* const variable : {Wanted, "GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX"}) {
        SetEnvironmentVariableA(variable, nullptr);
    }
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(path, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        return failed;
    }
    DWORD status = static_cast<DWORD>(failed);
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

} // namespace

int RunAllTestsWithSecondTry(void (*cleanUp)())
{
    const bool wanted = GetEnvironmentVariableA(Wanted, nullptr, 0) != 0;
    const int result = RUN_ALL_TESTS();
    cleanUp();
    const std::vector<std::string> failed = FailedTests();
    if (!wanted || failed.empty() || failed.size() > MostTried) {
        return result;
    }
    printf("[ AGAIN    ] %u\n", static_cast<unsigned>(failed.size()));
    fflush(stdout);
    return RunAlone(failed, result);
}
