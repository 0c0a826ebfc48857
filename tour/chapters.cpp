#include "tour/guide.h"

namespace tour {

namespace {

/// Chooses a procedure on the composition screen and goes on to its screen.
void chooseProcedure(const Guide& guide, Robot& robot, const char* button, const char* screen) {
    robot.use("Start2Window");
    guide.click(button);
    guide.click("Continue1");
    robot.use(screen);
}

/// The state of the examples in which the mixture has three real volumes.
void solveAt220Kelvin(const Guide& guide) {
    guide.enter("dataEntryT", "220");
    guide.enter("dataEntryP", "3");
    guide.click("calculate");
    guide.read("Choice0");
    guide.read("Choice1");
    guide.read("Choice2");
}

}  // namespace

void playStart(Guide& guide) {
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

void playPressures(Guide& guide) {
    guide.chapter("Pressures");
    chooseProcedure(guide, guide.robot(), "Pressures", "PressureWindow");
    guide.enter("dataEntryV", "80");
    guide.read("DensityResult");
    guide.click("Celsius");
    guide.enter("dataEntryT", "25");
    guide.click("calculate");
    guide.read("Result");
    guide.takePicture("pressures");
}

void playTemperatures(Guide& guide) {
    guide.chapter("Temperatures");
    chooseProcedure(guide, guide.robot(), "Temperatures", "TemperatureWindow");
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

void playMolarVolumes(Guide& guide) {
    guide.chapter("Molar volumes");
    chooseProcedure(guide, guide.robot(), "MolarVolumes", "VolumeWindow");
    solveAt220Kelvin(guide);
    guide.click("Choice2");
    for (const char* const result :
         {"slope", "Result", "DensityResult", "ResultIdeal", "ExcessVol", "ListBox1", "warning"}) {
        guide.read(result);
    }
    guide.takePicture("molar-volumes");
}

void playFugacities(Guide& guide) {
    guide.chapter("Fugacities");
    chooseProcedure(guide, guide.robot(), "Fugacities", "FugacityWindow");
    solveAt220Kelvin(guide);
    guide.click("Choice2");
    guide.read("slope");
    guide.read("ListBox1");
    guide.takePicture("fugacities");
}

void playActivities(Guide& guide) {
    guide.chapter("Activities");
    chooseProcedure(guide, guide.robot(), "Activities", "ActivityWindow");
    solveAt220Kelvin(guide);
    guide.click("Choice2");
    guide.click("StandardChoice2");
    guide.enter("dataEntryPref2", "0.1");
    guide.click("PushButton1");
    guide.read("ListBox1");
    guide.takePicture("activities");
}

void playHomogenisation(Guide& guide) {
    guide.chapter("Homogenization conditions");
    chooseProcedure(guide, guide.robot(), "Homogenisation", "BubbleDewPoint");
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

void playLiquidVapour(Guide& guide) {
    guide.chapter("Liquid-vapour equilibria");
    chooseProcedure(guide, guide.robot(), "LiquidVapour", "LiquidVapourEq");
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

void playThermodynamics(Guide& guide) {
    guide.chapter("Thermodynamic properties");
    chooseProcedure(guide, guide.robot(), "Thermodynamics", "ThermodynamicWindow");
    solveAt220Kelvin(guide);
    guide.read("State");
    guide.read("ListBox1");
    guide.takePicture("thermodynamic-properties");
}

void playChemicalPotentials(Guide& guide) {
    guide.chapter("Chemical potentials");
    chooseProcedure(guide, guide.robot(), "ChemicalPotentials", "ChemPotWindow");
    solveAt220Kelvin(guide);
    guide.read("State");
    guide.read("ListBox1");
    guide.takePicture("chemical-potentials");
}

void playIsochores(Guide& guide) {
    guide.chapter("Isochores");
    chooseProcedure(guide, guide.robot(), "Isochores", "IsochoreWindow");
    guide.enter("dataEntryV", "80");
    guide.enter("dataEntryT1", "200");
    guide.enter("dataEntryT2", "400");
    guide.enter("dataEntryStep", "10");
    guide.click("calculate");
    guide.read("Homogenisation");
    guide.read("ListBox1");
    guide.takePicture("isochores");
}

void playIsotherms(Guide& guide) {
    guide.chapter("Isotherms");
    chooseProcedure(guide, guide.robot(), "Isotherms", "IsothermWindow");
    guide.enter("dataEntryT", "220");
    guide.enter("dataEntryV1", "60");
    guide.enter("dataEntryV2", "800");
    guide.enter("dataEntryStep", "5");
    guide.click("calculate");
    guide.read("Boundaries");
    guide.takePicture("isotherms");
}

void playCriticalPoint(Guide& guide) {
    guide.chapter("Critical points");
    chooseProcedure(guide, guide.robot(), "CriticalPoint", "CriticalPointWindow");
    guide.read("Count");
    guide.read("ListBox1");
    guide.read("ResultT");
    guide.takePicture("critical-point");
    guide.click("Explanations");
    guide.robot().use("ExplainCritical");
    guide.takePicture("explanation-critical-point");
}

void playSpinodal(Guide& guide) {
    guide.chapter("Spinodal");
    chooseProcedure(guide, guide.robot(), "Spinodal", "SpinodalWindow");
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
