#include "base/KorAssert.h"
#include "controls/KorComboBitmap.h"
#include "controls/KorControls.h"
#include "controls/KorMnemonics.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"
#include "dialogs/UserDataFixture.h"
#include "model/KorDSMDefines.h"

#include <QAbstractButton>
#include <QLabel>

namespace {

class NewItem : public UserDataFixture {
protected:
    // As a user who selects all and types something else.
    static void type(QLineEdit* edit, const char* text) {
        QTest::keySequence(edit, QKeySequence::SelectAll);
        QTest::keyClicks(edit, text);
    }
};

class NameDialog : public KorDSMDialogNewItem {
public:
    using KorDSMDialogNewItem::KorDSMDialogNewItem;
    QLineEdit* edit() { return KorControls::find<QLineEdit>(this, 1015); }
    QAbstractButton* ok() { return KorControls::find<QAbstractButton>(this, 1); }
    QString label() { return KorMnemonics::plain(KorControls::find<QLabel>(this, 1016)->text()); }
    QString reason() { return KorControls::find<QLabel>(this, 1017)->text(); }
};

} // namespace

TEST_F(NewItem, RefusesATakenNameWhileItIsTypedAndSaysWhy) {
    NameDialog dialog(KorDSMDefines::kDetailStyle, "HB post 1:15", true, nullptr);
    showActive(dialog);
    EXPECT_EQ(dialog.windowTitle(), "Name of the detail style");
    EXPECT_EQ(dialog.label(), "Name of the detail style");
    EXPECT_EQ(dialog.name(), "HB post 1:15 1");
    EXPECT_TRUE(dialog.ok()->isEnabled());

    type(dialog.edit(), "  HB beam 1:15 ");
    EXPECT_FALSE(dialog.ok()->isEnabled()) << "blanks at the ends make no other name";
    EXPECT_FALSE(dialog.reason().isEmpty());
    QTest::keyClick(dialog.edit(), Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());

    type(dialog.edit(), "hb Beam 1:15 ");
    EXPECT_TRUE(dialog.ok()->isEnabled()) << "another case is another name";
    EXPECT_TRUE(dialog.reason().isEmpty());
    QTest::keyClick(dialog.edit(), Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.name(), "hb Beam 1:15");
}

TEST_F(NewItem, AnEmptyNameDoesNotDisableOkByItself) {
    NameDialog dialog(KorDSMDefines::kQualifierSetGroup, "", true, nullptr);
    showActive(dialog);
    EXPECT_EQ(dialog.name(), "") << "nothing is proposed for groups";
    type(dialog.edit(), "Hallberg: site");
    EXPECT_FALSE(dialog.ok()->isEnabled());
    QTest::keySequence(dialog.edit(), QKeySequence::SelectAll);
    QTest::keyClick(dialog.edit(), Qt::Key_Delete);
    EXPECT_TRUE(dialog.ok()->isEnabled());
    EXPECT_FALSE(dialog.reason().isEmpty());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST_F(NewItem, KnowsEveryKindOfItsTable) {
    constexpr int kUnknown[] = {0, 1, 5, 6, 18, 19, 20, 25, 31, 34};
    int assertions = 0;
    const auto previous = KorAssert::setSink([&](const char*, const char*, int) { ++assertions; });
    for (const int type : kUnknown)
        EXPECT_EQ(NameDialog(type, "", true, nullptr).label(), "") << type;
    EXPECT_EQ(assertions, static_cast<int>(std::size(kUnknown)));
    for (const int type :
         {2, 3, 4, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 21, 22, 23, 24, 26, 27, 28, 29, 30}) {
        NameDialog dialog(type, "", true, nullptr);
        EXPECT_TRUE(dialog.label().startsWith("Name of the ")) << type;
        EXPECT_TRUE(dialog.windowTitle().startsWith("Name of the ")) << type;
        const bool group = KorDSMDefines::isGroupType(KorDSMDefines::eItemType(type)) ||
                           KorDSMDefines::isSectionType(KorDSMDefines::eItemType(type));
        EXPECT_EQ(dialog.name().isEmpty(), group) << type;
    }
    KorAssert::setSink(previous);
    EXPECT_EQ(assertions, static_cast<int>(std::size(kUnknown)));
}

TEST_F(NewItem, WithGroupAsksForNameAndGroup) {
    KorDSMDialogNewItemWithGroup dialog(KorDSMDefines::kQualifierSet, "HB holes", "Hallberg: site", nullptr);
    showActive(dialog);
    EXPECT_EQ(dialog.windowTitle(), "Name of the qualifier set");
    EXPECT_EQ(dialog.name(), "HB holes 1");
    EXPECT_EQ(dialog.groupName(), "Hallberg: site");
    auto* groups = KorControls::find<KorComboBitmap>(&dialog, 2306);
    ASSERT_EQ(groups->count(), 2);
    EXPECT_EQ(groups->itemText(0), "Hallberg: workshop") << "by their order numbers";
    groups->setFocus();
    QTest::keyClick(groups, Qt::Key_Up);
    EXPECT_EQ(dialog.groupName(), "Hallberg: workshop");
    EXPECT_EQ(databases.here()->table(kTableQualifierSetGroup).find(KorOdbcKey(dialog.groupKey()))->name,
              "Hallberg: workshop");
    auto* edit = KorControls::find<QLineEdit>(&dialog, 2304);
    type(edit, "HB grid");
    EXPECT_FALSE(KorControls::find<QAbstractButton>(&dialog, 1)->isEnabled());
    type(edit, "HB grid lines");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(NewItem, WithGroupProposesDimensionRequestsByDimensioningNames) {
    KorDSMDialogNewItemWithGroup free(KorDSMDefines::kDimRequest, "HB chain", "", nullptr);
    EXPECT_EQ(free.name(), "HB chain 1") << "a view dimensioning is called HB chain";
    EXPECT_TRUE(KorControls::find<QAbstractButton>(&free, 1)->isEnabled());
    // A request can have the proposed name although no view dimensioning has it.
    KorDSMDialogNewItemWithGroup taken(KorDSMDefines::kDimRequest, "HB overall", "", nullptr);
    EXPECT_EQ(taken.name(), "HB overall 1");
    EXPECT_TRUE(KorControls::find<QAbstractButton>(&taken, 1)->isEnabled());
    for (const char* next : {"View dimensioning 1", "View dimensioning 2"}) {
        KorDSMDialogNewItemWithGroup unnamed(KorDSMDefines::kDimRequest, "", "", nullptr);
        EXPECT_EQ(unnamed.name(), next);
        StructDetViewDimRequestLinear request;
        request.name = unnamed.name();
        ASSERT_EQ(databases.append(kTableDimRequest, request), WriteResult::kWritten);
    }
    KorDSMDialogNewItemWithGroup style(KorDSMDefines::kDetailStyle, "", "", nullptr);
    EXPECT_EQ(KorControls::find<QLabel>(&style, 2307)->text(), "Category");
    EXPECT_EQ(style.groupName(), "Hallberg: posts and beams");
}
