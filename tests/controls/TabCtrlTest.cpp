#include "controls/KorControls.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorLineEdit.h"
#include "controls/KorTabCtrl.h"
#include "controls/KorTabPage.h"
#include "controls/KorTemplates.h"
#include "support/Widgets.h"

#include <QAccessible>
#include <QCheckBox>
#include <QScrollArea>
#include <QTabBar>

#include <array>

namespace {

std::vector<std::string> calls;

/// Writes down what it is told, with the name of the data that it has at that moment.
class Page : public KorTabPage {
public:
    Page(QWidget* parent, const char* name) : KorTabPage(parent, 2001, name), m_name(name) {}

    bool OnInitDialog() override {
        note("init");
        return true;
    }
    void OnShow(int show) override {
        if (!show)
            KorControls::commitEdits(this);
        note(show ? "show" : "hide");
    }
    void OnActivate(int active) override { note(active ? "activate" : "deactivate"); }
    bool PreTranslateMessage(QKeyEvent* event) override {
        return event->key() == Qt::Key_Delete && takesDelete;
    }

    bool takesDelete = false;

private:
    void note(const std::string& what) {
        const char* item = getData() ? getData().as<char>() : "-";
        calls.push_back(m_name + " " + what + " " + item + (isVisible() ? "" : " hidden"));
    }

    std::string m_name;
};

using Calls = std::vector<std::string>;

Calls taken() {
    return std::exchange(calls, {});
}

class TabCtrl : public testing::Test {
protected:
    TabCtrl() {
        KorLayoutStore::setBackend({}, {});
        KorLayoutStore::write("DSMTabs/Group", "");
        KorTemplates::setFactory([](int templateId, QWidget* form) {
            auto* field = new KorLineEdit;
            KorControls::setId(field, 1040);
            (new QVBoxLayout(form))->addWidget(field);
            form->setMinimumHeight(900);
            return templateId == 2001;
        });
        group.addPage(one = new Page(&window, "one"));
        group.addPage(two = new Page(&window, "two"));
        other.addPage(new Page(&window, "other"));
        group.createPages();
        other.createPages();
        tabs = new KorTabCtrl(&window);
        (new QVBoxLayout(&window))->addWidget(tabs);
        window.resize(400, 300);
        showActive(window);
        calls.clear();
    }

    void clickTab(int index) {
        auto* bar = tabs->findChild<QTabBar*>();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
    }
    KorLineEdit* edit(QWidget* page) { return KorControls::find<KorLineEdit>(page, 1040); }

    char item1[2] = "A";
    char item2[2] = "B";
    TabContent group{"DSMTabs", "Group"};
    TabContent other{"DSMTabs", "Other"};
    QWidget window;
    Page* one;
    Page* two;
    KorTabCtrl* tabs;
};

} // namespace

TEST_F(TabCtrl, PagesAreLeftWithTheirOldDataAndShownWithTheNew) {
    group.setPageData(item1, -1);
    tabs->setCurrentContent(&group);
    EXPECT_EQ(taken(), (Calls{"one show A", "one activate A"}));

    clickTab(1);
    EXPECT_EQ(taken(), (Calls{"one hide A", "one deactivate A", "two show A", "two activate A"}));

    tabs->finishCurrentPage();
    group.setPageData(item2, -1);
    tabs->setCurrentContent(&group);
    EXPECT_EQ(taken(), (Calls{"two hide A", "two deactivate A", "two show B", "two activate B"}));

    group.setPageData(item1, -1);
    EXPECT_EQ(taken(), (Calls{"two hide B", "two deactivate B", "two show A", "two activate A"}));

    other.setPageData(item2, -1);
    tabs->setCurrentContent(&other);
    EXPECT_EQ(taken(), (Calls{"two hide A", "two deactivate A", "other show B", "other activate B"}));
    tabs->setCurrentContent(nullptr);
    EXPECT_EQ(taken(), (Calls{"other hide B", "other deactivate B"}));
    EXPECT_EQ(tabs->currentPage(), nullptr);
}

TEST_F(TabCtrl, ATypedTextCountsBeforeItsPageIsHidden) {
    tabs->setCurrentContent(&group);
    QObject::connect(edit(one), &KorLineEdit::committed, one,
                     [](const QString& text) { calls.push_back("committed " + text.toStdString()); });
    edit(one)->setFocus();
    QTest::keyClicks(edit(one), "typed");
    taken();
    clickTab(1);
    EXPECT_EQ(taken(),
              (Calls{"committed typed", "one hide -", "one deactivate -", "two show -", "two activate -"}));
}

TEST_F(TabCtrl, TheLastActiveTabOfAGroupIsRemembered) {
    tabs->setCurrentContent(&group);
    clickTab(1);
    TabContent again("DSMTabs", "Group");
    again.addPage(new Page(&window, "first"));
    again.addPage(new Page(&window, "second"));
    again.createPages();
    EXPECT_EQ(again.currentIndex(), 1);
    tabs->setCurrentContent(&other);
    tabs->setCurrentContent(&group);
    EXPECT_EQ(tabs->currentPage(), two);
    EXPECT_TRUE(two->isVisible());
}

TEST_F(TabCtrl, TabsShowTitlesAndMarksAndKeysChangeThem) {
    tabs->setCurrentContent(&group);
    auto* bar = tabs->findChild<QTabBar*>();
    two->setTitle("Title");
    two->setModified(true);
    EXPECT_EQ(bar->tabText(1), QStringLiteral("Title *"));
    two->setModified(false);
    EXPECT_EQ(bar->tabText(1), QStringLiteral("Title"));
    QTest::keyClick(edit(one), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(tabs->currentPage(), two);
    QTest::keyClick(edit(two), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tabs->currentPage(), one);
    EXPECT_LT(tabs->minimumSizeHint().height(), 200) << "a page higher than the screen scrolls";
}

TEST_F(TabCtrl, ThePageSeesAKeyBeforeItsControls) {
    tabs->setCurrentContent(&group);
    edit(one)->setFocus();
    edit(one)->setText(QStringLiteral("xy"));
    edit(one)->setCursorPosition(0);
    one->takesDelete = true;
    QTest::keyClick(edit(one), Qt::Key_Delete);
    EXPECT_EQ(edit(one)->text(), QStringLiteral("xy"));
    one->takesDelete = false;
    QTest::keyClick(edit(one), Qt::Key_Delete);
    EXPECT_EQ(edit(one)->text(), QStringLiteral("y"));
}

TEST_F(TabCtrl, DestroyingAPageWithAHalfTypedTextWritesNothing) {
    bool told = false;
    auto content = std::make_unique<TabContent>("DSMTabs", "Gone");
    auto* page = new Page(&window, "gone");
    content->addPage(page);
    content->createPages();
    tabs->setCurrentContent(content.get());
    QObject::connect(edit(page), &KorLineEdit::committed, page, [&] { told = true; });
    edit(page)->setFocus();
    QTest::keyClicks(edit(page), "half");
    // What screen readers know must go too: the address can be another widget's soon.
    const auto known = [](QWidget* widget) {
        return QAccessible::uniqueId(QAccessible::queryAccessibleInterface(widget));
    };
    auto* box = new QCheckBox(page);
    const std::array<QAccessible::Id, 2> ids = {known(edit(page)), known(box)};
    content.reset();
    for (const QAccessible::Id id : ids)
        EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
    EXPECT_FALSE(told);
    EXPECT_EQ(tabs->currentContent(), nullptr);
    EXPECT_EQ(tabs->findChild<QTabBar*>()->count(), 0);
}

TEST_F(TabCtrl, TabsAreSeenWhenALaterPageIsChosenBeforeTheWindowIsShown) {
    window.hide();
    group.setPageData(item1, -1);
    group.setCurrentIndex(1);
    tabs->setCurrentContent(&group);
    window.show();
    QApplication::processEvents();
    EXPECT_GT(tabs->findChild<QTabBar*>()->height(), 0);
}
