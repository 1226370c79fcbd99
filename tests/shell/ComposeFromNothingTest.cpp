#include "controls/KorMFCGridCtrl.h"
#include "controls/KorMnemonics.h"
#include "controls/VELComboTree.h"
#include "dialogs/KorDSMDialogAddView.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"
#include "pages/RecordButtons.h"
#include "session/KorDSMListContents.h"
#include "session/KorDSMValueText.h"
#include "shell/EditorFixture.h"
#include "shell/KorDSMSectionTree.h"
#include "support/Composition.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QMenu>
#include <QProcess>
#include <QRadioButton>
#include <QToolTip>

#include <filesystem>
#include <set>

namespace {

namespace fs = std::filesystem;

/// An editor on the Standard and a User database that holds nothing but words.
class ComposeFromNothing : public EditorFixture {
protected:
    ComposeFromNothing() {
        for (const char* folder : {"data", "commands", "elsewhere"}) {
            fs::create_directories(m_folder.file(folder));
            if (std::string(folder) != "data")
                fs::copy(path("standard.dsdb"), m_folder.file(folder));
        }
        fs::remove_all(m_folder.file("data/addins"));
        fs::remove(path("user.dsdb"));
        for (const QStringList& command : Composition::words())
            run("data", command);
        fs::copy(path("user.dsdb"), m_folder.file("commands"));
        open();
        KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    }

    void run(const char* folder, QStringList command) {
        command = QStringList{"--data", QString::fromStdString(m_folder.file(folder))} + command;
        EXPECT_EQ(QProcess::execute(QStringLiteral(DETAILSTYLES_PROGRAM), command), 0)
            << command.join(u' ').toStdString();
    }
    /// All rows of a database in words, without their keys.
    static std::multiset<std::string> contentOf(const std::string& file) {
        StyleDatabases databases;
        EXPECT_TRUE(databases.openFile(SourceId::user(), file, true));
        databases.setCurrentSource(SourceId::user());
        std::multiset<std::string> content;
        for (const TableSchema& table : allTables()) {
            const RowArray& rows = databases.here()->table(table.type).rows();
            for (int i = 0; i < rows.size(); ++i) {
                std::string words = table.name;
                for (const Column& column : table.columns)
                    words += " | " + KorDSMValueText::toText(table, column, rows.at(i)).toStdString();
                content.insert(words);
            }
        }
        return content;
    }

    static QString caption(eTableType type, const char* column) {
        const TableSchema& table = *findTable(type);
        return QString::fromStdString(
            KorDSMValueText::columnCaption(table, *table.column(std::string_view(column))).toStdString());
    }
    template <typename T>
    T& field(eTableType table, const char* column) {
        const QString name = caption(table, column); // a unit can stand behind it
        for (T* each : page()->findChildren<T*>())
            if (each->isVisible() && (each->accessibleName() == name ||
                                      each->accessibleName().startsWith(name + QStringLiteral(" ("))))
                return *each;
        throw std::runtime_error("no field for " + name.toStdString());
    }
    static void chooseIn(QComboBox& combo, const char* text) {
        combo.setFocus();
        combo.showPopup();
        if (auto* tree = qobject_cast<VELComboTree*>(&combo)) {
            auto* search = tree->findChild<QLineEdit*>();
            QTest::keyClicks(search, QString::fromUtf8(text));
            QTest::keyClick(search, Qt::Key_Return);
            return;
        }
        const int index = combo.findText(QString::fromUtf8(text));
        EXPECT_GE(index, 0) << text;
        combo.view()->setCurrentIndex(combo.model()->index(index, combo.modelColumn()));
        QTest::keyClick(combo.view(), Qt::Key_Return);
    }
    void choose(eTableType table, const char* column, const char* text) {
        chooseIn(field<QComboBox>(table, column), text);
    }
    void type(eTableType table, const char* column, const char* text) {
        auto& edit = field<QLineEdit>(table, column);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, QString::fromUtf8(text));
        QTest::keyClick(&edit, Qt::Key_Return);
    }

    KorMFCGridCtrl& grid() { return *page()->findChild<KorMFCGridCtrl*>(); }
    /// Adds a row to the list of the page, at its end, and chooses its cells by the heads of their columns.
    void addRow(const std::vector<std::pair<const char*, const char*>>& cells) {
        grid().selectRows({});
        QTest::keyClick(&grid(), Qt::Key_Insert);
        const int row = grid().rowCount() - 1;
        for (const auto& [head, text] : cells)
            for (int column = 0; column < grid().columnCount(); ++column)
                if (grid().horizontalHeaderItem(column)->text() == QString::fromUtf8(head))
                    setCell(row, column, text);
    }
    void setCell(int row, int column, const char* text) {
        if (grid().item(row, column)->flags() & Qt::ItemIsUserCheckable) {
            grid().setCurrentCell(row, column);
            QTest::keyClick(&grid(), Qt::Key_Space);
            return;
        }
        grid().editCell(row, column);
        if (auto* combo = grid().findChild<QComboBox*>()) {
            chooseIn(*combo, text);
        } else {
            auto* edit = grid().findChild<QLineEdit*>();
            edit->selectAll();
            QTest::keyClicks(edit, QString::fromUtf8(text));
            QTest::keyClick(edit, Qt::Key_Return);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    void answerName(const char* name) {
        whenShown<KorDSMDialogNewItem>([name](KorDSMDialogNewItem& dialog) { typeName(&dialog, name); });
    }
    void answerFiled(const char* name) {
        whenShown<KorDSMDialogNewItemWithGroup>(
            [name](KorDSMDialogNewItemWithGroup& dialog) { typeName(&dialog, name, 2304); });
    }
    void chooseCommand(const char* command) {
        chooseInMenu(command);
        Q_EMIT tree().contextMenuRequested(tree().selectedItem(), m_dialog->pos());
        QApplication::processEvents();
    }
    void makeGroup(KorDSMDefines::eViewSections section, const char* command, const char* name) {
        m_dialog->switchSection(section);
        select({"User"});
        const KorDSMDatabaseItem& content = *KorDSMSectionTree::itemOf(tree().selectedItem());
        EXPECT_TRUE(m_firstSteps.insert(KorDSMListContents::of(content).whenEmpty.toStdString()).second)
            << "each section says what to do first there";
        answerName(name);
        chooseCommand(command);
        EXPECT_EQ(selected(), name);
    }
    /// By the button for new definitions, in the group that is selected or that holds what is.
    void make(const char* name) {
        answerFiled(name);
        command(kNew);
        EXPECT_EQ(selected(), name);
    }
    /// By the button beside the field that is to refer to it.
    void makeFor(eTableType table, const char* column, const char* name, bool isFiled = false) {
        QWidget* line = &field<QComboBox>(table, column);
        while (!line->findChild<RecordButtons*>())
            line = line->parentWidget();
        if (isFiled)
            answerFiled(name);
        else
            answerName(name);
        click(line->findChild<RecordButtons*>()->findChild<QToolButton*>());
        QApplication::processEvents();
        EXPECT_EQ(field<QComboBox>(table, column).currentText().toStdString(), name);
    }
    /// What the selected record uses is made below it, and selected.
    void makeHere(const char* what, const char* name) {
        QTimer::singleShot(0, m_dialog.get(), [what] { trigger(what); });
        answerName(name);
        Q_EMIT tree().contextMenuRequested(tree().selectedItem(), m_dialog->pos());
        QApplication::processEvents();
        EXPECT_EQ(selected(), name);
    }
    /// Chooses in the open menu, or in one that it opens.
    static void trigger(const char* command) {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->close();
        for (QAction* action : menu->findChildren<QAction*>())
            if (KorMnemonics::plain(action->text()) == QString::fromUtf8(command))
                return action->trigger();
        ADD_FAILURE() << "no " << command;
    }
    void goTo(const char* child) {
        tree().expand(tree().selectedItem());
        tree().selectItem(this->child(tree().selectedItem(), child));
        EXPECT_EQ(selected(), child);
    }
    void addView(const char* name) {
        whenShown<KorDSMDialogAddView>([name](KorDSMDialogAddView& dialog) {
            click(KorControls::find(&dialog, 2393));
            typeName(&dialog, name, 2397);
        });
        QTest::keyClick(&grid(), Qt::Key_Insert);
        QApplication::processEvents();
    }

    std::set<std::string> m_firstSteps = {""};
};

} // namespace

TEST_F(ComposeFromNothing, AStyleIsComposedByHandAndIsTheSameAsByCommandsAndElsewhere) {
    using namespace KorDSMDefines;
    makeGroup(kViewQualifiers, "New group…", "Ours");
    make("All");
    addRow({{"Qualifier", "Profile name"}});
    make("Rails");
    choose(kTableQualifierSet, "combination", "Any qualifier");
    addRow({{"Qualifier", "Profile name"}, {"Role", "Main part"}});
    addRow({{"Not", "1"}, {"Qualifier", "Plate purpose"}});

    makeGroup(kViewAnnotations, "New group…", "Ours");
    make("Rail mark");
    makeFor(kTableAnnotationStrategy, "annotation_type", "Mark");
    choose(kTableAnnotationType, "annotation_kind", "Part mark");
    choose(kTableAnnotationType, "leader_style", "Open arrow");
    type(kTableAnnotationType, "text_size", "3.5");
    makeFor(kTableAnnotationStrategy, "arranger_control", "Near");
    goTo("Near");
    type(kTableArrangerControl, "distance", "12");

    makeGroup(kViewDimRequests, "New group…", "Ours");
    make("Length");
    choose(kTableDimRequest, "request_type", "Linear");
    choose(kTableDimRequest, "direction", "Horizontal");
    makeFor(kTableDimRequest, "start_points", "Corners");
    goTo("Corners");
    choose(kTablePointSelection, "qualifier_set", "Rails");
    QHelpEvent pointed(QEvent::ToolTip, {}, {});
    QApplication::sendEvent(&field<QComboBox>(kTablePointSelection, "qualifier_set"), &pointed);
    EXPECT_EQ(QToolTip::text().toStdString(), "any Profile as Main part, or no Plate");
    choose(kTablePointSelection, "point_type", "Outline corner");

    makeGroup(kViewDetailStyles, "New category…", "Workshop");
    make("Rail");
    makeFor(kTableDetailStyle, "arrange_strategy", "Rows");
    choose(kTableViewArrangeStrategy, "projection", "Third angle");
    showTab(1);
    click(pageControl<QRadioButton>(kBelowDetail));
    showTab(3);
    for (auto* radio : page()->findChildren<QRadioButton*>())
        if (KorMnemonics::plain(radio->text()) == QStringLiteral("Whole model"))
            click(radio);
    showTab(4);
    for (const char* view : {"Front", "Section"})
        addView(view);

    const Path front = {"User", "Workshop", "Rail", "Front"};
    select(front);
    makeHere("System and box…", "Box");
    choose(kTableSystemAndBox, "system_source", "Part");
    choose(kTableSystemAndBox, "orientation", "Front");
    select(front);
    makeHere("View dimensioning…", "Along");
    addRow({{"Dimension request", "Length"}});
    select(front);
    makeHere("Representation map…", "Map");
    addRow({{"Name", "Rest"}, {"Qualifier set", "All"}});
    grid().setCurrentCell(0, 2);
    answerName("Fine");
    QTimer::singleShot(0, m_dialog.get(), [] { trigger("Make a new one and choose it…"); });
    Q_EMIT grid().customContextMenuRequested(grid().visualItemRect(grid().item(0, 2)).center());
    QApplication::processEvents();
    addRow({{"Name", "Rails"},
            {"Qualifier set", "Rails"},
            {"Appearance", "Fine"},
            {"Annotation strategy", "Rail mark"}});
    QTest::keyClick(&grid(), Qt::Key_Up, Qt::AltModifier);
    goTo("Rails");
    goTo("Fine");
    choose(kTableAppearance, "visible_status", "Visible");
    choose(kTableAppearance, "visible_linetype", "CONTINUOUS");
    choose(kTableAppearance, "hidden_linetype", "HIDDEN");
    select(front);
    showTab(1);
    chooseIn(*pageControl<QComboBox>(1022), "Always");
    select({"User", "Workshop", "Rail", "Section"});
    chooseIn(*pageControl<QComboBox>(1022), "Always");
    showTab(0);
    chooseIn(*pageControl<QComboBox>(1011), "Box");
    chooseIn(*pageControl<QComboBox>(1013), "Map");
    click(button(kApply));
    select({"User", "Workshop", "Rail"});
    const std::string file = m_folder.file("rail.dsdb");
    answerNext([&file](QWidget* dialog) { nameFile(dialog, file); });
    QString said;
    readNextMessage(said);
    command(kExport);
    click(button(kOk));
    m_databases.reset();
    const std::multiset<std::string> byHand = contentOf(path("user.dsdb"));

    for (const QStringList& command : Composition::commands())
        run("commands", command);
    EXPECT_EQ(contentOf(m_folder.file("commands/user.dsdb")), byHand);

    close();
    KorDSMDialogFactory::getDSMDataStructure().emptyDataStructure();
    m_data = "elsewhere";
    open();
    importFile(file, [&said](KorDSMDialogImport& dialog) {
        readNextMessage(said);
        click(KorControls::find(&dialog, 1));
    });
    EXPECT_EQ(said.toStdString(), "1 detail style was imported.");
    EXPECT_EQ(selected(), "Rail");
    click(button(kOk));
    m_databases.reset();
    EXPECT_EQ(contentOf(path("user.dsdb")), byHand);
}
