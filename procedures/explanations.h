#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/label.h"
#include "toolkit/layout.h"
#include "toolkit/screen.h"

namespace procedures {

// A window of static text in paragraphs.
class ExplanationScreen : public toolkit::Screen {
  protected:
    ExplanationScreen(toolkit::ScreenHost& host, const std::string& name, const std::string& title,
                      const std::string& heading, const std::vector<std::string>& paragraphs);

  private:
    std::vector<std::unique_ptr<toolkit::Label>> labels_;
};

// About homogenisation conditions.
class ExplainFirst : public ExplanationScreen {
  public:
    explicit ExplainFirst(toolkit::ScreenHost& host);
};

// About liquid-vapour equilibria.
class ExplainSecond : public ExplanationScreen {
  public:
    explicit ExplainSecond(toolkit::ScreenHost& host);
};

// About the spinodal.
class ExplainSpinodal : public ExplanationScreen {
  public:
    explicit ExplainSpinodal(toolkit::ScreenHost& host);
};

// About critical points.
class ExplainCritical : public ExplanationScreen {
  public:
    explicit ExplainCritical(toolkit::ScreenHost& host);
};

}  // namespace procedures
