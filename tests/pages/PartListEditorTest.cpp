#include "pages/PartListEditor.h"
#include "controls/KorLineEdit.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorQt.h"
#include "controls/VELComboTree.h"
#include "operations/CurrentRows.h"
#include "pages/KorDSMPageQualifierSet.h"
#include "pages/KorDSMPageReprMapItem.h"
#include "pages/KorDSMPageReprMapRule.h"
#include "pages/KorDSMPageViewDimensioning.h"
#include "pages/PageFixture.h"
#include "pages/PartClipboard.h"
#include "session/KorDSMQualifierWords.h"
#include "session/KorDSMUndo.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QHelpEvent>
#include <QMenu>
#include <QMessageBox>
#include <QRadioButton>
#include <QToolButton>
#include <QToolTip>
#include <QTreeView>

namespace {

class PartListEditorTest : public PageFixture {
protected:
    PartListEditorTest() : group("Tabs", "Group") {
        group.addPage(new KorDSMPageReprMapRule(&m_window));
        group.addPage(new KorDSMPageViewDimensioning(&m_window));
        group.addPage(new KorDSMPageQualifierSet(&m_window));
        group.createPages();
    }

    void onMessage(const KorMessage& message) override {
        PageFixture::onMessage(message);
        if (message.number == DsmGoToRecord::kNumber)
            gone = static_cast<const DsmGoToRecord&>(message).row;
        if (message.number == DsmRowsChanged::kNumber)
            changed = static_cast<const DsmRowsChanged&>(message).changes.size();
    }

    /// Shows the page of that place in the group on the item.
    void open(KorDSMDatabaseItem& item, int page) {
        show(group, item);
        turnTo(page);
    }
    PartListEditor& editor() { return *page().findChild<PartListEditor*>(); }
    KorMFCGridCtrl& grid() { return *page().findChild<KorMFCGridCtrl*>(); }
    std::string column(int column) {
        std::string texts;
        for (int row = 0; row < grid().rowCount(); ++row)
            texts += grid().getCellText(row, column).toStdString() + ";";
        return texts;
    }
    std::string enabledButtons() {
        std::string buttons;
        for (const QToolButton* button : editor().findChildren<QToolButton*>())
            buttons += button->isEnabled() ? '1' : '0';
        return buttons;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&grid(), key, modifiers); }
    /// Opens a cell and chooses a name in it, by typing its beginning.
    void chooseInTree(int row, int column, const QString& name) {
        grid().editCell(row, column);
        auto* combo = grid().findChild<VELComboTree*>();
        ASSERT_NE(combo, nullptr);
        combo->showPopup();
        auto* search = combo->findChild<QLineEdit*>();
        ASSERT_NE(search, nullptr);
        keys(*search, name);
        QTest::keyClick(search, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    TabContent group;
    KorDsmReprMapRuleItem& map = item<KorDsmReprMapRuleItem>("HB workshop");
    RowRef gone;
    std::size_t changed = 0;
};

} // namespace

TEST_F(PartListEditorTest, KeysAndButtonsEditTheListWhereItStands) {
    open(map, 0);
    ASSERT_EQ(column(0), "Main part;Fitted parts;Holes;");
    EXPECT_EQ(enabledButtons(), "100000");
    clickRow(grid(), 0);
    EXPECT_EQ(enabledButtons(), "111110");
    grid().setCurrentCell(0, 2);
    EXPECT_EQ(enabledButtons(), "111111") << "what a cell chooses is made beside the list";

    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(column(0), "Fitted parts;Main part;Holes;");
    EXPECT_EQ(grid().selectedRows(), std::vector{1}) << "what is moved stays selected";
    EXPECT_EQ(changed, 2U);
    key(Qt::Key_End, Qt::AltModifier);
    EXPECT_EQ(column(0), "Fitted parts;Holes;Main part;");
    key(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(column(0), "Main part;Fitted parts;Holes;");

    QTest::keyClick(&grid(), Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(column(0), "Main part;Fitted parts;Main part;Fitted parts;Holes;");
    EXPECT_EQ(grid().selectedRows(), (std::vector{2, 3}));
    key(Qt::Key_Delete);
    EXPECT_EQ(column(0), "Main part;Fitted parts;Holes;");
    EXPECT_EQ(grid().selectedRows(), std::vector{2});

    key(Qt::Key_Insert);
    EXPECT_EQ(grid().rowCount(), 4);
    EXPECT_EQ(grid().selectedRows(), std::vector{3});
    QTest::mouseClick(editor().findChildren<QToolButton*>().at(3), Qt::LeftButton);
    EXPECT_EQ(grid().selectedRows(), std::vector{2});
    Q_EMIT grid().rowsDropped(0);
    EXPECT_EQ(grid().selectedRows(), std::vector{0});
    EXPECT_EQ(grid().getCellText(1, 0), "Main part");
}

TEST_F(PartListEditorTest, CellsAreChosenTypedAndChecked) {
    open(map, 0);
    clickRow(grid(), 1);
    chooseInTree(1, 1, QStringLiteral("HB rails"));
    const auto& rails = row<StructDetObjQualifierSet>("HB rails");
    const auto entry = editor().selected().at(0);
    EXPECT_TRUE(wroteOnly(kTableReprMapEntry, entry, 4, std::int64_t{rails.key}));
    EXPECT_EQ(grid().getCellText(1, 1), "HB rails");
    EXPECT_EQ(KorDSMUndo::undoSteps(1).at(0),
              "change of Qualifier set of \"Fitted parts\" in \"HB workshop\"");

    // A value of one of several selected rows is that of all of them.
    clickRow(grid(), 0);
    QTest::keyClick(&grid(), Qt::Key_Down, Qt::ShiftModifier);
    grid().editCell(0, 2);
    grid().selectRows({0, 1});
    auto* combo = grid().findChild<QComboBox*>();
    ASSERT_NE(combo, nullptr);
    combo->setCurrentText(QStringLiteral("HB holes"));
    Q_EMIT combo->activated(combo->currentIndex());
    EXPECT_EQ(grid().getCellText(0, 2), "HB holes");
    EXPECT_EQ(grid().getCellText(1, 2), "HB holes");

    auto& set = item<KorDsmQualifierSetItem>("HB main profile");
    open(set, 2);
    ASSERT_GT(grid().rowCount(), 0);
    const int negate = grid().columnCount() - 2; // the last one counts objects of the preview
    EXPECT_EQ(enabledButtons().substr(3), "000") << "the order of qualifiers means nothing";
    const bool before = grid().isCellChecked(0, negate);
    grid().setCurrentCell(0, negate);
    key(Qt::Key_Space);
    EXPECT_EQ(grid().isCellChecked(0, negate), !before);
    EXPECT_EQ(steps().back()->table, kTableQualifierWithRole);
}

// What was copied is what is pasted, whatever became of it meanwhile, all of it or nothing.
TEST_F(PartListEditorTest, RowsGoOverTheClipboard) {
    open(map, 0);
    clickRow(grid(), 0);
    QTest::keyClick(&grid(), Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(wroteNothing());
    EXPECT_EQ(QApplication::clipboard()->text().count(u'\t'), 6);
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(column(0), "Holes;");
    QApplication::clipboard()->clear(); // as when the program is gone that copied
    show(item<KorDsmReprMapRuleItem>("HB railing"));
    clickRow(grid(), 0);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(column(0), "Rails;Main part;Fitted parts;Fitted parts;Holes;");
    EXPECT_EQ(grid().getCellText(1, 3), "HB mark");
    EXPECT_EQ(grid().selectedRows(), (std::vector{1, 2}));

    // A list of another kind says what it takes.
    open(item<KorDsmViewDimensioningItem>("HB chain"), 1);
    const int before = grid().rowCount();
    QString told;
    QTimer::singleShot(0, qApp, [&told] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            told = box->text();
            box->accept();
        }
    });
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(grid().rowCount(), before);
    EXPECT_TRUE(told.contains("\"Dimension of the view\"")) << told.toStdString();

    QApplication::clipboard()->setText("something else");
    EXPECT_FALSE(PartClipboard::holds(
        *KorDSMEditedList::of(SourceId::user(), {kTableReprMap, map.recordKey()}, kTableReprMapEntry)));
}

TEST_F(PartListEditorTest, RowsOfAnotherSourceAreLinkedOrBringWhatTheyUseAfterAQuestion) {
    useSource(SourceId::standard());
    open(item<KorDsmReprMapRuleItem>("Single part"), 0);
    clickRow(grid(), 0);
    key(Qt::Key_C, Qt::ControlModifier);
    const std::string set = grid().getCellText(0, 1).toStdString();
    useSource(SourceId::user());
    const auto sets = [this] { return databases.here()->table(kTableQualifierSet).rows().size(); };
    const auto answer = [](const char* button, QString& asked) {
        QTimer::singleShot(0, qApp, [button, &asked] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            asked = box->text();
            for (QAbstractButton* each : box->buttons())
                if (each->text() == QString::fromUtf8(button))
                    return each->click();
            ADD_FAILURE() << "there is no " << button;
        });
    };
    open(map, 0);
    clickRow(grid(), 2);
    const int before = sets();
    QString asked;
    answer("Cancel", asked);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(wroteNothing()) << "asking leaves nothing behind";
    answer("&Copy", asked);
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(grid().rowCount(), 4);
    EXPECT_EQ(grid().getCellText(3, 1).toStdString().substr(0, set.size()), set);
    EXPECT_TRUE(asked.contains(QStringLiteral("copied along: "))) << asked.toStdString();
    EXPECT_TRUE(asked.contains(QString::fromStdString(set))) << asked.toStdString();
    const int copied = sets();
    EXPECT_GT(copied, before);

    // What is there now is used, without a question; of another content it may be linked.
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(grid().rowCount(), 5);
    EXPECT_EQ(sets(), copied);
    const auto& mine = *CurrentRows::find(kTableQualifierSet, grid().getCellText(4, 1));
    ASSERT_TRUE(databases.setCell(kTableQualifierSet, KorOdbcKey(mine.key), 4, KorString("Ours")).isStored());
    answer("&Link", asked);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(grid().getCellText(5, 1), mine.name);
    EXPECT_EQ(sets(), copied);
    EXPECT_TRUE(asked.contains(QStringLiteral("another content: 1 ("))) << asked.toStdString();
}

TEST_F(PartListEditorTest, OneAspectOfACopiedRowGoesOntoAllSelectedOnes) {
    open(map, 0);
    clickRow(grid(), 0);
    key(Qt::Key_C, Qt::ControlModifier);
    const KorString appearance = grid().getCellText(0, 2);
    const std::string sets = column(1);
    grid().selectRows({1, 2});
    QTimer::singleShot(0, qApp, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->close();
        for (QAction* action : menu->actions())
            if (action->menu())
                action->menu()->actions().at(1)->trigger();
    });
    Q_EMIT grid().customContextMenuRequested(grid().visualItemRect(grid().item(1, 2)).center());
    EXPECT_EQ(column(2), (appearance + ";" + appearance + ";" + appearance + ";").toStdString());
    EXPECT_EQ(column(1), sets);
}

TEST_F(PartListEditorTest, AChosenQualifierSetIsSaidInWords) {
    TabContent entries("Tabs", "Entries");
    entries.addPage(new KorDSMPageReprMapItem(&m_window));
    entries.createPages();
    show(entries, item<KorDsmReprMapItem>("Main part"));
    QComboBox* sets = nullptr;
    for (auto* combo : page().findChildren<QComboBox*>())
        if (combo->accessibleName() == QStringLiteral("Qualifier set"))
            sets = combo;
    ASSERT_NE(sets, nullptr);
    QHelpEvent pointed(QEvent::ToolTip, {}, {});
    QApplication::sendEvent(sets, &pointed);
    EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("Profile"))) << QToolTip::text().toStdString();

    // As each one is in the drop-down of a cell.
    open(map, 0);
    grid().editCell(2, 1);
    auto* cell = grid().findChild<VELComboTree*>();
    ASSERT_NE(cell, nullptr);
    cell->showPopup();
    auto* tree = cell->findChild<QTreeView*>();
    const QPoint place = tree->visualRect(tree->currentIndex()).center();
    QHelpEvent rested(QEvent::ToolTip, place, tree->viewport()->mapToGlobal(place));
    QApplication::sendEvent(tree->viewport(), &rested);
    const auto& holes = row<StructDetObjQualifierSet>("HB holes");
    EXPECT_EQ(fromQt(QToolTip::text()), KorDSMQualifierWords::sentenceOf(holes.key));
}

TEST_F(PartListEditorTest, TheLastRowOfAMapSaysWhatBecomesOfTheRest) {
    open(map, 0);
    auto& leftOut = control<QRadioButton>(5891);
    ASSERT_TRUE(leftOut.isChecked());
    click(5890);
    EXPECT_TRUE(wroteOnly(map, 3, std::int64_t{0}));
    takeBack(map);
    EXPECT_TRUE(leftOut.isChecked());
}

TEST_F(PartListEditorTest, EnterGoesToWhatACellNames) {
    open(map, 0);
    clickRow(grid(), 0);
    key(Qt::Key_Return);
    EXPECT_EQ(gone, (RowRef{kTableReprMapEntry, editor().selected().at(0)}));
    grid().setCurrentCell(0, 2);
    key(Qt::Key_Return);
    EXPECT_EQ(gone.table, kTableAppearance);
    EXPECT_TRUE(wroteNothing());
}

TEST_F(PartListEditorTest, WithoutConsentOrRightNothingIsWritten) {
    m_answer = KorDSMGuardedWrite::kDecline;
    auto& set = item<KorDsmQualifierSetItem>("HB holes");
    open(set, 2);
    const int before = grid().rowCount();
    clickRow(grid(), 0);
    key(Qt::Key_Insert);
    EXPECT_FALSE(m_asked.empty());
    EXPECT_EQ(grid().rowCount(), before);
    EXPECT_TRUE(wroteNothing());

    useSource(SourceId::standard());
    auto& standard = item<KorDsmReprMapRuleItem>("Single part");
    open(standard, 0);
    clickRow(grid(), 0);
    EXPECT_EQ(enabledButtons(), "000000");
    key(Qt::Key_Insert);
    key(Qt::Key_Delete);
    key(Qt::Key_F2);
    EXPECT_EQ(grid().findChild<QComboBox*>(), nullptr);
    EXPECT_EQ(grid().rowCount(), 3);
    key(Qt::Key_Return);
    EXPECT_EQ(gone.table, kTableReprMapEntry) << "looking is always possible";
}

TEST_F(PartListEditorTest, AQualifiersNumbersAreWordsAndItsPropertyIsOfferedInThoseThatAreKnown) {
    open(item<KorDsmQualifierSetItem>("HB main profile"), 2);
    grid().setFocus();
    grid().setCurrentCell(0, 0);
    QStringList words;
    for (const auto* combo : page().findChildren<QComboBox*>())
        words << combo->currentText();
    EXPECT_TRUE(words.contains("Profile") && words.contains("Main part")) << words.join(u';').toStdString();
    KorLineEdit* property = nullptr;
    for (auto* edit : page().findChildren<KorLineEdit*>())
        property = edit->accessibleName().startsWith("Property") ? edit : property;
    ASSERT_NE(property, nullptr);
    ASSERT_TRUE(property->completer() && property->isVisible());
    property->setFocus();
    QTest::keyClick(property, Qt::Key_Down);
    const QAbstractItemModel* offered = property->completer()->completionModel();
    EXPECT_FALSE(offered->match(offered->index(0, 0), Qt::DisplayRole, "thickness", 1).isEmpty());
    QTest::keyClick(property->completer()->popup(), Qt::Key_Escape);
    property->selectAll();
    keys(*property, "bore");
    QTest::keyClick(property, Qt::Key_Return);
    EXPECT_EQ(row<StructDetObjQualifier>("Profile family").property.view(), "bore") << "any text is taken";
}
