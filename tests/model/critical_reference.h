#pragma once

#include <vector>

// The two conditions of a critical point of the model's composition, written apart from the model
// in long double: t_i = V·√a_i - b_i·√a with V = b + w, for the free volume w in cm3/mol.
class CriticalReference {
  public:
    CriticalReference();

    // V·<t³> - 3·<b·t>·<t²> in units of the sum of its terms without their signs.
    long double condition(long double w) const;
    // The temperature in K of the spinodal, 2·<t²>/(R·V³).
    long double temperature(long double w) const;
    // All roots of the condition, ascending: sign changes on a grid of steps of ln w, and where it
    // comes near 0 between two of them without a change, its extremum there.
    std::vector<double> roots(double step) const;

  private:
    struct Terms {
        long double value;
        long double size;
    };
    struct Component {
        long double x;
        long double s;
        long double b;
    };
    Terms terms(long double w) const;
    double between(long double low, long double high) const;
    long double nearestToZero(long double low, long double high) const;

    std::vector<Component> components_;
    long double s_ = 0.0L;
    long double b_ = 0.0L;
};
