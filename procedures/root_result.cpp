#include "procedures/root_result.h"

#include "procedures/units.h"
#include "toolkit/number_text.h"

namespace procedures {

RootResult::RootResult() {
    resultCaption.setTarget(Result, Label4);
    densityCaption.setTarget(DensityResult, Label01);
    slope.setUnobtrusive();
    slope.reserve(0, 2);
}

std::vector<std::vector<toolkit::Block>> RootResult::rows() {
    return {{resultCaption, Result, Label4}, {densityCaption, DensityResult, Label01}};
}

void RootResult::show(const RootVolume& root) {
    slope.setText(SlopeSentence(root.slope));
    Result.setText(toolkit::NumberText(root.V));
    DensityResult.setText(toolkit::NumberText(root.density));
}

void RootResult::showAny(const RootVolume& root, toolkit::Label& warning) {
    if (root.kind == RootVolume::Kind::Volume) {
        show(root);
        return;
    }
    const bool isComplex = root.kind == RootVolume::Kind::Complex;
    (isComplex ? slope : warning).setText(isComplex ? complexSentence : noVolumeSentence);
    showNone("---");
}

void RootResult::showNone(const std::string& text) {
    Result.setText(text);
    DensityResult.setText(text);
}

void RootResult::empty() {
    slope.setText("");
    showNone("");
}

void RootResult::showUnits() {
    Label4.setText(std::string(" ") + volumeUnit);
    Label01.setText(std::string(" ") + densityUnit);
}

}  // namespace procedures
