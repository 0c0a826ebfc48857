#pragma once

namespace procedures {

// A temperature in K and a pressure in MPa as a user has typed them, both above 0.
struct TypedState {
    double T = 0.0;
    double P = 0.0;
};

}  // namespace procedures
