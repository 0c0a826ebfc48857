#include "toolkit/page/markdown.h"

#include <glib.h>
#include <md4c.h>

#include <cctype>
#include <optional>
#include <utility>

#include "toolkit/event.h"
#include "toolkit/page/tex.h"

namespace toolkit {

namespace {

std::string TextOf(const MD_ATTRIBUTE& attribute) {
    return {attribute.text, attribute.size};
}

// Puts the blocks together from what the parser finds, in the order of the page.
class Reader {
  public:
    std::vector<PageBlock> blocks;

    void enterBlock(MD_BLOCKTYPE type, void* detail) {
        switch (type) {
            case MD_BLOCK_UL:
                lists_.emplace_back();
                break;
            case MD_BLOCK_OL:
                lists_.emplace_back(static_cast<MD_BLOCK_OL_DETAIL*>(detail)->start);
                break;
            case MD_BLOCK_LI: {
                PageBlock& item = start(PageBlock::Kind::Item);
                item.level = static_cast<int>(lists_.size());
                std::optional<unsigned>& number = lists_.back();
                item.mark = number ? std::to_string((*number)++) + "." : "•";
                break;
            }
            case MD_BLOCK_H:
                start(PageBlock::Kind::Heading).level =
                    static_cast<int>(static_cast<MD_BLOCK_H_DETAIL*>(detail)->level);
                break;
            case MD_BLOCK_CODE:
                start(PageBlock::Kind::Verbatim);
                break;
            case MD_BLOCK_P:
                // The first paragraph of an item is the item itself.
                if (lists_.empty() || !blocks.back().runs.empty()) {
                    start(PageBlock::Kind::Paragraph).level = static_cast<int>(lists_.size());
                }
                break;
            case MD_BLOCK_TABLE:
                start(PageBlock::Kind::Table);
                break;
            case MD_BLOCK_TR:
                blocks.back().rows.emplace_back();
                break;
            case MD_BLOCK_TH:
            case MD_BLOCK_TD:
                blocks.back().rows.back().emplace_back();
                runs_ = &blocks.back().rows.back().back();
                style_.isBold = type == MD_BLOCK_TH;
                break;
            default:
                break;
        }
    }

    void leaveBlock(MD_BLOCKTYPE type) {
        style_ = {};
        if (type == MD_BLOCK_UL || type == MD_BLOCK_OL) {
            lists_.pop_back();
        }
    }

    void enterSpan(MD_SPANTYPE type, void* detail) {
        change(type, true);
        if (type == MD_SPAN_A) {
            style_.link = TextOf(static_cast<MD_SPAN_A_DETAIL*>(detail)->href);
        } else if (type == MD_SPAN_IMG && runs_ != nullptr) {
            runs_->push_back({"", style_, TextOf(static_cast<MD_SPAN_IMG_DETAIL*>(detail)->src)});
            isInPicture_ = true;
        }
    }

    void leaveSpan(MD_SPANTYPE type) {
        change(type, false);
        if (type == MD_SPAN_A) {
            style_.link.clear();
        } else if (type == MD_SPAN_IMG) {
            isInPicture_ = false;
        }
    }

    void addText(MD_TEXTTYPE type, std::string_view text) {
        if (runs_ == nullptr) return;
        if (type == MD_TEXT_HTML) {
            isAfterComment_ = true;
            return;
        }
        if (type == MD_TEXT_LATEXMATH) {
            tex_ += text;
            return;
        }
        if (type == MD_TEXT_SOFTBR) {
            text = isInVerbatim() ? "\n" : " ";
        }
        if (isInPicture_) {
            runs_->back().text += text;
            return;
        }
        // A comment leaves the blank before it and the one behind it, or one before a comma.
        if (std::exchange(isAfterComment_, false) && !runs_->empty() && !text.empty() &&
            (text.front() == ' ' || std::ispunct(static_cast<unsigned char>(text.front())) != 0) &&
            text.front() != '(') {
            std::string& before = runs_->back().text;
            while (!before.empty() && before.back() == ' ') {
                before.pop_back();
            }
        }
        runs_->push_back({std::string(text), style_});
    }

  private:
    PageBlock& start(PageBlock::Kind kind) {
        blocks.push_back({kind});
        runs_ = &blocks.back().runs;
        return blocks.back();
    }

    bool isInVerbatim() const { return blocks.back().kind == PageBlock::Kind::Verbatim; }

    void change(MD_SPANTYPE type, bool isOn) {
        if (type == MD_SPAN_EM) {
            style_.isItalic = isOn;
        } else if (type == MD_SPAN_STRONG) {
            style_.isBold = isOn;
        } else if (type == MD_SPAN_CODE) {
            style_.isCode = isOn;
        } else if ((type == MD_SPAN_LATEXMATH || type == MD_SPAN_LATEXMATH_DISPLAY) && !isOn &&
                   runs_ != nullptr) {
            const std::string formula = FormulaOfTex(std::exchange(tex_, {}));
            TextRuns line = LineOfFormula(formula);
            if (type == MD_SPAN_LATEXMATH) {
                runs_->insert(runs_->end(), line.begin(), line.end());
                return;
            }
            TextRun whole;
            whole.formula = formula;
            for (const TextRun& run : line) {
                whole.text += run.text;
            }
            runs_->push_back(whole);
        }
    }

    TextRuns* runs_ = nullptr;  // that are being filled
    TextStyle style_;
    std::string tex_;
    std::vector<std::optional<unsigned>> lists_;  // that are open, with the next number
    bool isInPicture_ = false;
    bool isAfterComment_ = false;
};

}  // namespace

std::vector<PageBlock> ReadMarkdown(std::string_view source) {
    Reader reader;
    MD_PARSER parser{};
    parser.flags = MD_FLAG_TABLES | MD_FLAG_LATEXMATHSPANS;
    parser.enter_block = Guarded([](MD_BLOCKTYPE type, void* detail, void* self) {
        static_cast<Reader*>(self)->enterBlock(type, detail);
        return 0;
    });
    parser.leave_block = Guarded([](MD_BLOCKTYPE type, void* /*detail*/, void* self) {
        static_cast<Reader*>(self)->leaveBlock(type);
        return 0;
    });
    parser.enter_span = Guarded([](MD_SPANTYPE type, void* detail, void* self) {
        static_cast<Reader*>(self)->enterSpan(type, detail);
        return 0;
    });
    parser.leave_span = Guarded([](MD_SPANTYPE type, void* /*detail*/, void* self) {
        static_cast<Reader*>(self)->leaveSpan(type);
        return 0;
    });
    parser.text = Guarded([](MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* self) {
        static_cast<Reader*>(self)->addText(type, {text, size});
        return 0;
    });
    md_parse(source.data(), static_cast<MD_SIZE>(source.size()), &parser, &reader);
    return std::move(reader.blocks);
}

std::string AnchorOf(const TextRuns& heading) {
    std::string anchor;
    for (const TextRun& run : heading) {
        for (const char c : run.text) {
            const auto byte = static_cast<unsigned char>(c);
            if (c == ' ') {
                anchor += '-';
            } else if (std::isalnum(byte) != 0 || c == '-' || byte >= 0x80) {
                anchor += static_cast<char>(std::tolower(byte));
            }
        }
    }
    return anchor;
}

}  // namespace toolkit
