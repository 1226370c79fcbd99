#include "controls/KorButtonGroupMenu.h"
#include "dialogs/KorDSMDialogSearch.h"
#include "services/KorResources.h"
#include "services/Prompts.h"
#include "session/KorDSMRecordCommands.h"
#include "shell/EditorFixture.h"
#include "shell/HelpWindow.h"
#include "shell/PreviewView.h"
#include "support/Accessibility.h"

#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

namespace {

class SearchWindow : public EditorFixture {
protected:
    static constexpr int kField = 2421, kHits = 2422, kSaid = 2423;

    // Opens the search by its key, types, and leaves it by another one.
    void search(const char* text, Qt::Key leave, std::function<void(KorDSMDialogSearch&)> look = {}) {
        bool isShown = false;
        whenShown<KorDSMDialogSearch>([&](KorDSMDialogSearch& dialog) {
            isShown = true;
            auto* field = KorControls::find<QLineEdit>(&dialog, kField);
            field->setText(QString::fromUtf8(text));
            if (look)
                look(dialog);
            QTest::keyClick(field, leave);
            if (dialog.isVisible())
                dialog.reject();
        });
        press(Qt::Key_K, Qt::ControlModifier);
        EXPECT_TRUE(isShown) << text;
    }
    static std::string first(KorDSMDialogSearch& dialog) {
        const auto* hits = KorControls::find<QListView>(&dialog, kHits);
        return hits->model()->index(0, 0).data(Qt::AccessibleTextRole).toString().toStdString();
    }
    QWidget* flash() { return m_dialog->findChild<QWidget*>(QStringLiteral("fieldFlash")); }
};

TEST_F(SearchWindow, LeadsToRecordsFieldsValuesPagesAndTopicsAndRunsCommands) {
    open();
    select(kStyle);
    showTab(1);
    pageControl<QRadioButton>(kBelowDetail)->setFocus();
    search("hb railing", Qt::Key_Return);
    EXPECT_EQ(m_dialog->focusWidget(), &tree()) << "the way goes on by keys";
    EXPECT_TRUE(QString::fromStdString(selected()).startsWith("HB railing")) << selected();
    EXPECT_EQ(flash(), nullptr) << "a record is no field";

    select(kStyle);
    search("titelposition", Qt::Key_Return, [](KorDSMDialogSearch& dialog) {
        EXPECT_EQ(first(dialog), "Title position (Titelposition), Field, Detail style › HB post 1:15 · User");
    });
    EXPECT_EQ(selected(), "HB post 1:15");
    ASSERT_NE(flash(), nullptr);
    QApplication::processEvents();
    auto* field = pageControl<QRadioButton>(kAboveMainView);
    EXPECT_TRUE(field->isChecked()) << "its page is shown";
    EXPECT_EQ(flash()->geometry().center(), field->mapTo(m_dialog.get(), field->rect().center()));

    search("title position above main view", Qt::Key_Return);
    EXPECT_EQ(page()->templateId(), 2002);
    EXPECT_TRUE(page()->isAncestorOf(m_dialog->focusWidget()));

    search("language", Qt::Key_Escape, [](KorDSMDialogSearch& dialog) {
        const auto* hits = KorControls::find<QListView>(&dialog, kHits);
        const QModelIndex top = hits->model()->index(0, 0);
        EXPECT_FALSE(hits->model()->match(top, Qt::DisplayRole, "Language: ", 1, Qt::MatchContains).isEmpty())
            << "an option is found by the word of its menu";
    });

    search("clipping", Qt::Key_Escape);
    EXPECT_EQ(page()->templateId(), 2002) << "Esc leaves all as it was";

    search("qualifier sets section", Qt::Key_Return);
    EXPECT_EQ(KorDSMDialogFactory::getDSMDataStructure().getSelectedSection(),
              KorDSMDefines::kViewQualifiers);
    EXPECT_EQ(m_dialog->focusWidget(), &tree());

    search("help common tasks", Qt::Key_Return);
    const QWidgetList windows = QApplication::topLevelWidgets();
    EXPECT_TRUE(std::ranges::any_of(windows, [](QWidget* window) {
        return qobject_cast<HelpWindow*>(window) && window->windowTitle() == "Common tasks";
    }));

    select({"User"});
    search("hide drawing", Qt::Key_Return, [](KorDSMDialogSearch& dialog) {
        EXPECT_EQ(first(dialog), "Preview: show or hide the drawing, Command, F9");
    });
    EXPECT_TRUE(control<KorButtonGroup>(1212)->button(2097)->isChecked());
    search("detail styles section", Qt::Key_Return);
    select(kStyle);
    QApplication::processEvents();
    const auto* view = m_dialog->findChild<PreviewView*>();
    EXPECT_TRUE(view->isFitted());
    search("zoom in", Qt::Key_Return, [](KorDSMDialogSearch& dialog) {
        EXPECT_EQ(first(dialog), "Preview: zoom in on the drawing, Command, Ctrl++");
    });
    EXPECT_FALSE(view->isFitted());
    press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_TRUE(view->isFitted());
}

TEST_F(SearchWindow, LeadsToWhatNothingUsesWhereItIsRenamedCopiedAndDeleted) {
    open();
    const SourceId user = SourceId::user();
    const auto has = [user](eTableType table, const char* name) {
        return StyleDatabases::current().source(user)->table(table).find(KorString(name)) != nullptr;
    };
    const auto pressInTree = [this](Qt::Key key) {
        m_dialog->activateWindow();
        tree().setFocus();
        QTest::keyClick(&tree(), key);
    };
    const auto answerName = [this](const char* name) {
        answerNext([name](QWidget* modal) { typeName(modal, name); });
    };
    for (const auto& [name, table] :
         {std::pair("Spare map", kTableReprMap), std::pair("Spare view", kTableViewRequest),
          std::pair("Spare look", kTableAppearance)}) {
        ASSERT_TRUE(KorDSMRecordCommands::create(user, table, name, 0).isStored());
        select(kStyle);
        search(name, Qt::Key_Return);
        EXPECT_EQ(selected(), name);
        EXPECT_EQ(tree().getItemText(tree().getParentItem(tree().selectedItem())).view(), "User");
        ASSERT_NE(page(), nullptr);
        answerName("Left part");
        pressInTree(Qt::Key_F2);
        EXPECT_EQ(selected(), "Left part");
        answerName("Twin part");
        press(Qt::Key_D, Qt::ControlModifier);
        EXPECT_EQ(selected(), "Twin part");
        EXPECT_TRUE(has(table, "Twin part"));
        answerYes();
        pressInTree(Qt::Key_Delete);
        EXPECT_FALSE(has(table, "Twin part"));
        EXPECT_NE(selected(), "Twin part");
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_TRUE(has(table, "Twin part"));
    }
    ASSERT_TRUE(KorDSMRecordCommands::create(user, kTableViewArrangeStrategy, "Spare rows", 0).isStored());
    bool isTold = false;
    QTimer told;
    QObject::connect(&told, &QTimer::timeout, [&isTold] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            isTold = box->text().contains("\"Spare rows\"");
            box->close();
        }
    });
    told.start(0);
    search("spare rows", Qt::Key_Return);
    EXPECT_TRUE(isTold) << "no page of its own shows it";
}

TEST_F(SearchWindow, ItsButtonStandsAmongThoseOfTheHistoryAndLeavesThePlaceAsItIs) {
    open();
    select(kStyle);
    select({"User", "Hallberg: railings"});
    bool isShown = false;
    whenShown<KorDSMDialogSearch>([&isShown](QDialog& dialog) {
        isShown = true;
        dialog.reject();
    });
    click(control<KorButtonGroup>(1012)->button(2420));
    EXPECT_TRUE(isShown);
    EXPECT_EQ(selected(), "Hallberg: railings");
}

TEST_F(SearchWindow, SaysWhatWasLookedAtWhereNothingIsFoundAndWhatIsNotPossible) {
    open();
    select({"Standard"});
    search("no such thing", Qt::Key_Return, [](KorDSMDialogSearch& dialog) {
        const QString said = KorControls::find<QLabel>(&dialog, kSaid)->text();
        EXPECT_TRUE(said.contains("\"no such thing\"") && said.contains("Standard") && said.contains("User"))
            << said.toStdString();
        auto* hits = dialog.findChild<QListView*>();
        hits->setFocus();
        QTest::keyClick(hits, Qt::Key_C, Qt::ControlModifier); // there is nothing to copy
        EXPECT_GT(expectReadable(dialog), 1);
        EXPECT_GT(expectNamed(dialog), 1);
    });
    search("rename command", Qt::Key_Return, [](KorDSMDialogSearch& dialog) {
        QTest::keyClick(KorControls::find<QLineEdit>(&dialog, kField), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()) << "a database has no name to change";
        EXPECT_TRUE(KorControls::find<QLabel>(&dialog, kSaid)->text().contains("not possible"));
    });
    EXPECT_EQ(selected(), "Standard");
}

TEST_F(SearchWindow, ACommandComesBeforeTheTopicOfItsNameInEachLanguage) {
    for (const char* language : {"en", "de"}) {
        Prompts::load(KorResources::folder() / "prompts", language);
        open();
        select({"Standard", "General", "Assemblies", "Assembly, general"});
        for (const char* name : {"where used", "dimension settings", "copy with all that it uses",
                                 "search everything", "verwendungsnachweis", "bemaßungseinstellungen",
                                 "mit allem verwendeten kopieren", "alles durchsuchen"})
            search(name, Qt::Key_Escape, [name](KorDSMDialogSearch& dialog) {
                const auto* hits = KorControls::find<QListView>(&dialog, kHits);
                const QStringList kinds = {"Command", "Befehl", "Option"};
                EXPECT_TRUE(kinds.contains(QString::fromStdString(first(dialog)).section(", ", 1, 1)))
                    << name << ": " << first(dialog);
                EXPECT_TRUE(hits->model()->rowCount() > 1) << name << " has a topic, too";
            });
    }
    close();
    Prompts::load(KorResources::folder() / "prompts", "en");
}

TEST_F(SearchWindow, TheNextTextTakesThePlaceOfTheOneBefore) {
    open();
    select(kStyle);
    search("hb railing", Qt::Key_Return);
    whenShown<KorDSMDialogSearch>([](KorDSMDialogSearch& dialog) {
        const auto* field = KorControls::find<QLineEdit>(&dialog, kField);
        EXPECT_EQ(field->text(), "hb railing");
        for (const char letter : {'h', 'b'})
            QTest::keyClick(dialog.windowHandle(), letter);
        EXPECT_EQ(field->text(), "hb");
        dialog.reject();
    });
    press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
}

TEST_F(SearchWindow, TheKeysLeadFromTheFilterIntoTheTree) {
    open();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) {
        select({"User"});
        auto* filter = control<QLineEdit>(1210);
        filter->setFocus();
        filter->setText("hb post 1:15");
        QTest::keyClick(filter, key);
        EXPECT_EQ(selected(), "HB post 1:15");
        EXPECT_TRUE(tree().hasFocus());
        filter->clear();
    }
}

} // namespace
