#pragma once

#include <optional>
#include <string>
#include <vector>

#include "procedures/value_range.h"
#include "toolkit/entry.h"
#include "toolkit/label.h"
#include "toolkit/layout.h"

namespace procedures {

// The entries of a range: its first and last value and its step, with their captions and units.
class RangeEntry {
  public:
    // `firstName` and `lastName`: the control names of the first two entries.
    RangeEntry(const std::string& firstName, const std::string& lastName);

    // The range as typed; nothing where it is no range of numbers. One value needs no step.
    std::optional<ValueRange> read() const;
    // The same with what is proposed in place of what is empty.
    std::optional<ValueRange> read(const ValueRange& proposed) const;
    // The captions name the quantity, "First Temperature", and the units stand beside the entries.
    void setQuantity(const std::string& quantity, const std::string& unit);
    void setSensitive(bool isSensitive);
    // Empties the first and the last value, and the step as well.
    void clearEnds();
    void clear();
    std::vector<std::vector<toolkit::Block>> rows();
    template <class Object, class Base>
    void onTextChange(Object* object, void (Base::*function)()) {
        for (toolkit::Entry* const entry : {&first, &last, &dataEntryStep}) {
            entry->onTextChange(object, function);
        }
    }

    toolkit::Caption firstCaption{"First", ""};
    toolkit::Entry first;
    toolkit::Label firstUnit{"FirstUnit"};
    toolkit::Caption lastCaption{"Last", ""};
    toolkit::Entry last;
    toolkit::Label lastUnit{"LastUnit"};
    toolkit::Caption stepCaption{"Step", ""};
    toolkit::Entry dataEntryStep{"dataEntryStep"};
    toolkit::Label stepUnit{"StepUnit"};
};

}  // namespace procedures
