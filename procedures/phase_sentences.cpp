#include "procedures/phase_sentences.h"

#include "toolkit/number_text.h"

namespace procedures {

std::string sentenceText(double value) {
    constexpr int digits = 9;
    return toolkit::significantText(value, digits);
}

std::string pointName(const fluid::BoundaryPoint& point) {
    if (point.twoLiquids) {
        return "liquid-liquid point";
    }
    return point.kind() == fluid::Homogenisation::IntoLiquid ? "bubble point" : "dew point";
}

std::string hiddenLiquidsSentence(const std::string& value) {
    return "two liquids are stable here, at " + value +
           "; the roots of a liquid and a vapour cannot hold them";
}

}  // namespace procedures
