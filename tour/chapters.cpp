#include "tour/guide.h"

namespace tour {

namespace {

// Chooses a procedure on the composition screen and goes on to its screen.
void ChooseProcedure(const Guide& guide, Robot& robot, const char* button, const char* screen) {
    robot.use("Start2Window");
    guide.click(button);
    guide.click("Continue1");
    robot.use(screen);
}

// The state of the examples in which the mixture has three real volumes.
void SolveAt220Kelvin(const Guide& guide) {
    guide.enter("dataEntryT", "220");
    guide.enter("dataEntryP", "3");
    guide.click("calculate");
    guide.read("Choice0");
    guide.read("Choice1");
    guide.read("Choice2");
}

}  // namespace

void PlayStart(Guide& guide) {
    guide.chapter("The title screen");
    guide.robot().use("Start1Window");
    guide.takePicture("title");
    guide.click("continue");

    guide.chapter("The composition: carbon dioxide with 30 % methane");
    guide.robot().use("Start2Window");
    guide.enter("CO2number", "0.7");
    guide.enter("CH4number", "0.3");
    guide.read("Sum");
    guide.click("Pressures");
    guide.takePicture("composition");
}

void PlayPressures(Guide& guide) {
    guide.chapter("Pressures");
    ChooseProcedure(guide, guide.robot(), "Pressures", "PressureWindow");
    guide.enter("dataEntryV", "80");
    guide.read("DensityResult");
    guide.click("Celsius");
    guide.enter("dataEntryT", "25");
    guide.click("calculate");
    guide.read("Result");
    guide.takePicture("pressures");
}

void PlayTemperatures(Guide& guide) {
    guide.chapter("Temperatures");
    ChooseProcedure(guide, guide.robot(), "Temperatures", "TemperatureWindow");
    guide.click("kgm3");
    guide.enter("dataEntryV", "0.5");
    guide.read("DensityResult");
    guide.enter("dataEntryP", "25");
    guide.click("calculate");
    guide.read("ResultT");
    guide.click("Celsius");
    guide.read("ResultT");
    guide.takePicture("temperatures");
}

void PlayMolarVolumes(Guide& guide) {
    guide.chapter("Molar volumes");
    ChooseProcedure(guide, guide.robot(), "MolarVolumes", "VolumeWindow");
    SolveAt220Kelvin(guide);
    guide.click("Choice2");
    for (const char* const result :
         {"slope", "Result", "DensityResult", "ResultIdeal", "ExcessVol", "ListBox1", "warning"}) {
        guide.read(result);
    }
    guide.takePicture("molar-volumes");
}

void PlayFugacities(Guide& guide) {
    guide.chapter("Fugacities");
    ChooseProcedure(guide, guide.robot(), "Fugacities", "FugacityWindow");
    SolveAt220Kelvin(guide);
    guide.click("Choice2");
    guide.read("slope");
    guide.read("ListBox1");
    guide.takePicture("fugacities");
}

void PlayActivities(Guide& guide) {
    guide.chapter("Activities");
    ChooseProcedure(guide, guide.robot(), "Activities", "ActivityWindow");
    SolveAt220Kelvin(guide);
    guide.click("Choice2");
    guide.click("StandardChoice2");
    guide.enter("dataEntryPref2", "0.1");
    guide.click("PushButton1");
    guide.read("ListBox1");
    guide.takePicture("activities");
}

void PlayHomogenisation(Guide& guide) {
    guide.chapter("Homogenization conditions");
    ChooseProcedure(guide, guide.robot(), "Homogenisation", "BubbleDewPoint");
    guide.click("RadioButtonTh");
    guide.enter("dataEntryTh", "220");
    guide.click("LiquidMode");
    guide.click("FirstApproach");
    guide.read("dataEntry2");
    guide.click("calculate");
    for (const char* const result : {"Answer", "Iterations", "ListBoxVmX", "ListBoxVmY",
                                     "ListBoxPhaseX2", "ListBoxPhaseY2", "warning"}) {
        guide.read(result);
    }
    guide.takePicture("homogenization-conditions");
    guide.click("Explanations");
    guide.robot().use("ExplainFirst");
    guide.takePicture("explanation-homogenization");
}

void PlayLiquidVapour(Guide& guide) {
    guide.chapter("Liquid-vapour equilibria");
    ChooseProcedure(guide, guide.robot(), "LiquidVapour", "LiquidVapourEq");
    guide.enter("dataEntryT", "220");
    guide.enter("dataEntryV", "150");
    guide.click("CalFirstApproach");
    guide.read("dataEntryP");
    guide.click("calculate");
    for (const char* const result : {"Answer", "iterations", "ListBoxFracX", "ListBoxFracY",
                                     "ListBoxPhaseX2", "ListBoxPhaseY2", "warning"}) {
        guide.read(result);
    }
    guide.takePicture("liquid-vapour-equilibria");
    guide.click("PushButton1");
    guide.robot().use("ExplainSecond");
    guide.takePicture("explanation-liquid-vapour");
}

void PlayThermodynamics(Guide& guide) {
    guide.chapter("Thermodynamic properties");
    ChooseProcedure(guide, guide.robot(), "Thermodynamics", "ThermodynamicWindow");
    SolveAt220Kelvin(guide);
    guide.read("State");
    guide.read("ListBox1");
    guide.takePicture("thermodynamic-properties");
}

void PlayChemicalPotentials(Guide& guide) {
    guide.chapter("Chemical potentials");
    ChooseProcedure(guide, guide.robot(), "ChemicalPotentials", "ChemPotWindow");
    SolveAt220Kelvin(guide);
    guide.read("State");
    guide.read("ListBox1");
    guide.takePicture("chemical-potentials");
}

void PlayIsochores(Guide& guide) {
    guide.chapter("Isochores");
    ChooseProcedure(guide, guide.robot(), "Isochores", "IsochoreWindow");
    guide.enter("dataEntryV", "80");
    guide.enter("dataEntryT1", "200");
    guide.enter("dataEntryT2", "400");
    guide.enter("dataEntryStep", "10");
    guide.click("calculate");
    guide.read("Homogenisation");
    guide.read("ListBox1");
    guide.takePicture("isochores");
}

void PlayIsotherms(Guide& guide) {
    guide.chapter("Isotherms");
    ChooseProcedure(guide, guide.robot(), "Isotherms", "IsothermWindow");
    guide.enter("dataEntryT", "220");
    guide.enter("dataEntryV1", "60");
    guide.enter("dataEntryV2", "800");
    guide.enter("dataEntryStep", "5");
    guide.click("calculate");
    guide.read("Boundaries");
    guide.takePicture("isotherms");
}

void PlayCriticalPoint(Guide& guide) {
    guide.chapter("Critical points");
    ChooseProcedure(guide, guide.robot(), "CriticalPoint", "CriticalPointWindow");
    guide.read("Count");
    guide.read("ListBox1");
    guide.read("ResultT");
    guide.takePicture("critical-point");
    guide.click("Explanations");
    guide.robot().use("ExplainCritical");
    guide.takePicture("explanation-critical-point");
}

void PlaySpinodal(Guide& guide) {
    guide.chapter("Spinodal");
    ChooseProcedure(guide, guide.robot(), "Spinodal", "SpinodalWindow");
    guide.enter("dataEntryT", "220");
    guide.click("calculate");
    guide.read("ListBox1");
    guide.takePicture("spinodal");
    guide.click("GivenV");
    guide.enter("dataEntryV", "80");
    guide.click("calculate");
    guide.read("ListBox1");
    guide.click("Explanations");
    guide.robot().use("ExplainSpinodal");
    guide.takePicture("explanation-spinodal");
}

}  // namespace tour
