#include "procedures/range_entry.h"

#include "toolkit/number_text.h"

namespace procedures {

RangeEntry::RangeEntry(const std::string& firstName, const std::string& lastName)
    : first(firstName), last(lastName) {
    firstCaption.setTarget(first, firstUnit);
    lastCaption.setTarget(last, lastUnit);
    stepCaption.setTarget(dataEntryStep, stepUnit);
}

std::optional<ValueRange> RangeEntry::read() const {
    const auto from = toolkit::ParseNumber(first.text());
    const auto to = toolkit::ParseNumber(last.text());
    const auto step =
        dataEntryStep.text().empty() ? 0.0 : toolkit::ParseNumber(dataEntryStep.text());
    return from && to && step ? ValueRange::of(*from, *to, *step) : std::nullopt;
}

std::optional<ValueRange> RangeEntry::read(const ValueRange& proposed) const {
    const auto number = [](const toolkit::Entry& entry, double otherwise) {
        return entry.text().empty() ? std::optional(otherwise) : toolkit::ParseNumber(entry.text());
    };
    const auto from = number(first, proposed.smallest());
    const auto to = number(last, proposed.largest());
    const auto step = number(dataEntryStep, proposed.step());
    return from && to && step ? ValueRange::of(*from, *to, *step) : std::nullopt;
}

void RangeEntry::setQuantity(const std::string& quantity, const std::string& unit) {
    firstCaption.setText("First " + quantity);
    lastCaption.setText("Last " + quantity);
    stepCaption.setText(quantity + " Step");
    for (toolkit::Label* const label : {&firstUnit, &lastUnit, &stepUnit}) {
        label->setText(unit);
    }
}

void RangeEntry::setSensitive(bool isSensitive) {
    for (toolkit::Entry* const entry : {&first, &last, &dataEntryStep}) {
        entry->setSensitive(isSensitive);
    }
}

void RangeEntry::clearEnds() {
    first.setText("");
    last.setText("");
}

void RangeEntry::clear() {
    clearEnds();
    dataEntryStep.setText("");
}

std::vector<std::vector<toolkit::Block>> RangeEntry::rows() {
    using toolkit::Block;
    return {{firstCaption, Block(first).expanding(), firstUnit},
            {lastCaption, Block(last).expanding(), lastUnit},
            {stepCaption, Block(dataEntryStep).expanding(), stepUnit}};
}

}  // namespace procedures
