#include "tour/guide.h"

namespace tour {

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
}

void playPressures(Guide& guide) {
    guide.chapter("Pressures");
    guide.robot().use("Start2Window");
    guide.click("Pressures");
    guide.takePicture("composition");
    guide.click("Continue1");
    guide.robot().use("PressureWindow");
    guide.enter("dataEntryV", "80");
    guide.read("DensityResult");
    guide.click("Celsius");
    guide.enter("dataEntryT", "25");
    guide.click("calculate");
    guide.read("Result");
    guide.takePicture("pressures");
}

}  // namespace tour
