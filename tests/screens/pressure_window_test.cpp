#include <cmath>

#include "model/fluid_model.h"
#include "tests/screens/screen_test.h"

namespace {

class PressureWindowTest : public tests::ScreenTest {};

// Independent of the program: CO2 0.7, CH4 0.3 at 298.15 K and 80 cm3/mol, by 40-digit arithmetic.
TEST_F(PressureWindowTest, ShowsThePressureOfTheTypedState) {
    openProcedure({{"CO2", "0.7"}, {"CH4", "0.3"}}, "Pressures", "PressureWindow");
    robot.enter("dataEntryV", "80");
    robot.enter("dataEntryT", "298.15");
    robot.press("Return");
    EXPECT_NEAR(number("Result"), 16.577192150319938, 1e-12);
}

}  // namespace
