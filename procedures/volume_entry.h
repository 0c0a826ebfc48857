#pragma once

#include <string>

#include "toolkit/button.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"

namespace procedures {

// The choice between molar volumes and densities; molar volumes at first.
class VolumeUnit {
  public:
    // `boxName`: the control name of the group box.
    explicit VolumeUnit(const std::string& boxName);

    // `function` runs when the unit has become the other one.
    template <class Object, class Base>
    void onChange(Object* object, void (Base::*function)()) {
        changed_ = toolkit::Member(object, function);
    }
    // The group box with its two buttons.
    toolkit::Block block();
    // The molar volume in cm3/mol that a number in the chosen unit stands for; not above 0 where
    // it stands for none.
    double toMolarVolume(double number) const;
    // The name of the chosen unit and of the quantity, as they stand beside an entry.
    std::string unitText() const;
    std::string quantityText() const;
    // Gives the buttons the captions that they have from the screen's first activation on.
    void showCaptions();

  private:
    void kgm3_Action();
    void cm3mol_Action();

    toolkit::Handler changed_;
    toolkit::RadioGroup group_;

  public:
    toolkit::GroupBox box;
    toolkit::RadioButton kgm3;
    toolkit::RadioButton cm3mol;
};

// The entry of a molar volume or a density, with its caption and unit, the choice between the two,
// which empties it, and the line that echoes the other quantity. The controls bear the names
// `dataEntryV`, `MolarVolume` and `DensityResult`.
class VolumeEntry {
  public:
    // `boxName`, `unitName` and `captionName`: the control names of the group box, of the unit
    // label and of the caption.
    VolumeEntry(const std::string& boxName, const std::string& unitName,
                const std::string& captionName = "MolarVolume");

    // `function` runs when the text or the unit has become another.
    template <class Object, class Base>
    void onChange(Object* object, void (Base::*function)()) {
        changed_ = toolkit::Member(object, function);
    }
    // The molar volume in cm3/mol that the entry stands for; not above 0 where it stands for none.
    double molarVolume() const;
    // What is to be shown anew when the screen is activated: the units, and the echo of what may
    // be another composition.
    void activated();

  private:
    void dataEntryV_TextChange();
    void unitChosen();
    void showEcho();

    toolkit::Handler changed_;

  public:
    toolkit::Caption MolarVolume;
    toolkit::Entry dataEntryV{"dataEntryV"};
    toolkit::Label unitLabel;
    VolumeUnit unit;
    toolkit::ResultLabel DensityResult{"DensityResult", "corresponding density"};
};

}  // namespace procedures
