#include "procedures/property_notes.h"

#include "model/ideal_gas.h"
#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

using toolkit::numberText;

std::string shownNumber(const std::optional<double>& value) {
    constexpr int digits = 10;
    return value ? toolkit::significantText(*value, digits) : "---";
}

std::string linesOf(std::initializer_list<std::string> sentences) {
    std::string lines;
    for (const std::string& sentence : sentences) {
        lines += lines.empty() || sentence.empty() ? "" : "\n";
        lines += sentence;
    }
    return lines;
}

std::string outsideRangeSentence(double T) {
    constexpr auto range = fluid::IdealGasRange;
    if (T >= range.lowest && T <= range.highest) {
        return "";
    }
    return "The ideal-gas data reach from " + numberText(range.lowest) + " to " +
           numberText(range.highest) +
           " Kelvin; outside this range the heat capacity is that at its end.";
}

std::string missingSentence(double V, double b) {
    return V > b ? "--- stands for a value that is infinite or too large for a number."
                 : "--- because the molar volume is not larger than the co-volume " +
                       numberText(b) + " " + volumeUnit + ".";
}

}  // namespace procedures
