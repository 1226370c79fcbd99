#include "controls/KorListCtrl.h"
#include "support/Widgets.h"

#include <QHeaderView>
#include <QLocale>

namespace {

std::vector<std::string> column(const KorListCtrl& list, int number) {
    std::vector<std::string> texts;
    for (int row = 0; row < list.getItemCount(); ++row)
        texts.push_back(list.getItemText(row, number).toStdString());
    return texts;
}

class ListCtrl : public testing::Test {
protected:
    ListCtrl() {
        QLocale::setDefault(QLocale::German);
        list.insertColumn("Name");
        list.insertColumn("Length", 80, KorListCtrl::eNumber);
        list.setItems({{{"Plan 10", "1.200,5"}}, {{"Plan 2", "99"}}, {{"plan 1", "-"}, -1, &mark}});
        list.resize(400, 300);
        list.show();
    }
    ~ListCtrl() override { QLocale::setDefault(QLocale::C); }

    void clickHeader(int section) {
        const int x = list.header()->sectionViewportPosition(section) + 5;
        QTest::mouseClick(list.header()->viewport(), Qt::LeftButton, {}, QPoint(x, 5));
    }

    int mark = 0;
    KorListCtrl list;
};

} // namespace

TEST_F(ListCtrl, HeadersSortTextsAsPeopleDoAndNumbersByValue) {
    EXPECT_EQ(column(list, 0), (std::vector<std::string>{"Plan 10", "Plan 2", "plan 1"}));
    list.selectRow(list.findItemData(&mark));
    clickHeader(0);
    EXPECT_EQ(column(list, 0), (std::vector<std::string>{"plan 1", "Plan 2", "Plan 10"}));
    EXPECT_EQ(list.selectedRow(), 0) << "the selection stays with its row";
    clickHeader(1);
    EXPECT_EQ(column(list, 1), (std::vector<std::string>{"-", "99", "1.200,5"}));
    clickHeader(1);
    EXPECT_EQ(column(list, 1), (std::vector<std::string>{"1.200,5", "99", "-"}));
    EXPECT_EQ(list.insertItem({{"Plan 3", "500"}}), 1) << "a new row goes to its place";
    EXPECT_EQ(list.getItemData(3).as<int>(), &mark);
}

TEST_F(ListCtrl, KeysActivateAndDeleteRows) {
    int activated = -1;
    int asked = 0;
    QObject::connect(&list, &KorListCtrl::itemActivated, &list, [&](int row) { activated = row; });
    QObject::connect(&list, &KorListCtrl::deletePressed, &list, [&] {
        ++asked;
        EXPECT_EQ(list.deleteSelectedItems(), 2);
    });
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(asked, 0) << "nothing is selected yet";
    list.setMultiSelection(true);
    list.selectRow(0);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(activated, 1);
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(column(list, 0), std::vector<std::string>{"plan 1"});
}
