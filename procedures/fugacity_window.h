#pragma once

#include "procedures/fugacity_screen.h"

namespace procedures {

/// The fugacity and the fugacity coefficient of each component of the mixture.
class FugacityWindow : public FugacityScreen {
  public:
    explicit FugacityWindow(toolkit::ScreenHost& host);

    void Event_Activate() override;

  protected:
    void showRoot(const StatePoint& state, double V) override;
};

}  // namespace procedures
