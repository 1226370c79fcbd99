#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "controls/KorMnemonics.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "dialogs/UserDataFixture.h"
#include "model/KorDSMMessages.h"
#include "records/StyleRecords.h"
#include "records/ViewRecords.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QTimer>

namespace {

class Confirmation : public UserDataFixture, public KorMessageTarget {
protected:
    Confirmation() {
        KorDSMMainWindow::add(this);
        set = databases.here()->table(kTableQualifierSet).find("HB rails")->key;
    }
    ~Confirmation() override { KorDSMMainWindow::remove(this); }

    void onMessage(const KorMessage& message) override {
        if (message.number == DsmSetOptionCheck::kNumber) {
            const auto& check = static_cast<const DsmSetOptionCheck&>(message);
            checks.emplace_back(check.index, check.value);
        }
    }

    /// The answer after clicks on these controls, in their order.
    int answerAfter(std::initializer_list<int> controls) {
        QTimer::singleShot(0, [controls = std::vector<int>(controls)] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            for (const int id : controls) {
                auto* button = KorControls::find<QAbstractButton>(dialog, id);
                button->setEnabled(true); // the copy is offered only where a caller shows its button
                button->click();
            }
        });
        return KorDSMDialogConfirmation::ask(kTableQualifierSet, KorOdbcKey(set), nullptr);
    }

    static constexpr int kOk = 1;
    static constexpr int kCancel = 2;
    static constexpr int kModify = 1212;
    static constexpr int kMakeCopy = 1213;
    static constexpr int kLeave = 1214;
    static constexpr int kDontAsk = 1240;
    static constexpr int kWhole = 1243;
    static constexpr int kOnlyHere = 1244;

    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    std::int32_t set = 0;
    std::vector<std::pair<int, bool>> checks; ///< of the options menu, as told to the window
};

} // namespace

TEST_F(Confirmation, TurnsTheChoiceIntoAnAnswer) {
    EXPECT_EQ(answerAfter({kOk}), 1);
    EXPECT_EQ(answerAfter({kMakeCopy, kOk}), 2);
    EXPECT_EQ(answerAfter({kLeave, kOk}), 0);
    EXPECT_EQ(answerAfter({kLeave, kModify, kOk}), 1);
    EXPECT_EQ(answerAfter({kCancel}), 0);
    EXPECT_EQ(answerAfter({kMakeCopy, kCancel}), 0);
    EXPECT_TRUE(structure.getShowWarning());
}

TEST_F(Confirmation, IsNotAskedAgainOnlyAfterOk) {
    EXPECT_EQ(answerAfter({kDontAsk, kCancel}), 0);
    EXPECT_TRUE(structure.getShowWarning());
    EXPECT_TRUE(checks.empty());
    EXPECT_EQ(answerAfter({kDontAsk, kOk}), 1);
    EXPECT_FALSE(structure.getShowWarning());
    EXPECT_EQ(checks, (std::vector<std::pair<int, bool>>{{2, false}}));
    bool stored = true;
    EXPECT_TRUE(KOSettings::getInstance().readBool(KOSettings::getKeyDSM(), "ShowWarning", stored));
    EXPECT_FALSE(stored);
}

TEST_F(Confirmation, NamesTheRecordAndItsKind) {
    const KorDSMDialogConfirmation dialog(kTableQualifierSet, KorOdbcKey(set), nullptr);
    EXPECT_EQ(KorControls::find<QLabel>(&dialog, 1238)->text(), "HB rails");
    const KorDSMDialogConfirmation other(kTableAppearance, KorOdbcKey(1), nullptr);
    EXPECT_TRUE(KorControls::find<QLabel>(&other, 1235)->text().contains("item"));
    EXPECT_EQ(KorControls::find<QLabel>(&other, 1238)->text(), "");
    EXPECT_TRUE(KorControls::find<QAbstractButton>(&other, kMakeCopy)->isHidden());
    // Which one that is stands below.
    const auto name = databases.here()->table(kTableAppearance).find(KorOdbcKey(1))->name.toStdString();
    EXPECT_EQ(KorControls::find<QLabel>(&other, kWhole)->text().toStdString(), "Appearance \"" + name + "\"");
    EXPECT_EQ(KorControls::find<QLabel>(&dialog, kWhole)->text(), "Qualifier set \"HB rails\"");
}

TEST_F(Confirmation, OffersACopyForOneUserFirst) {
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        auto* copy = KorControls::find<QAbstractButton>(dialog, kOnlyHere);
        EXPECT_EQ(KorMnemonics::plain(copy->text()), QStringLiteral("A copy for \"HB site\" alone…"));
        copy->click();
    });
    EXPECT_EQ(KorDSMDialogConfirmation::ask(kTableQualifierSet, KorOdbcKey(set), nullptr, "HB site"), 2);
    const KorDSMDialogConfirmation nobody(kTableQualifierSet, KorOdbcKey(set), nullptr);
    EXPECT_TRUE(KorControls::find(&nobody, kOnlyHere)->isHidden());
}

TEST_F(Confirmation, ShowsWhomTheChangeReachesUpToThoseWhoShareIt) {
    const auto users = [this](eTableType table, const char* name, QString& caption) {
        const auto key = databases.here()->table(table).find(KorString(name))->key;
        KorDSMDialogConfirmation dialog(table, KorOdbcKey(key), nullptr);
        showActive(dialog);
        caption = KorControls::find<QAbstractButton>(&dialog, 1241)->text();
        auto* list = KorControls::find<KorListCtrl>(&dialog, 1242);
        EXPECT_TRUE(list->isVisible());
        std::vector<std::string> names;
        for (int row = 0; row < list->getItemCount(); ++row)
            names.push_back(list->getItemText(row, 0).toStdString());
        return names;
    };
    QString caption;
    const auto direct = users(kTableViewRequest, "HB front", caption);
    ASSERT_GT(direct.size(), 1u);
    EXPECT_EQ(KorMnemonics::plain(caption), QStringLiteral("Used by (%1)").arg(direct.size()));
    // A box that only one view uses is shared where that view is.
    StructDetViewSystemAndBox box;
    box.name = "Box of one view";
    ASSERT_EQ(databases.append(kTableSystemAndBox, box), WriteResult::kWritten);
    const auto view = databases.here()->table(kTableViewRequest).find("HB front")->key;
    ASSERT_EQ(databases.setCell(kTableViewRequest, KorOdbcKey(view), 2, std::int64_t{box.key}),
              WriteResult::kWritten);
    auto reached = users(kTableSystemAndBox, "Box of one view", caption);
    ASSERT_EQ(reached.size(), direct.size() + 1);
    EXPECT_EQ(reached.front(), "HB front");
    EXPECT_EQ(std::vector<std::string>(reached.begin() + 1, reached.end()), direct);
}
