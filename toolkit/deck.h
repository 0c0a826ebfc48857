#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/layout.h"

namespace toolkit {

// Parts of a window in one place, of which one is in sight. It is as large as the largest of them.
class Deck : public Control {
  public:
    explicit Deck(std::string name);

    // Puts the parts into it; to be called once.
    Block of(const std::vector<Block>& pages);
    // Brings one of them into sight, counted from 0.
    void show(std::size_t page);
};

}  // namespace toolkit
