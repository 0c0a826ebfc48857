#pragma once

#include <optional>
#include <string>

#include "model/fluid_model.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/list.h"

namespace procedures {

/// The first approach to the composition of one phase: a list whose fractions the user may edit.
class ApproachList {
  public:
    /// `phase`: "X" or "Y".
    explicit ApproachList(const std::string& phase);

    toolkit::Block block();
    void show(const fluid::ComponentValues& fractions);
    void clear() { list.clear(); }
    /// The fractions in the list at the compact positions; nothing where one of them is no number
    /// from 0 to 1, or where the list is empty.
    std::optional<fluid::ComponentValues> fractions() const;

  private:
    toolkit::Label caption_;

  public:
    toolkit::List list;
};

/// A phase of the result: its heading, molar volume, density and composition.
class PhaseResult {
  public:
    /// `withFraction`: whether the share of the phase in the volume is shown as well.
    PhaseResult(std::string phase, bool withFraction);

    toolkit::Block block();
    void showUnits();
    /// Empties the lists, and the heading to "Phase X" or "Phase Y".
    void clear();
    /// `V` in cm3/mol, `volumeFraction` as it is to be shown.
    void show(const fluid::ComponentValues& fractions, double V,
              const std::string& volumeFraction = {});
    /// Adds to the heading "Phase X" or "Phase Y".
    void setRole(const std::string& role) { heading.setText("Phase " + phase_ + role); }

  private:
    std::string phase_;
    bool withFraction_;

  public:
    toolkit::Heading heading;
    toolkit::List volume;
    toolkit::List density;
    toolkit::List volumeFraction;
    toolkit::List gases;
    toolkit::List fractions;
};

}  // namespace procedures
