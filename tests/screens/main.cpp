#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "toolkit/application.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!toolkit::OpenDisplay()) {
        std::fputs("These tests need an X11 display, and none could be opened.\n", stderr);
        return EXIT_FAILURE;
    }
    return RUN_ALL_TESTS();
}
