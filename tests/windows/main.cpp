#include "harness/program.h"
#include "harness/scratch.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const ScratchDirectory scratch;
    const SettingsFileKeeper settings;
    const int result = RUN_ALL_TESTS();
    EndProgram();
    return result;
}
