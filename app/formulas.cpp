#include "app/formulas.h"

#include <string>
#include <vector>

namespace app {

using toolkit::Formula;
using toolkit::formula::brackets;
using toolkit::formula::fraction;
using toolkit::formula::integral;
using toolkit::formula::join;
using toolkit::formula::operation;
using toolkit::formula::parentheses;
using toolkit::formula::relation;
using toolkit::formula::root;
using toolkit::formula::space;
using toolkit::formula::sub;
using toolkit::formula::subsup;
using toolkit::formula::sum;
using toolkit::formula::sup;
using toolkit::formula::text;
using toolkit::formula::variable;

namespace {

Formula indexed(const std::string& quantity, const std::string& index) {
    return sub(variable(quantity), variable(index));
}

Formula squared(const Formula& base) {
    return sup(base, text("2"));
}

Formula critical(const std::string& quantity) {
    return sub(variable(quantity), join({text("c,"), variable("i")}));
}

}  // namespace

Formula chemicalFormula(std::string_view formula) {
    std::vector<Formula> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i < formula.size(); ++i) {
        if (formula[i] >= '0' && formula[i] <= '9') {
            parts.push_back(sub(text(std::string(formula.substr(start, i - start))),
                                text(std::string(formula.substr(i, 1)))));
            start = i + 1;
        }
    }
    if (start < formula.size()) {
        parts.push_back(text(std::string(formula.substr(start))));
    }
    return join(parts);
}

Formula fluidSystemFormula() {
    std::vector<Formula> parts;
    for (const std::string_view gas :
         {"H2O", "CO2", "CH4", "N2", "C2H6", "H2S", "NH3", "H2", "O2", "CO", "Ar"}) {
        if (!parts.empty()) {
            parts.push_back(operation("–"));
        }
        parts.push_back(chemicalFormula(gas));
    }
    return join(parts);
}

Formula equationFormula() {
    return join({variable("P"), relation("="),
                 fraction(variable("RT"), join({variable("V"), operation("−"), variable("b")})),
                 operation("−"), fraction(variable("a"), squared(variable("V")))});
}

Formula mixingRulesFormula() {
    const Formula i = variable("i");
    const Formula j = variable("j");
    return join({variable("a"),
                 relation("="),
                 sum(i),
                 sum(j),
                 indexed("x", "i"),
                 space(0.1),
                 indexed("x", "j"),
                 space(0.1),
                 indexed("a", "ij"),
                 text(","),
                 space(1.2),
                 indexed("a", "ij"),
                 relation("="),
                 root(join({indexed("a", "i"), space(0.1), indexed("a", "j")})),
                 text(","),
                 space(1.2),
                 variable("b"),
                 relation("="),
                 sum(i),
                 indexed("x", "i"),
                 space(0.1),
                 indexed("b", "i")});
}

Formula pureGasParametersFormula() {
    return join(
        {indexed("a", "i"), relation("="),
         fraction(join({text("27"), space(0.1), squared(variable("R")), space(0.1),
                        subsup(variable("T"), join({text("c,"), variable("i")}), text("2"))}),
                  join({text("64"), space(0.1), critical("P")})),
         text(","), space(1.2), indexed("b", "i"), relation("="),
         fraction(join({variable("R"), space(0.1), critical("T")}),
                  join({text("8"), space(0.1), critical("P")}))});
}

Formula fugacityFormula() {
    const Formula derivative =
        sub(parentheses(
                fraction(join({text("∂"), variable("P")}), join({text("∂"), indexed("n", "i")}))),
            join({variable("T"), text(", "), variable("V"), text(", "), indexed("n", "j")}));
    return join(
        {variable("RT"), space(0.15), text("ln"), space(0.15), indexed("φ", "i"), relation("="),
         integral(variable("V"), text("∞")), space(0.15),
         brackets(join({derivative, operation("−"), fraction(variable("RT"), variable("V"))})),
         space(0.1), text("d"), variable("V"), operation("−"), variable("RT"), space(0.15),
         text("ln"), space(0.15), variable("Z")});
}

}  // namespace app
