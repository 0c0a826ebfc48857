#include "procedures/explanations.h"

#include <utility>

namespace procedures {

namespace {

constexpr int lineWidth = 72;  // characters

const char* const phasesText =
    "Phase X is the liquid-like phase and phase Y the vapour-like phase: the molar volume of X is "
    "the smallest, that of Y the largest root of the van der Waals equation at the same "
    "temperature and pressure. In equilibrium every gas has the same fugacity in both.";

const char* const editText =
    "You may change the first approach: type another value, or click a fraction in a list (or "
    "choose its row and press Enter) to type another one; Escape leaves it as it was. The "
    "fractions "
    "of a phase need not add up to one; the calculation divides them by their sum.";

const char* const homogenisationText =
    "A fluid inclusion homogenizes where its last trace of a second phase disappears: into "
    "the liquid phase on the bubble-point curve, where the last bubble goes, or into the "
    "vapour phase on the dew-point curve, where the last film of liquid goes. Choose which "
    "of temperature and pressure you know, type it, choose the phase and press \"calculate\".";

const char* const homogenisationApproachText =
    "The first approach is where the calculation starts; it is made by its own button, or by "
    "\"calculate\" where there is none yet. It is searched for among all phases that the van der "
    "Waals equation allows; where a point exists, the calculation "
    "ends on it after a few steps. The value shown lies a little beside the solution (5 % "
    "of the pressure, or 5 degrees), because the first step of the calculation goes that "
    "far. Where there is more than one point, press \"first approach\" again to go on to "
    "the next. At some points both phases are liquids; a line under the buttons says so.";

const char* const equilibriumText =
    "A fluid inclusion keeps its volume and its substance: its composition and its bulk "
    "density (or molar volume) are known. At a given temperature it is either one "
    "homogeneous fluid or splits into a liquid and a vapour. Type the temperature and the "
    "density, press \"first approach\" and then \"calculate\" for the pressure, the two phases and "
    "how much of the volume the vapour takes.";

const char* const equilibriumApproachText =
    "The first approach is where the calculation starts: a pressure, the volume fraction of "
    "the vapour and the composition of both phases. It is made by its own button, and is searched "
    "for among all phases that the van der Waals equation allows. A line says when the fluid is "
    "homogeneous. What is "
    "shown then is only an estimate, and the calculation ends on two phases that cannot make up "
    "this density, with \"error\" for their volume fractions, or on two equal ones.";

const char* const homogenisationTroubleText =
    "No solution? A line under the buttons says when no point exists for this composition: "
    "above the highest temperature or pressure of the two-phase field there is nothing to "
    "homogenize. Try another temperature or pressure, or the other phase. A trivial "
    "solution is one in which both phases have become the same; a first approach with "
    "phases that differ more avoids it. A meta-stable solution is a true equilibrium of two "
    "phases, but the fluid would rather split in another way.";

const char* const equilibriumTroubleText =
    "No solution? Press \"first approach\" again to undo your own changes, or choose "
    "another temperature or density. A trivial solution is one in which both phases have become "
    "the "
    "same. A volume fraction below 0 or above 1 means that the fluid of this density is "
    "homogeneous at this temperature. A meta-stable solution is a true equilibrium of two "
    "phases, but the fluid would rather split in another way, for instance into three.";

const char* const spinodalText =
    "A fluid can be disturbed in small ways: a little denser here, a little richer in one gas "
    "there. A stable or meta-stable fluid smooths such differences out. On the spinodal it stops "
    "doing so, and beyond it the smallest difference grows by itself until the fluid has split. "
    "A fluid inclusion may be cooled past its homogenization temperature without a bubble, but "
    "never past its spinodal.";

const char* const spinodalKindsText =
    "Two limits are listed. At the mechanical spinodal the pressure would rise with the volume: "
    "the fluid as a whole can no longer hold its density. At the diffusional spinodal parts of "
    "different composition draw apart, gas by gas. In a mixture the diffusional spinodal is always "
    "reached first, so it is the one that counts; the mechanical one lies inside it. For a pure "
    "gas both are the same.";

const char* const spinodalSidesText =
    "At the liquid side of the unstable states a dense fluid reaches its limit when it expands, or "
    "when it is cooled in its inclusion; the pressure there may be negative, which is tension: the "
    "liquid is stretched. At the vapour side a dilute fluid reaches its limit when it is "
    "compressed or cooled. There may be one limit or three instead of two, because some mixtures, "
    "for instance of water with a gas, split at any pressure. Both sides meet at the highest "
    "temperature of the spinodal.";

const char* const spinodalUseText =
    "Choose what you know: a temperature gives all molar volumes at which the fluid reaches a "
    "limit, a molar volume (or a density) gives the temperature below which it is unstable, and a "
    "range of temperatures gives a table that you can export. The curves are drawn over "
    "temperature or over molar volume. Very high pressures are left out of the plot, but not of "
    "the table.";

const char* const criticalText =
    "At a critical point a liquid and its vapour, or two liquids, become one and the same: the "
    "bubble-point curve meets the dew-point curve. An inclusion whose molar volume is the "
    "critical one does not homogenize by a bubble that shrinks or grows; the meniscus fades away "
    "in the middle. A pure gas has one critical point. A mixture may have none, one or more, up to "
    "four in this model, and all of them are listed.";

const char* const criticalFindingText =
    "They are found by two conditions: the fluid is on its spinodal, the limit beyond which small "
    "differences grow by themselves, and it is where this limit touches the phase boundary rather "
    "than lying inside it. For the van der Waals equation the two conditions together are one "
    "equation of the fourth degree for the molar volume; all of its roots are calculated.";

const char* const criticalStateText =
    "A critical point is stable if the fluid there would not rather split in another way; only "
    "such a point can be seen in an inclusion. It is meta-stable if it withstands small changes, "
    "but a very different phase would be more stable. It is unstable if even small changes grow; "
    "such points belong to the mathematics, not to the laboratory. Points that are not examined "
    "lie at temperatures so low that the fugacities of the phases exceed all numbers. A negative "
    "pressure is tension, and no fluid is stable there.";

const char* const criticalPlotText =
    "The pseudo-critical point is that of a pure gas with the a and b of the mixture: a measure "
    "for comparisons, at which nothing happens to the mixture itself. The plot shows the bubble "
    "points and dew points of this composition, calculated from molar volume to molar volume so "
    "that the curve runs through the critical point, and its spinodal, which touches the curve "
    "there. Choose \"low pressures\" where a critical point at a very high or a negative pressure "
    "leaves too little room for the others.";

}  // namespace

ExplanationScreen::ExplanationScreen(toolkit::ScreenHost& host, const std::string& name,
                                     const std::string& title, const std::string& heading,
                                     const std::vector<std::string>& paragraphs)
    : Screen(host, name, title) {
    std::vector<toolkit::Block> blocks;
    labels_.push_back(std::make_unique<toolkit::Heading>("Heading", heading));
    blocks.emplace_back(*labels_.back());
    for (const std::string& paragraph : paragraphs) {
        auto text = std::make_unique<toolkit::ResultLabel>(
            "Paragraph" + std::to_string(labels_.size()), paragraph);
        text->setUnobtrusive();
        text->wrapAt(lineWidth);
        blocks.emplace_back(*text);
        labels_.push_back(std::move(text));
    }
    setContent(toolkit::Column(blocks, toolkit::Spacing::Group));
}

ExplainFirst::ExplainFirst(toolkit::ScreenHost& host)
    : ExplanationScreen(host, "ExplainFirst", "Explanation - Homogenization conditions - Drovan W",
                        "Homogenization conditions",
                        {homogenisationText, phasesText, homogenisationApproachText, editText,
                         homogenisationTroubleText}) {}

ExplainSecond::ExplainSecond(toolkit::ScreenHost& host)
    : ExplanationScreen(host, "ExplainSecond", "Explanation - Liquid-Vapour equilibria - Drovan W",
                        "Liquid-Vapour equilibria",
                        {equilibriumText, phasesText, equilibriumApproachText, editText,
                         equilibriumTroubleText}) {}

ExplainSpinodal::ExplainSpinodal(toolkit::ScreenHost& host)
    : ExplanationScreen(host, "ExplainSpinodal", "Explanation - Spinodal - Drovan W", "Spinodal",
                        {spinodalText, spinodalKindsText, spinodalSidesText, spinodalUseText}) {}

ExplainCritical::ExplainCritical(toolkit::ScreenHost& host)
    : ExplanationScreen(host, "ExplainCritical", "Explanation - Critical Point - Drovan W",
                        "Critical Point",
                        {criticalText, criticalFindingText, criticalStateText, criticalPlotText}) {}

}  // namespace procedures
