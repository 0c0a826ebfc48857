#include "toolkit/page/tex.h"

#include <glib.h>

#include <algorithm>
#include <regex>
#include <utility>
#include <vector>

namespace toolkit {

namespace {

bool IsLetter(std::string_view text) {
    return !text.empty() && g_unichar_isalpha(g_utf8_get_char(text.data())) != FALSE;
}

std::size_t CharacterSize(std::string_view text) {
    return static_cast<std::size_t>(g_utf8_next_char(text.data()) - text.data());
}

// Reads a formula from its start and writes it in a line.
class Line {
  public:
    explicit Line(std::string_view source) : rest_(source) {}

    TextRuns all() {
        until('\0', 0);
        return std::move(runs_);
    }

  private:
    bool skip(std::string_view token) {
        const bool isThere = rest_.starts_with(token);
        rest_.remove_prefix(isThere ? token.size() : 0);
        return isThere;
    }

    void add(std::string_view text, bool isItalic, int script) {
        TextStyle style;
        style.isItalic = isItalic;
        style.script = script;
        runs_.push_back({std::string(text), style});
    }

    void until(char end, int script) {
        while (!rest_.empty() && rest_.front() != end) {
            next(script);
        }
        rest_.remove_prefix(rest_.empty() ? 0 : 1);
    }

    void group(int script) {
        if (skip("{")) {
            until('}', script);
        } else if (!rest_.empty()) {
            next(script);
        }
    }

    // A part of a fraction or of a root: in brackets where it is a sum.
    void enclosed(int script, bool isAlways) {
        const std::string_view part = rest_.substr(0, rest_.find('}'));
        const bool isSum = isAlways || part.find(" − ") != std::string_view::npos ||
                           part.find(" + ") != std::string_view::npos;
        add(isSum ? "(" : "", false, script);
        group(script);
        add(isSum ? ")" : "", false, script);
    }

    void next(int script) {
        if (skip("_")) {
            group(-1);
        } else if (skip("^")) {
            group(1);
        } else if (skip("\\frac")) {
            enclosed(script, false);
            add("/", false, script);
            enclosed(script, false);
        } else if (skip("\\sqrt")) {
            add("√", false, script);
            enclosed(script, true);
        } else if (skip("\\sum")) {
            add("∑", false, script);
            group(-1);
        } else if (skip("\\up{")) {
            const std::size_t size = std::min(rest_.find('}'), rest_.size());
            add(rest_.substr(0, size), false, script);
            rest_.remove_prefix(std::min(size + 1, rest_.size()));
        } else if (skip("~")) {
            add(" ", false, script);
        } else {
            const std::size_t size = CharacterSize(rest_);
            add(rest_.substr(0, size), IsLetter(rest_), script);
            rest_.remove_prefix(size);
        }
    }

    std::string_view rest_;
    TextRuns runs_;
};

}  // namespace

std::string FormulaOfTex(std::string_view tex) {
    using Replacement = std::pair<std::regex, const char*>;
    // In this order: the longer name before the one that it starts with.
    static const std::vector<Replacement> replacements = {
        {std::regex(R"(\\left|\\right)"), ""},
        {std::regex(R"(~)"), " "},
        {std::regex(R"(\s*\\qquad\s*)"), "~~"},
        {std::regex(R"(\\(mathrm|text)\{)"), R"(\up{)"},
        {std::regex(R"(\^\\circ(_(\\up\{[^}]*\}|\{[^}]*\}|.)))"), "$1^°"},
        {std::regex(R"(\^\\circ)"), "^°"},
        {std::regex(R"(\^(\{[^}]*\}|[A-Z])(_(\{[^}]*\}|.)))"), "$2^$1"},
        {std::regex(R"(\\bar\s*(\w))"), "$1\u0304"},
        {std::regex(R"(\\sum_)"), R"(\sum)"},
        {std::regex(R"(\\sum(\w))"), R"(\sum{$1})"},
        {std::regex(R"(\\ln\s*)"), R"(\up{ln} )"},
        {std::regex(R"(\\partial\s*)"), "∂"},
        {std::regex(R"(\\varphi\s*|\\phi\s*)"), "φ"},
        {std::regex(R"(\\gamma\s*)"), "γ"},
        {std::regex(R"(\\beta\s*)"), "β"},
        {std::regex(R"(\\tau\s*)"), "τ"},
        {std::regex(R"(\\mu\s*)"), "μ"},
        {std::regex(R"(\\langle\s*)"), "⟨"},
        {std::regex(R"(\\rangle)"), "⟩"},
        {std::regex(R"(\s*\\cdot\s*)"), "·"},
        {std::regex(R"((^|[{(\[/]|= ) *-)"), "$1−"},
        {std::regex(R"( *- *)"), " − "},
        {std::regex(R"( *= *)"), " = "},
    };
    std::string formula(tex);
    for (const auto& [pattern, with] : replacements) {
        formula = std::regex_replace(formula, pattern, with);
    }
    return formula;
}

TextRuns LineOfFormula(std::string_view formula) {
    return Line(formula).all();
}

}  // namespace toolkit
