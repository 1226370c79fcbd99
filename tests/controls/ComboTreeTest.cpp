#include "base/Translation.h"
#include "controls/KorTreeCtrl.h"
#include "controls/VELComboTree.h"
#include "controls/VELComboTreeBuilder.h"
#include "support/Widgets.h"

#include <QLabel>

namespace {

KorString path(std::initializer_list<const char*> names) {
    KorString joined;
    for (const char* name : names)
        joined = joined.isEmpty() ? KorString(name) : joined + VELComboTree::GetPathDelimiter() + name;
    return joined;
}

class ComboTree : public testing::Test {
protected:
    ComboTree() {
        combo.addEntry(path({"Standard", "Beams", "Girder"}), -1, &mark);
        combo.addEntry(path({"Standard", "Columns"}));
        combo.addEntry(path({"User"}));
        QObject::connect(&combo, &VELComboTree::entrySelected, &combo,
                         [this](KorTreeHandle entry) { chosen.push_back(combo.getPath(entry)); });
        combo.show();
        combo.setFocus();
    }

    QLineEdit* openSearch() {
        QTest::keyClick(&combo, Qt::Key_F4);
        return combo.findChild<QLineEdit*>();
    }
    bool isOpen() {
        const QWidget* tree = combo.findChild<KorTreeCtrl*>();
        return tree && tree->isVisible();
    }

    int mark = 0;
    VELComboTree combo;
    std::vector<KorString> chosen;
};

} // namespace

TEST_F(ComboTree, EntriesAreNamedByTheirPaths) {
    EXPECT_EQ(combo.childCount(nullptr), 2);
    EXPECT_EQ(combo.getEntryData(combo.findEntry(path({"Standard", "Beams", "Girder"}))).as<int>(), &mark);
    EXPECT_TRUE(combo.selectPath(path({"Standard", "Beams", "Girder"})));
    EXPECT_EQ(combo.currentText(), QStringLiteral("Girder"));
    combo.setDisplayFullPath(true);
    EXPECT_EQ(combo.currentText(), QStringLiteral("Standard / Beams / Girder"));

    EXPECT_TRUE(combo.renameEntry(path({"Standard", "Beams"}), "Purlins"));
    EXPECT_EQ(combo.getSelectedPath(), path({"Standard", "Purlins", "Girder"}));
    EXPECT_FALSE(combo.renameEntry(path({"Standard", "Purlins"}), "Columns"));
    EXPECT_TRUE(combo.deleteEntry(path({"Standard", "Purlins"})));
    EXPECT_EQ(combo.getSelectedPath(), KorString());
    EXPECT_EQ(combo.findEntry(path({"Standard", "Purlins", "Girder"})), nullptr);
    EXPECT_NE(combo.findEntry(path({"Standard", "Columns"})), nullptr);
    EXPECT_FALSE(combo.selectPath(path({"Standard", "Rafters"})));
    EXPECT_TRUE(chosen.empty()) << "what the program chooses is not announced";

    const KorString nameless = KorString("User") + VELComboTree::GetPathDelimiter();
    const KorTreeHandle entry = combo.addEntry(nameless, -1, &mark);
    EXPECT_NE(entry, combo.findEntry("User")) << "an empty name below an entry is not that entry";
    EXPECT_EQ(combo.findEntry(nameless), entry);
    EXPECT_EQ(combo.getPath(entry), nameless);
}

TEST(ComboTreeLanguage, SearchFieldSpeaksTheLanguageOfTheProgram) {
    const Language before = setLanguage({{{"Search", "Suchen"}}, {}});
    VELComboTree combo;
    combo.addEntry("Standard");
    combo.show();
    QTest::keyClick(&combo, Qt::Key_F4);
    setLanguage(before);
    const QLineEdit* search = combo.findChild<QLineEdit*>();
    ASSERT_NE(search, nullptr);
    EXPECT_EQ(search->placeholderText(), QStringLiteral("Suchen"));
    EXPECT_EQ(search->accessibleName(), QStringLiteral("Suchen"));
}

TEST_F(ComboTree, KeysStepAndTypingSearchesInTheDropDown) {
    combo.selectPath(path({"Standard"}));
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(chosen, std::vector{path({"Standard", "Beams"})});

    QTest::keyClicks(&combo, "g");
    EXPECT_TRUE(isOpen()) << "typing opens the drop-down";
    QTest::keyClicks(combo.findChild<QLineEdit*>(), "ird");
    EXPECT_EQ(chosen.size(), 1u) << "nothing is chosen while searching";
    QTest::keyClick(combo.findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(combo.getSelectedPath(), path({"Standard", "Beams", "Girder"}));

    QLineEdit* search = openSearch();
    QTest::keyClicks(search, "uswx"); // "us" fits
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_TRUE(isOpen()) << "nothing fits, so nothing is chosen";
    EXPECT_EQ(chosen.size(), 2u);
    QTest::keyClick(search, Qt::Key_Escape);
    QTest::keyClicks(search, "user");
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_TRUE(isOpen()) << "Escape clears the search first";
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(combo.getSelectedPath(), path({"Standard", "Beams", "Girder"}));
    EXPECT_EQ(chosen.size(), 2u);
}

TEST_F(ComboTree, TheDropDownShowsWhatHasAllWordsInItsPath) {
    combo.addEntry(path({"Welds", "Fillet"}));
    combo.addEntry(path({"Workshop", "Shop welds"}));
    combo.findEntry("Welds")->selectable = false;
    combo.findEntry("Workshop")->selectable = false;
    QLineEdit* search = openSearch();
    auto* tree = combo.findChild<KorTreeCtrl*>();
    const auto shown = [tree] {
        QStringList names;
        for (QModelIndex at = tree->model()->index(0, 0); at.isValid(); at = tree->indexBelow(at))
            names << at.data().toString();
        return names;
    };
    const auto* none = combo.findChild<QLabel*>();
    QTest::keyClicks(search, "WELD");
    EXPECT_EQ(shown(), QStringList({"Welds", "Fillet", "Workshop", "Shop welds"}));
    EXPECT_EQ(combo.getEntryText(tree->selectedItem()), KorString("Shop welds")) << "its own name has it";
    QTest::keyClick(search, Qt::Key_Up);
    EXPECT_EQ(combo.getEntryText(tree->selectedItem()), KorString("Fillet")) << "no step onto a group";
    QTest::keyClicks(search, " work");
    EXPECT_EQ(shown(), QStringList({"Workshop", "Shop welds"}));
    EXPECT_FALSE(none->isVisible());
    QTest::keyClicks(search, "x");
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_TRUE(none->isVisible()) << "and says so";
    QTest::keyClick(search, Qt::Key_Backspace);
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(chosen, std::vector{path({"Workshop", "Shop welds"})});
    openSearch();
    EXPECT_TRUE(search->text().isEmpty());
    EXPECT_TRUE(shown().contains("User")) << "what was searched for is forgotten";
}

TEST_F(ComboTree, AClickChoosesAndGroupsCanBeOutOfChoice) {
    combo.findEntry(path({"Standard"}))->selectable = false;
    openSearch();
    auto* tree = combo.findChild<KorTreeCtrl*>();
    const auto click = [&](const KorString& entry) {
        tree->ensureVisible(combo.findEntry(entry));
        for (QModelIndex at = tree->model()->index(0, 0); at.isValid(); at = tree->indexBelow(at))
            if (KorTreeModel::entryOf(at) == combo.findEntry(entry))
                return QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(at).center());
    };
    click(path({"Standard"}));
    EXPECT_TRUE(isOpen());
    click(path({"User"}));
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(chosen, std::vector{path({"User"})});
}

TEST_F(ComboTree, TheWheelOnlyStepsWithTheFocus) {
    showActive(combo);
    EXPECT_TRUE(turnWheel(combo));
    EXPECT_EQ(chosen.size(), 1u);
    combo.clearFocus();
    EXPECT_FALSE(turnWheel(combo)) << "the page around must scroll instead";
    EXPECT_EQ(chosen.size(), 1u);
}

TEST(ComboTreeBuilder, ReplacesTheEntriesKeepsTheChoiceAndReportsProgress) {
    VELComboTree combo;
    combo.addEntry("old");
    combo.addEntry(path({"group 7", "item 42"}));
    combo.selectPath(path({"group 7", "item 42"}));
    VELComboTreeBuilder builder;
    for (int group = 0; group < 30; ++group) {
        const std::string name = "group " + std::to_string(group);
        builder.addGroup(name);
        for (int item = 0; item < 1000; ++item)
            builder.addEntry(path({name.c_str(), ("item " + std::to_string(item)).c_str()}));
    }
    std::vector<int> steps;
    int total = 0;
    builder.installHandlers([&](int count) { total = count; }, [&](int step) { steps.push_back(step); }, {});
    builder.build(combo);
    EXPECT_EQ(total, 30 * 1001);
    EXPECT_EQ(steps.size(), 100u);
    EXPECT_EQ(steps.back(), 100);
    EXPECT_EQ(combo.findEntry("old"), nullptr);
    EXPECT_EQ(combo.getSelectedPath(), path({"group 7", "item 42"}));
}
