#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "toolkit/application.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!toolkit::openDisplay()) {
        std::fputs("These tests need an X11 display, and none could be opened.\n", stderr);
        return EXIT_FAILURE;
    }
    const int status = RUN_ALL_TESTS();
    if (testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::fputs("There is no such test.\n", stderr);
        return EXIT_FAILURE;
    }
    return status;
}
