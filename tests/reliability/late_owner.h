#pragma once

#include <sys/types.h>

namespace tests {

// A process that owns what is copied and selected on the display, as another program would, and
// takes its time to hand it over, or never does.
class LateOwner {
  public:
    enum class Habit { Late, Silent };
    // `habit`: whether it answers each question some time later, or none.
    LateOwner(Habit habit, unsigned seed);
    LateOwner(const LateOwner&) = delete;
    LateOwner& operator=(const LateOwner&) = delete;
    // Ends it, whatever it has been asked.
    ~LateOwner();

  private:
    pid_t process_;
};

}  // namespace tests
