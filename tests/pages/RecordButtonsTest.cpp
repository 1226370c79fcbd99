#include "pages/RecordButtons.h"
#include "pages/KorDSMPageDimPointSelection.h"
#include "pages/KorDSMPageReprMapItem.h"
#include "pages/PageFixture.h"

#include <QDialog>
#include <QToolButton>

namespace {

class RecordButtonsTest : public PageFixture {
protected:
    RecordButtonsTest() : group("Tabs", "Group") {
        group.addPage(new KorDSMPageDimPointSelection(&m_window));
        group.addPage(new KorDSMPageReprMapItem(&m_window));
        group.createPages();
    }

    void onMessage(const KorMessage& message) override {
        PageFixture::onMessage(message);
        if (message.number == DsmGoToRecord::kNumber)
            gone = static_cast<const DsmGoToRecord&>(message).row;
        if (message.number == DsmDataChanged::kNumber)
            isModified = true;
        if (message.number == DsmSetModified::kNumber)
            isModified = static_cast<const DsmSetModified&>(message).modified;
    }

    /// The buttons beside the choice of an appearance: new, copy, rename, go.
    QList<QToolButton*> buttons() {
        for (const RecordButtons* each : page().findChildren<RecordButtons*>())
            if (each->parentWidget()->isAncestorOf(&control(kAppearance)))
                return each->findChildren<QToolButton*>();
        return {};
    }
    void press(int button) { QTest::mouseClick(buttons().at(button), Qt::LeftButton); }
    const StructDetObjReprMapKey& entry() { return *rowOfKey<StructDetObjReprMapKey>(shown.recordKey()); }

    static constexpr int kAppearance = 6005; // the field of the column
    TabContent group;
    KorDsmReprMapItem& shown = item<KorDsmReprMapItem>("Main part");
    RowRef gone;
    bool isModified = false; // as the window's Apply would show
};

} // namespace

TEST_F(RecordButtonsTest, MakeCopyAndReachWhatTheFieldChooses) {
    show(group, shown);
    turnTo(1);
    ASSERT_EQ(buttons().size(), 4);
    const std::int32_t before = entry().appearanceKey;
    press(3);
    EXPECT_EQ(gone, (RowRef{kTableAppearance, before}));
    EXPECT_TRUE(wroteNothing());

    answerName("Thick and red");
    press(0);
    EXPECT_EQ(textOf(kAppearance), "Thick and red");
    EXPECT_EQ(entry().appearanceKey, row<StructDetObjAppearance>("Thick and red").key);
    const std::size_t steps = this->steps().size();
    databases.undo();
    EXPECT_EQ(entry().appearanceKey, before);
    EXPECT_LT(this->steps().size() + 1, steps) << "record and choice are one step";

    show(shown);
    answerName("Renamed here");
    press(2);
    EXPECT_EQ(textOf(kAppearance), "Renamed here");
    EXPECT_EQ(rowOfKey<StructDetObjAppearance>(before)->name, "Renamed here");
    answerName("Only here");
    press(1);
    EXPECT_EQ(entry().appearanceKey, row<StructDetObjAppearance>("Only here").key);
    EXPECT_EQ(row<StructDetObjAppearance>("Only here").visibleColor,
              rowOfKey<StructDetObjAppearance>(before)->visibleColor);
}

TEST_F(RecordButtonsTest, WhatIsDeclinedOrOnlyReadMakesNothing) {
    show(group, shown);
    turnTo(1);
    for (const int button : {0, 1}) {
        QTimer::singleShot(0, qApp,
                           [] { static_cast<QDialog*>(QApplication::activeModalWidget())->reject(); });
        press(button);
    }
    EXPECT_TRUE(wroteNothing());

    // The map is shared, and the user does not want it changed: then there is no new record either.
    m_answer = KorDSMGuardedWrite::kDecline;
    answerName("For nothing");
    press(0);
    EXPECT_FALSE(m_asked.empty());
    EXPECT_TRUE(wroteNothing());
    EXPECT_FALSE(isModified) << "there is nothing to apply";

    useSource(SourceId::standard());
    auto& standard = item<KorDsmReprMapItem>("Part");
    show(group, standard);
    turnTo(1);
    EXPECT_FALSE(buttons().at(0)->isEnabled());
    EXPECT_FALSE(buttons().at(1)->isEnabled());
    EXPECT_TRUE(buttons().at(3)->isEnabled());
}
