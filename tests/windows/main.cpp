#include "harness/program.h"
#include "harness/scratch.h"
#include "support/second_try.h"

#include <gtest/gtest.h>
#include <optional>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    static std::optional<ScratchDirectory> scratch;
    static std::optional<SettingsFileKeeper> settings;
    scratch.emplace();
    settings.emplace();
    return RunAllTestsWithSecondTry([] {
        EndProgram();
        settings.reset();
        scratch.reset();
    });
}
