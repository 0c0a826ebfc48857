#include "procedures/phase_sentences.h"

#include "toolkit/number_text.h"

namespace procedures {

std::string SentenceText(double value) {
    constexpr int digits = 9;
    return toolkit::SignificantText(value, digits);
}

std::string PointName(const fluid::BoundaryPoint& point) {
    if (point.twoLiquids) return "liquid-liquid point";
    return point.kind() == fluid::Homogenisation::IntoLiquid ? "bubble point" : "dew point";
}

std::string HiddenLiquidsSentence(const std::string& value) {
    return "two liquids are stable here, at " + value +
           "; the roots of a liquid and a vapour cannot hold them";
}

}  // namespace procedures
