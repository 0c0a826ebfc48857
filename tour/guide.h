#pragma once

#include <string>
#include <string_view>

#include "tour/robot.h"

namespace tour {

// Plays the worked example: does what a user does, tells each entry and result on stdout, and
// saves a picture of each screen.
class Guide {
  public:
    // `folder`: where the pictures go; it has to exist.
    Guide(Robot& robot, std::string folder);

    Robot& robot() { return robot_; }
    // Tells what comes next.
    void chapter(std::string_view title) const;
    // Types into an entry, and tells so.
    void enter(std::string_view entry, std::string_view characters) const;
    void click(std::string_view control) const;
    // Tells what a control shows.
    void read(std::string_view control) const;
    // Saves a picture of the screen in use, with its frame, as `name`.png.
    void takePicture(const std::string& name) const;

  private:
    Robot& robot_;
    std::string folder_;
};

// The chapters, in the order in which a new user would go through the program.
void PlayStart(Guide& guide);
void PlayPressures(Guide& guide);
void PlayTemperatures(Guide& guide);
void PlayMolarVolumes(Guide& guide);
void PlayFugacities(Guide& guide);
void PlayActivities(Guide& guide);
void PlayHomogenisation(Guide& guide);
void PlayLiquidVapour(Guide& guide);
void PlayIsochores(Guide& guide);
void PlayIsotherms(Guide& guide);
void PlayCriticalPoint(Guide& guide);
void PlaySpinodal(Guide& guide);
void PlayThermodynamics(Guide& guide);
void PlayChemicalPotentials(Guide& guide);

}  // namespace tour
