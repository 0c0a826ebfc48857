#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/edit_commands.h"
#include "toolkit/layout.h"
#include "toolkit/page/markdown.h"

using GdkPixbuf = struct _GdkPixbuf;

namespace toolkit {

// A page of text to read, with links. Tab goes from link to link, Enter follows one.
class PageView : public Control, public Editable {
  public:
    explicit PageView(std::string name);

    // Shows a page of Markdown from its start. `folder`: where the pictures lie.
    void show(std::string_view markdown, const std::string& folder);
    // Brings the heading of that anchor to the top; does nothing where there is none.
    void goTo(const std::string& anchor);
    // `follow` is given the target of a link that was pressed.
    void onFollow(std::function<void(const std::string&)> follow) { follow_ = std::move(follow); }
    // The first heading of the page.
    const std::string& heading() const { return heading_; }

    std::string text() const override;
    bool canPerform(EditCommand command) const override;
    void perform(EditCommand command) override;

    // The page with its scroll bar, for a window's layout.
    Block scrolling();

  private:
    struct Callbacks;
    struct Link {
        int start;  // characters from the start of the page
        int end;
        std::string target;
    };

    void write();
    void write(const PageBlock& block);
    void writeTable(const PageBlock& table);
    void write(const TextRuns& runs);
    void write(const TextRun& run);
    void writeFormula(const std::string& formula);
    void insert(GdkPixbuf* picture);
    void insert(const std::string& text, const std::vector<const char*>& tags);
    // The link at that character; null where there is none.
    const Link* linkAt(int position) const;
    // Selects the next link, or the previous one; whether there is one.
    bool selectLink(bool isForward);
    void follow(const Link& link);

    std::vector<PageBlock> blocks_;
    int pageWidth_ = 0;  // pixels
    std::string folder_;
    std::string heading_;
    std::string anchor_;  // that was gone to
    std::vector<Link> links_;
    std::vector<Link> anchors_;
    std::function<void(const std::string&)> follow_;
};

}  // namespace toolkit
