#include "data/StyleDatabases.h"
#include "operations/KorOdbcGUI.h"
#include "services/CKorHelp.h"
#include "services/KOSettings.h"
#include "services/KorResources.h"
#include "session/KorDSMGuardedWrite.h"
#include "shell/EditorFixture.h"
#include "shell/HelpWindow.h"

#include <QPointer>

// The ways in for hosts: one factory and several, modal and modeless, in any order.

namespace {

class EntryPoints : public EditorFixture {
protected:
    EntryPoints() {
        open();
        close();
        KOSettings::getInstance().setPathData(m_folder.path() / "data");
    }

    static QStringList shown(const QWidget* window) {
        QStringList texts;
        for (const KorTreeCtrl* tree : window->findChildren<KorTreeCtrl*>())
            if (tree->isVisible())
                for (int row = 0; row < tree->model()->rowCount(tree->model()->index(0, 0)); ++row)
                    texts << tree->model()->index(row, 0, tree->model()->index(0, 0)).data().toString();
        return texts;
    }
    /// The key of a qualifier set of the current source that several records use.
    static KorOdbcKey sharedSet() {
        const RowArray& rows = StyleDatabases::current().here()->table(kTableQualifierSet).rows();
        for (int i = 0; i < rows.size(); ++i)
            if (const KorOdbcKey key(rows.at(i).key); KorOdbcGUI::isShared(kTableQualifierSet, key))
                return key;
        ADD_FAILURE() << "no shared qualifier set";
        return {};
    }
    /// Runs the editor; `act` is called with the window that is open then, which is cancelled afterwards.
    static int run(KorDSMDialogFactory& factory, const std::function<void(QWidget*)>& act = {}) {
        QTimer::singleShot(0, qApp, [&] {
            auto* window = static_cast<QDialog*>(factory.window());
            if (act)
                act(window);
            window->reject();
        });
        return factory.DoModal();
    }
};

const QStringList kSources{"Standard", "User"};

} // namespace

TEST_F(EntryPoints, OneFactoryServesManyEditorsModalBesideModeless) {
    KorDSMDialogFactory factory(nullptr);
    QStringList seen;
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(run(factory, [&](const QWidget* window) { seen << shown(window); }), 2);
    EXPECT_EQ(seen, kSources + kSources);

    ASSERT_NE(factory.Create(nullptr), 0);
    const QPointer<QWidget> modeless = factory.window();
    modeless->show();
    EXPECT_EQ(shown(modeless), kSources);
    KorDSMMainDialog* target = dynamic_cast<KorDSMMainDialog*>(KorDSMMainWindow::get());
    EXPECT_EQ(run(factory,
                  [&](const QWidget* window) {
                      EXPECT_NE(window, modeless.data());
                      EXPECT_NE(KorDSMMainWindow::get(), target);
                      EXPECT_EQ(shown(window), kSources);
                  }),
              2);
    // The first editor has everything again.
    ASSERT_TRUE(modeless && modeless->isVisible());
    EXPECT_EQ(shown(modeless), kSources);
    EXPECT_EQ(KorDSMMainWindow::get(), target);
}

TEST_F(EntryPoints, AReplacedFactoryLeavesTheNewEditorItsTargetAndItsQuestion) {
    auto factory = std::make_unique<KorDSMDialogFactory>(nullptr);
    KorDSMSectionLoader().loadDataStructure(KorDSMDialogFactory::getDSMDataStructure());
    ASSERT_NE(factory->Create(nullptr), 0);
    factory->window()->show();
    auto next = std::make_unique<KorDSMDialogFactory>(nullptr);
    ASSERT_NE(next->Create(nullptr), 0);
    factory = std::move(next);
    QWidget* window = factory->window();
    window->show();
    EXPECT_EQ(KorDSMMainWindow::get(), dynamic_cast<KorMessageTarget*>(window));
    EXPECT_EQ(shown(window), kSources);
    EXPECT_FALSE(KorControls::find<QPushButton>(window, kApply)->isEnabled());
    KorDSMMainWindow::sendMessage(DsmDataChanged());
    EXPECT_TRUE(KorControls::find<QPushButton>(window, kApply)->isEnabled());
    StyleDatabases::current().setCurrentSource(SourceId::user());
    const QWidget* asking = nullptr;
    QTimer::singleShot(0, window, [&] {
        if (auto* question = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            asking = question->parentWidget();
            question->accept();
        }
    });
    EXPECT_EQ(KorDSMGuardedWrite::setAttributeInt(kTableQualifierSet, sharedSet(), 3, 1),
              KorDSMGuardedWrite::kWrite);
    EXPECT_EQ(asking, window);
    StyleDatabases::current().undo();
    factory.reset();
    EXPECT_EQ(KorDSMMainWindow::get(), nullptr);
}

TEST_F(EntryPoints, ParentsMayGoFirstAndCopiesShareTheDialog) {
    auto parent = std::make_unique<QWidget>();
    KorDSMDialogFactory factory(parent.get());
    KorDSMDialogFactory copy(factory);
    EXPECT_EQ(copy.window(), factory.window());
    {
        KorDSMDialogFactory assigned(nullptr);
        assigned = copy;
        EXPECT_EQ(assigned.window(), factory.window());
    }
    const QPointer<QWidget> first = factory.window();
    parent.reset();
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(run(copy), 2);
    auto last = std::make_unique<KorDSMDialogFactory>(copy);
    copy = factory = KorDSMDialogFactory(nullptr);
    const QPointer<QWidget> shared = last->window();
    last.reset();
    EXPECT_TRUE(shared.isNull());
}

TEST_F(EntryPoints, TheApplyFlagIsOfTheEditorThatWasOpenedLast) {
    KorDSMDataStructure::m_bApplyWasPressed = true;
    KorDSMDialogFactory factory(nullptr);
    EXPECT_TRUE(KorDSMDataStructure::m_bApplyWasPressed);
    EXPECT_EQ(run(factory), 2);
    EXPECT_FALSE(KorDSMDataStructure::m_bApplyWasPressed);
}

TEST_F(EntryPoints, AModelessEditorFindsItsHelpAndShowsNothingThatWasNotLoaded) {
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    structure.emptyDataStructure();
    structure.initDataStructure();
    KorDSMDialogFactory factory(nullptr);
    // As in a process where nothing was opened before.
    CKorHelp::setViewer({});
    KorResources::setFolder(m_folder.path());
    KorDSMDialogFactory::moduleHandle = SOURCE_DIR "/resources";
    ASSERT_NE(factory.Create(nullptr), 0);
    factory.window()->show();
    factory.window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(factory.window()));
    EXPECT_EQ(shown(factory.window()), QStringList());
    QTest::keyClick(factory.window(), Qt::Key_F1);
    const auto* help = factory.window()->findChild<HelpWindow*>();
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());
    EXPECT_TRUE(KorHostReport::take().empty());
}
