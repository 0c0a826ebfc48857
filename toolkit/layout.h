#pragma once

#include <string>
#include <vector>

#include "toolkit/control.h"

namespace toolkit {

// The distances of the desktop's interface guidelines, in pixels.
enum class Spacing : int { Touching = 0, Related = 6, Group = 12, Section = 18 };

// A size in lines of text; with 0 in a direction that which a thing asks for by itself.
struct Lines {
    double width = 0.0;
    double height = 0.0;
};

// A part of a window: a control, or rows, columns and grids of parts, and the controls in it in
// reading order. A default-made block is an empty cell.
class Block {
  public:
    Block() = default;
    Block(Control& control);  // NOLINT(google-explicit-constructor): a control is a block
    Block(GtkWidget* widget, std::vector<Control*> controls);

    GtkWidget* widget() const { return widget_; }
    const std::vector<Control*>& controls() const { return controls_; }
    bool expands() const { return expands_; }

    // The same block, taking the space that is left over.
    Block expanding() const;
    // The same block at its own size in the upper left of its place.
    Block atStart() const;
    // The same block, indented by `spacing` from the left.
    Block indented(Spacing spacing) const;
    // The same block, asking for this size, and for `least` where the display is small.
    Block asking(const Lines& size, const Lines& least) const;
    Block asking(const Lines& size) const { return asking(size, size); }

  private:
    GtkWidget* widget_ = nullptr;
    std::vector<Control*> controls_;
    bool expands_ = false;
};

Block Row(const std::vector<Block>& blocks, Spacing spacing = Spacing::Group);
Block Column(const std::vector<Block>& blocks, Spacing spacing = Spacing::Related);
// Rows of cells, each column as wide as its widest cell. Short rows end in empty cells.
Block Grid(const std::vector<std::vector<Block>>& rows, Spacing rowSpacing = Spacing::Related,
           Spacing columnSpacing = Spacing::Group);
// A part of a window with the title of the page that it can become.
struct Part {
    std::string title;
    Block block;
};

// A part, and at its right the others; below all a wide one, if there is one. Where the display is
// too narrow they stand below each other, and where there is no room for them either, each part is
// a page of its own.
Block Columns(const Part& first, const std::vector<Part>& others, const Part& wide = {});
// Push buttons of one size, from the right edge of the window, or one below the other.
Block ButtonRow(const std::vector<Block>& buttons);
Block ButtonColumn(const std::vector<Block>& buttons);

// A titled group of controls.
class GroupBox : public Control {
  public:
    GroupBox(std::string name, const std::string& caption);
    std::string text() const override;
    void setText(const std::string& caption);
    // Puts `content` into the group; to be called once.
    Block around(const Block& content);
};

// How a content that asks for too much room for the display asks for less.
enum class Economy { FewerLines, SmallerGaps, ShorterLines, OthersBelow, Pages };
// Has all parts of `content` save in this way, for a window of this width in pixels.
void Economize(GtkWidget* content, Economy economy, int width);

}  // namespace toolkit
