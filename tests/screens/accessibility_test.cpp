#include <gtk/gtk.h>

#include <algorithm>
#include <iterator>

#include "tests/screens/screen_test.h"
#include "toolkit/button.h"
#include "toolkit/inspection.h"

namespace {

using Names = std::vector<std::string>;
using Group = std::vector<toolkit::RadioButton*>;

Names spoken;  // by a screen reader, of its own accord
int clicks = 0;

std::string NameOf(AtkObject* object) {
    const char* const name = atk_object_get_name(object);
    return name == nullptr ? "" : name;
}

std::string LabelOf(AtkObject* object) {
    AtkRelationSet* const relations = atk_object_ref_relation_set(object);
    AtkRelation* const label =
        atk_relation_set_get_relation_by_type(relations, ATK_RELATION_LABELLED_BY);
    std::string name = label ? NameOf(ATK_OBJECT(atk_relation_get_target(label)->pdata[0])) : "";
    g_object_unref(relations);
    return name;
}

gboolean NoteSpoken(GSignalInvocationHint* /*hint*/, guint /*count*/, const GValue* values,
                    gpointer /*data*/) {
    auto* const object = ATK_OBJECT(g_value_get_object(values));
    if (atk_object_get_role(object) == ATK_ROLE_NOTIFICATION && g_value_get_boolean(values + 2)) {
        spoken.push_back(NameOf(object));
    }
    return TRUE;
}

bool TakesKeys(const toolkit::Control& control) {
    return gtk_widget_get_can_focus(control.widget()) && control.area().width > 0 &&
           control.isSensitive();
}

auto ChosenOf(const Group& group) {
    return std::find_if(group.begin(), group.end(), [](auto* button) { return button->isOn(); });
}

// Every screen as a screen reader has it, and by the keyboard alone.
class AccessibilityTest : public tests::ScreenTest {
  protected:
    static void SetUpTestSuite() {
        g_object_set(gtk_settings_get_default(), "gtk-modules", "gail", nullptr);
        atk_get_root();
        g_type_class_unref(g_type_class_ref(ATK_TYPE_OBJECT));
        g_signal_add_emission_hook(g_signal_lookup("state-change", ATK_TYPE_OBJECT),
                                   g_quark_from_static_string("showing"), NoteSpoken, nullptr,
                                   nullptr);
    }
    using Controls = std::vector<toolkit::Control*>;
    const Controls& controls() const { return robot.screen().controls(); }
    // The radio buttons that belong together, in reading order; none for another control.
    Group groupOf(const toolkit::Control& button) const {
        Group group;
        GtkWidget* const widget = button.widget();
        GSList* const members = GTK_IS_RADIO_BUTTON(widget)
                                    ? gtk_radio_button_get_group(GTK_RADIO_BUTTON(widget))
                                    : nullptr;
        for (toolkit::Control* const other : controls()) {
            if (g_slist_find(members, other->widget()) != nullptr) {
                group.push_back(dynamic_cast<toolkit::RadioButton*>(other));
            }
        }
        return group;
    }

    // Adds the ids of the controls in the order in which a screen reader meets them.
    void read(AtkObject* object, Names& ids) const {
        const AtkRole role = atk_object_get_role(object);
        const char* const id = atk_object_get_accessible_id(object);
        const toolkit::Control* const control = id ? robot.screen().control(id) : nullptr;
        const bool hasText = role == ATK_ROLE_TEXT || role == ATK_ROLE_TABLE;
        const std::string name = NameOf(object);
        if (control != nullptr) {
            ids.emplace_back(id);
            const bool showsText = !hasText && role != ATK_ROLE_SEPARATOR;
            EXPECT_TRUE(!showsText || control->text().empty() || name == control->text()) << id;
        }
        const bool isSaidByName = hasText || role == ATK_ROLE_IMAGE || role == ATK_ROLE_MENU_ITEM ||
                                  role == ATK_ROLE_TABLE_COLUMN_HEADER ||
                                  (control && TakesKeys(*control));
        EXPECT_TRUE(!isSaidByName || !name.empty() || (hasText && !LabelOf(object).empty()))
            << atk_role_get_name(role) << (id ? id : "");
        for (int i = 0; i < atk_object_get_n_accessible_children(object); ++i) {
            AtkObject* const child = atk_object_ref_accessible_child(object, i);
            read(child, ids);
            g_object_unref(child);
        }
    }

    // Where Tab stops: of a group at the button that is on or, where none is, at the first one
    // that it comes by from outside.
    Names stops(const Controls& order) const {
        Names names;
        const toolkit::Control* last = nullptr;
        for (const toolkit::Control* const control : order) {
            const Group group = groupOf(*control);
            const auto chosen = ChosenOf(group);
            const bool isStop = chosen != group.end()
                                    ? control == *chosen
                                    : std::find(group.begin(), group.end(), last) == group.end();
            if (TakesKeys(*control) && isStop) {
                names.push_back(control->name());
                last = control;
            }
        }
        return names;
    }
    // Expects a key such as Tab to lead through these controls and back to the first one, each in
    // sight where it has the focus.
    void expectWalk(const char* key, const Names& expected) {
        ASSERT_FALSE(expected.empty());
        toolkit::TakeFocus(robot.control(expected[0]));
        for (std::size_t i = 0; i <= expected.size(); ++i) {
            const toolkit::Control& control = robot.control(expected[i % expected.size()]);
            ASSERT_TRUE(toolkit::HasFocus(control))
                << control.name() << " after " << i << ' ' << key;
            const toolkit::Area window = robot.screen().area();
            const toolkit::Area area = control.area();
            EXPECT_TRUE(area.x + 40 > window.x && area.x + 40 < window.x + window.width &&
                        area.y >= window.y && area.y + 10 < window.y + window.height)
                << control.name() << " is out of sight";
            robot.press(key);
        }
    }
    void expectReadingOrder() {
        SCOPED_TRACE(robot.screen().name());
        Names ids;
        read(gtk_widget_get_accessible(robot.screen().window()), ids);
        Controls order = controls();
        Names names;
        std::transform(order.begin(), order.end(), std::back_inserter(names),
                       [](const toolkit::Control* control) { return control->name(); });
        std::rotate(ids.begin(), std::find(ids.begin(), ids.end(), names[0]), ids.end());
        EXPECT_EQ(ids, names);
        const Names expected = stops(order);
        expectWalk("Tab", expected);
        for (std::size_t i = 1; i < expected.size(); ++i) {
            const toolkit::Area from = robot.control(expected[i - 1]).area();
            const toolkit::Area to = robot.control(expected[i]).area();
            EXPECT_TRUE(to.x >= from.x + from.width || to.y >= from.y + from.height)
                << expected[i - 1] << " to " << expected[i];
        }
        std::reverse(order.begin(), order.end());
        expectWalk("Shift_L+Tab", stops(order));
    }

    // Goes round the group with the arrow keys, from the button that is on.
    void choose(const Group& group) {
        const auto chosen = ChosenOf(group);
        const auto first =
            static_cast<std::size_t>(chosen == group.end() ? 0 : chosen - group.begin());
        toolkit::TakeFocus(*group[first]);
        robot.press("space");
        for (std::size_t i = 0; i <= group.size(); ++i) {
            const toolkit::RadioButton& button = *group[(first + i) % group.size()];
            EXPECT_TRUE(button.isOn() && toolkit::HasFocus(button)) << button.name();
            robot.press(i < group.size() ? "Down" : "space");
        }
    }
    // Presses the button and comes back from what it opens.
    void press(toolkit::Control& button) {
        toolkit::Screen& screen = robot.screen();
        const std::size_t before = owner.screens().size();
        const int clicksBefore = clicks;
        const auto count = +[](GtkWidget* /*button*/, gpointer /*data*/) { ++clicks; };
        g_signal_connect(button.widget(), "clicked", G_CALLBACK(count), nullptr);
        toolkit::TakeFocus(button);
        robot.press("space");
        EXPECT_GT(clicks, clicksBefore) << screen.name();
        if (owner.screens().size() > before) {
            robot.use(*owner.screens().back());
            expectReadingOrder();
            owner.close(robot.screen());
            robot.use(screen);
        } else if (gtk_grab_get_current() != nullptr) {  // a dialog
            EXPECT_TRUE(robot.waitFor([&screen] { return !toolkit::IsActive(screen); }));
            robot.settle();
            robot.press("Escape");
            EXPECT_TRUE(robot.waitFor([&screen] { return toolkit::IsActive(screen); }));
        }
    }
    // Chooses in every group and presses every button; then, `toCalculate`, all but those that
    // take away what was typed.
    void useAll(bool toCalculate) {
        for (toolkit::Control* const control : Controls(controls())) {
            const Group group = groupOf(*control);
            const bool takesAway = control->text() == "clear" || control->text() == "explanation";
            if (!TakesKeys(*control) || (toCalculate && takesAway)) continue;
            if (!group.empty()) {
                if (control == group[0] && (!toCalculate || ChosenOf(group) == group.end())) {
                    choose(group);
                }
            } else if (GTK_IS_ENTRY(control->widget())) {
                toolkit::TakeFocus(*control);
                robot.type(toCalculate && control->text().empty() ? "300" : "");
            } else if (GTK_IS_BUTTON(control->widget())) {
                press(*control);
            }
        }
    }
};

TEST_F(AccessibilityTest, EveryControlIsNamedAndUsedByTheKeyboardInReadingOrder) {
    visitEveryScreen([this] {
        expectReadingOrder();
        if (robot.screen().name() == "Start1Window") {
            return;  // its button is the end of it
        }
        useAll(false);
        spoken.clear();
        useAll(true);
        EXPECT_FALSE(spoken.empty());
        for (const std::string& sentence : spoken) {
            EXPECT_EQ(sentence.find("put a"), std::string::npos) << sentence;
        }
        const toolkit::Area area = robot.screen().area();
        robot.screen().resize(420, 320);
        EXPECT_TRUE(robot.waitFor([this] { return robot.screen().area().width == 420; }));
        robot.settle();
        expectReadingOrder();
        robot.screen().resize(area.width, area.height);
        EXPECT_TRUE(robot.waitFor([&] { return robot.screen().area().width == area.width; }));
        robot.settle();
    });
}

TEST_F(AccessibilityTest, MessagesAndResultsAreSpokenAlsoTwice) {
    openProcedure({{"H2O", "1"}}, "Pressures", "PressureWindow");
    spoken.clear();
    const auto expectTwice = [this](const std::string& sentence) {
        robot.press("Return");
        robot.press("Return");
        EXPECT_EQ(spoken, Names(2, sentence));
        spoken.clear();
    };
    expectTwice("warning: put a number for temperature and molar volume");
    robot.enter("dataEntryV", "80");
    robot.enter("dataEntryT", "600");
    EXPECT_EQ(spoken, Names());
    expectTwice("Pressure 14.260677628779192 MPa");
}

TEST_F(AccessibilityTest, LastRowOfALongTableIsReachedAndOnlyTheTextsInSightAreMade) {
    openProcedure({{"H2O", "1"}}, "Isochores", "IsochoreWindow");
    for (const auto& [entry, characters] : tests::Composition{{"dataEntryV", "80"},
                                                              {"dataEntryT1", "200"},
                                                              {"dataEntryT2", "299.999"},
                                                              {"dataEntryStep", "0.001"}}) {
        robot.enter(entry, characters);
    }
    robot.press("Return");
    toolkit::TakeFocus(robot.control("ListBox1"));
    robot.press("Control_L+a");
    AtkTable* const table =
        ATK_TABLE(gtk_widget_get_accessible(robot.control("ListBox1").widget()));
    AtkObject* const cell = atk_table_ref_at(table, 99'999, 0);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(NameOf(cell), "299.999");
    EXPECT_TRUE(atk_table_is_row_selected(table, 99'999));
    g_object_unref(cell);
    std::size_t made = 0;
    auto& list = dynamic_cast<toolkit::List&>(robot.control("ListBox1"));
    list.setTable(100'000, [&made](std::size_t) { return ++made, toolkit::List::Row(9, "1"); });
    robot.settle();
    EXPECT_TRUE(made > 0 && made < 1000) << made;
    list.clear();
}

}  // namespace
