#include "controls/KorListCtrl.h"
#include "operations/KorOdbcMan.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "session/KorDSMUndo.h"
#include "shell/EditorFixture.h"
#include "shell/KorDSMViewRequestDialog.h"

#include <QComboBox>
#include <QLabel>

// The dialog in which a host lets the user pick a view request.

namespace {

class ViewRequestDialog : public EditorFixture {
protected:
    ViewRequestDialog() {
        open();
        close();
        KOSettings::getInstance().setPathData(m_folder.path() / "data");
        m_queue.clear();
    }

    static std::int32_t keyOf(SourceId source, const char* name) {
        const StructRecord* view =
            StyleDatabases::current().source(source)->table(kTableViewRequest).find(KorString(name));
        return view ? view->key : 0;
    }
    int ask(int key, std::function<void(KorDSMViewRequestDialog&)> act) {
        m_queue.push("RequestKey", key);
        whenShown<KorDSMViewRequestDialog>([act = std::move(act)](KorDSMViewRequestDialog& dialog) {
            act(dialog);
            if (dialog.isVisible())
                dialog.reject();
        });
        return KorDSMDialogFactory::openRequestDialog();
    }
    template <typename T>
    static T& in(QWidget& dialog, int id) {
        return *KorControls::find<T>(&dialog, id);
    }
    static QString selectedIn(QWidget& dialog) {
        return in<KorTreeCtrl>(dialog, 2403).currentIndex().data().toString();
    }
    // Types what to look for, and goes to the first that is found.
    static void lookFor(QWidget& dialog, const QString& text) {
        auto& filter = in<QLineEdit>(dialog, 2402);
        filter.setFocus();
        QTest::keyClicks(&filter, text);
        QTest::keyClick(&filter, Qt::Key_Return);
    }
    static void act(QWidget& dialog, int action) { click(in<KorButtonGroup>(dialog, 2401).button(action)); }

    int m_status = 0;
    KorExchangeQueue& m_queue = KorExchangeUtilities::getNamedQueue("REQUESTDIALOG", m_status, 0);
};

} // namespace

TEST_F(ViewRequestDialog, HandsOverTheRequestWithItsSourceAndOnlyWhatWasConfirmed) {
    const std::int32_t key = keyOf(SourceId::user(), "HB front");
    KorOdbcMan::setCurrentDSN(KorDSNDefinitions::kStandard);
    KorOdbcMan::setCurrentAddIn(KorDSNDefinitions::kStandardIndex);
    EXPECT_EQ(ask(-5,
                  [](KorDSMViewRequestDialog& dialog) {
                      EXPECT_EQ(
                          in<KorTreeCtrl>(dialog, 2403).childCount(in<KorTreeCtrl>(dialog, 2403).getRoot()),
                          4);
                      EXPECT_FALSE(in<QPushButton>(dialog, 1).isEnabled());
                      dialog.accept();
                      lookFor(dialog, "HB front");
                  }),
              -1);
    EXPECT_EQ(m_queue.getInt("RequestKey"), -5);
    EXPECT_FALSE(m_queue.has("DSNForRequestKey"));
    EXPECT_EQ(ask(0,
                  [](KorDSMViewRequestDialog& dialog) {
                      lookFor(dialog, "hb FRONT");
                      EXPECT_EQ(selectedIn(dialog), "HB front");
                      click(&in<QPushButton>(dialog, 1));
                  }),
              1);
    EXPECT_EQ(m_queue.getInt("RequestKey"), key);
    EXPECT_EQ(m_queue.getInt("DSNForRequestKey"), KorDSNDefinitions::kUser);
    EXPECT_EQ(m_queue.getInt("IdxForRequestKey"), KorDSNDefinitions::kUserIndex);
    EXPECT_EQ(KorOdbcMan::getCurrentDSN(), KorDSNDefinitions::kStandard) << "the host's own source";
}

TEST_F(ViewRequestDialog, ShowsTheRequestOfTheCurrentSourceOnlyToBeLookedAt) {
    KorOdbcMan::setCurrentDSN(KorDSNDefinitions::kUser);
    KorOdbcMan::setCurrentAddIn(KorDSNDefinitions::kUserIndex);
    const std::int32_t key = keyOf(SourceId::user(), "HB front");
    ask(key, [](KorDSMViewRequestDialog& dialog) {
        EXPECT_EQ(selectedIn(dialog), "HB front");
        const KorTabPage* shown = in<KorTabCtrl>(dialog, 2405).currentPage();
        ASSERT_NE(shown, nullptr);
        for (const int control : {1011, 1012, 1104})
            EXPECT_FALSE(KorControls::find(shown, control)->isEnabled()) << control;
    });
    KorDSMViewRequestDialog single(key, nullptr);
    whenShown<KorDSMViewRequestDialog>([](KorDSMViewRequestDialog& dialog) {
        auto& tree = in<KorTreeCtrl>(dialog, 2403);
        EXPECT_EQ(tree.childCount(tree.getRoot()), 1);
        tree.selectItem(tree.getParentItem(tree.selectedItem()));
        auto& list = in<KorListCtrl>(dialog, 2406);
        ASSERT_TRUE(list.isVisible());
        list.selectRow(0);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    EXPECT_EQ(single.DoModal(), 1);
    EXPECT_GT(single.requestKey(), 0);
}

TEST_F(ViewRequestDialog, StoresWhatWasMadeByOkAndTakesItBackByCancel) {
    const auto make = [](KorDSMViewRequestDialog& dialog) {
        whenShown<KorDSMDialog>([](KorDSMDialog& question) { typeName(&question, "Section detail"); });
        act(dialog, KorDSMViewRequestDialog::kNew);
        EXPECT_EQ(selectedIn(dialog), "Section detail");
    };
    const std::int32_t key = keyOf(SourceId::user(), "HB front");
    KorOdbcMan::setCurrentDSN(KorDSNDefinitions::kUser);
    KorOdbcMan::setCurrentAddIn(KorDSNDefinitions::kUserIndex);
    EXPECT_EQ(ask(key, make), -1);
    EXPECT_EQ(KorDSMUndo::stepCount(), 0U);
    EXPECT_EQ(keyOf(SourceId::user(), "Section detail"), 0);
    EXPECT_EQ(ask(key,
                  [&](KorDSMViewRequestDialog& dialog) {
                      QString said;
                      whenShown<QDialog>([&said](QDialog& refusal) {
                          said = in<QLabel>(refusal, 2355).text();
                          refusal.reject();
                      });
                      act(dialog, KorDSMViewRequestDialog::kDelete);
                      EXPECT_FALSE(said.isEmpty()) << "the view is used";
                      auto& tree = in<KorTreeCtrl>(dialog, 2403);
                      tree.selectItem(tree.getParentItem(tree.selectedItem()));
                      make(dialog);
                      dialog.accept();
                  }),
              1);
    const std::string stored =
        this->stored("user.dsdb", "SELECT count(*) FROM view_request_category c JOIN view_request v "
                                  "ON c.view_request = v.key WHERE v.name = 'Section detail'");
    EXPECT_EQ(stored, "1") << "listed in the category that was selected";
}
