#include "support/second_try.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new ScratchDirectory);
    return RunAllTestsWithSecondTry([] {});
}
