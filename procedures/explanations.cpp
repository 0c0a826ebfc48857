#include "procedures/explanations.h"

namespace procedures {

namespace {

constexpr int lineWidth = 72;  // characters

const char* const phasesText =
    "Phase X is the liquid-like phase and phase Y the vapour-like phase: the molar volume of X is "
    "the smallest, that of Y the largest root of the van der Waals equation at the same "
    "temperature and pressure. In equilibrium every gas has the same fugacity in both.";

const char* const editText =
    "You may change the first approach: type another value, or choose a row of a list and press "
    "Enter (or click its fraction) to type another fraction. The fractions of a phase need not add "
    "up to one; the calculation divides them by their sum.";

const char* const homogenisationText =
    "A fluid inclusion homogenizes where its last trace of a second phase disappears: into "
    "the liquid phase on the bubble-point curve, where the last bubble goes, or into the "
    "vapour phase on the dew-point curve, where the last film of liquid goes. Choose which "
    "of temperature and pressure you know, type it, choose the phase, press \"first "
    "approach\" and then \"calculate\".";

const char* const homogenisationApproachText =
    "The first approach is where the calculation starts. It is searched for among all "
    "phases that the van der Waals equation allows; where a point exists, the calculation "
    "ends on it after a few steps. The value shown lies a little beside the solution (5 % "
    "of the pressure, or 5 degrees), because the first step of the calculation goes that "
    "far. Where there is more than one point, press \"first approach\" again to go on to "
    "the next.";

const char* const equilibriumText =
    "A fluid inclusion keeps its volume and its substance: its composition and its bulk "
    "density (or molar volume) are known. At a given temperature it is either one "
    "homogeneous fluid or splits into a liquid and a vapour. Type the temperature and the "
    "density, press \"first approach\" and then \"calculate\" for the pressure, the two "
    "phases and how much of the volume the vapour takes.";

const char* const equilibriumApproachText =
    "The first approach is where the calculation starts: a pressure, the volume fraction of "
    "the vapour and the composition of both phases. It is searched for among all phases "
    "that the van der Waals equation allows. A line says when the fluid is homogeneous; "
    "what is shown then is only an estimate, and the calculation will not find two phases.";

const char* const homogenisationTroubleText =
    "No solution? A line under the buttons says when no point exists for this composition: "
    "above the highest temperature or pressure of the two-phase field there is nothing to "
    "homogenize. Try another temperature or pressure, or the other phase. A trivial "
    "solution is one in which both phases have become the same; a first approach with "
    "phases that differ more avoids it. A meta-stable solution is a true equilibrium of two "
    "phases, but the fluid would rather split in another way.";

const char* const equilibriumTroubleText =
    "No solution? Press \"first approach\" again to undo your own changes, or choose "
    "another "
    "temperature or density. A trivial solution is one in which both phases have become the "
    "same. A volume fraction below 0 or above 1 means that the fluid of this density is "
    "homogeneous at this temperature. A meta-stable solution is a true equilibrium of two "
    "phases, but the fluid would rather split in another way, for instance into three.";

}  // namespace

ExplanationScreen::ExplanationScreen(toolkit::ScreenHost& host, const std::string& name,
                                     const std::string& title, const std::string& heading,
                                     const std::vector<std::string>& paragraphs)
    : Screen(host, name, title) {
    std::vector<toolkit::Block> blocks;
    labels_.push_back(std::make_unique<toolkit::Heading>("Heading", heading));
    blocks.emplace_back(*labels_.back());
    for (const std::string& paragraph : paragraphs) {
        labels_.push_back(std::make_unique<toolkit::Label>(
            "Paragraph" + std::to_string(labels_.size()), paragraph));
        labels_.back()->wrapAt(lineWidth);
        blocks.emplace_back(*labels_.back());
    }
    setContent(toolkit::column(blocks, toolkit::Spacing::group));
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

}  // namespace procedures
