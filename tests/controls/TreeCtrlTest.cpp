#include "controls/KorTreeCtrl.h"
#include "support/Widgets.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWindow>

namespace {

/// A shown tree: root, with "a" (children "a1", "a2"), "b", "c".
class TreeCtrl : public testing::Test {
protected:
    TreeCtrl() {
        root = tree.insertItem("root");
        a = tree.insertItem("a", -1, root);
        a1 = tree.insertItem("a1", -1, a);
        a2 = tree.insertItem("a2", -1, a);
        c = tree.insertItem("c", -1, root);
        b = tree.insertItem("b", -1, root, nullptr, a);
        QObject::connect(&tree, &KorTreeCtrl::entrySelected, &tree,
                         [this](KorTreeHandle entry) { told.push_back(entry); });
        tree.resize(300, 400);
        tree.show();
        tree.expand(root);
        QCoreApplication::processEvents();
    }

    QPoint centre(KorTreeHandle entry) {
        tree.ensureVisible(entry);
        return tree.visualRect(tree.model()->index(0, 0)).isValid() ? rectOf(entry).center() : QPoint();
    }
    QRect rectOf(KorTreeHandle entry) {
        for (QModelIndex at = tree.model()->index(0, 0); at.isValid(); at = tree.indexBelow(at))
            if (KorTreeModel::entryOf(at) == entry)
                return tree.visualRect(at);
        return {};
    }
    void click(KorTreeHandle entry) { QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, centre(entry)); }

    KorTreeCtrl tree;
    KorTreeHandle root, a, a1, a2, b, c;
    std::vector<KorTreeHandle> told;
};

/// The platform without a screen carries nothing: this brings the drop when a drag has begun, which shows
/// by the drag object that the tree gets as a child.
class DropBringer : public QObject {
public:
    explicit DropBringer(std::function<void()> drop) : m_drop(std::move(drop)) {}

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::ChildAdded)
            m_drop();
        return false;
    }

private:
    std::function<void()> m_drop;
};

} // namespace

TEST_F(TreeCtrl, EntriesKeepTheirOrderAndPlace) {
    EXPECT_EQ(tree.getRoot(), root);
    EXPECT_EQ(tree.getNextSiblingItem(a), b);
    EXPECT_EQ(tree.getNextSiblingItem(b), c);
    EXPECT_EQ(tree.getNextSiblingItem(c), nullptr);
    EXPECT_EQ(tree.getParentItem(a2), a);
    EXPECT_EQ(tree.getParentItem(root), nullptr);
    EXPECT_EQ(tree.GetItemIndex(c), 5);
    EXPECT_EQ(tree.GetItemAt(5), c);
    EXPECT_EQ(tree.GetItemAt(6), nullptr);
    const KorTreeHandle front = tree.insertItem("front", -1, root, nullptr, KorTreeCtrl::first());
    EXPECT_EQ(tree.getChildItem(root), front);
    tree.deleteItem(a);
    EXPECT_EQ(tree.GetItemIndex(c), 3);
    EXPECT_EQ(tree.childCount(root), 3);
}

TEST_F(TreeCtrl, ClicksAndKeysSelectAndAnnounceOnce) {
    click(b);
    EXPECT_EQ(told, std::vector{b});
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::ControlModifier, centre(b));
    EXPECT_EQ(tree.selectedItem(), b) << "Ctrl and a click must not leave nothing selected";
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(tree.selectedItem(), c);
    tree.selectItem(a2);
    EXPECT_TRUE(tree.isExpanded(a)) << "what is above a selected entry is opened";
    EXPECT_EQ(told, (std::vector{b, c, a2}));
}

TEST_F(TreeCtrl, DeletingTheSelectionMovesItToANeighbour) {
    tree.selectItem(a1);
    told.clear();
    QObject::connect(&tree, &KorTreeCtrl::entrySelected, &tree,
                     [this] { EXPECT_EQ(tree.childCount(root), 2) << "told before the entry was gone"; });
    tree.deleteItem(a);
    EXPECT_EQ(tree.selectedItem(), b);
    EXPECT_EQ(told, std::vector{b});
    tree.disconnect();
    tree.deleteChildren(root);
    EXPECT_EQ(tree.selectedItem(), root);
    tree.deleteAll();
    EXPECT_EQ(tree.selectedItem(), nullptr);
    EXPECT_EQ(tree.getRoot(), nullptr);
}

TEST_F(TreeCtrl, ChildrenOnDemandAreMadeWhenTheEntryOpens) {
    tree.setPlaceholder(b, true);
    tree.setPlaceholder(c, true);
    QCoreApplication::processEvents();
    int asked = 0;
    QObject::connect(&tree, &KorTreeCtrl::expanding, &tree, [&](KorTreeHandle entry) {
        if (!tree.isPlaceholder(entry))
            return;
        ++asked;
        if (entry == b)
            tree.insertItems(b, {{"b1"}, {"b2"}});
    });
    click(b);
    QTest::keyClick(&tree, Qt::Key_Right);
    QCoreApplication::processEvents();
    EXPECT_EQ(tree.childCount(b), 2);
    EXPECT_TRUE(tree.isExpanded(b));
    EXPECT_GT(rectOf(tree.getChildItem(b)).height(), 0) << "the new children are shown at once";
    tree.collapse(b);
    tree.expand(b);
    EXPECT_EQ(asked, 1);

    tree.expand(c);
    EXPECT_FALSE(tree.isPlaceholder(c));
    EXPECT_FALSE(tree.isExpanded(c)) << "an entry that turns out to be empty is a leaf";
    EXPECT_EQ(asked, 2);
}

TEST_F(TreeCtrl, TenThousandChildrenOpenAndEachKeepsItsRow) {
    std::vector<KorTreeItem> many(10'000);
    for (std::size_t i = 0; i < many.size(); ++i)
        many[i].text = KorString::number(static_cast<std::int64_t>(i));
    tree.setPlaceholder(b, true);
    QObject::connect(&tree, &KorTreeCtrl::expanding, &tree, [&](KorTreeHandle entry) {
        if (entry == b && tree.isPlaceholder(b))
            tree.insertItems(b, many);
    });
    tree.expand(b);
    const KorTreeHandle last = tree.GetItemAt(tree.GetItemIndex(c) - 1);
    EXPECT_EQ(tree.getItemText(last), KorString("9999"));
    tree.selectItem(last);
    EXPECT_TRUE(tree.viewport()->rect().contains(rectOf(last)));
}

TEST_F(TreeCtrl, EnterActivatesAndTheMenuKeyAsksForAMenu) {
    KorTreeHandle activated = nullptr;
    KorTreeHandle menu = nullptr;
    QObject::connect(&tree, &KorTreeCtrl::itemActivated, &tree, [&](KorTreeHandle e) { activated = e; });
    QObject::connect(&tree, &KorTreeCtrl::contextMenuRequested, &tree, [&](KorTreeHandle e) { menu = e; });
    click(c);
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(activated, c);
    QContextMenuEvent atB(QContextMenuEvent::Mouse, centre(b), tree.viewport()->mapToGlobal(centre(b)));
    QCoreApplication::sendEvent(tree.viewport(), &atB);
    EXPECT_EQ(menu, b);
}

TEST_F(TreeCtrl, AnEntryIsDroppedWhereItIsAccepted) {
    std::vector<std::pair<KorTreeHandle, KorTreeHandle>> drops;
    QObject::connect(&tree, &KorTreeCtrl::dropQuery, &tree,
                     [&](KorTreeHandle, KorTreeHandle target, bool* accept) { *accept = target == b; });
    QObject::connect(&tree, &KorTreeCtrl::dropRequested, &tree,
                     [&](KorTreeHandle source, KorTreeHandle target) { drops.emplace_back(source, target); });
    const auto drag = [&](KorTreeHandle source, KorTreeHandle target) {
        QWindow* window = tree.windowHandle();
        const auto at = [&](KorTreeHandle entry) {
            return tree.viewport()->mapTo(&tree, rectOf(entry).center());
        };
        QTest::mousePress(window, Qt::LeftButton, {}, at(source));
        DropBringer bringer([&] {
            const QMimeData data;
            QDragEnterEvent enter(rectOf(source).center(), Qt::MoveAction, &data, Qt::LeftButton, {});
            QCoreApplication::sendEvent(tree.viewport(), &enter);
            QDropEvent drop(rectOf(target).center(), Qt::MoveAction, &data, Qt::LeftButton, {});
            QCoreApplication::sendEvent(tree.viewport(), &drop);
        });
        tree.installEventFilter(&bringer);
        QTest::mouseMove(window, at(source) + QPoint(2 * QApplication::startDragDistance(), 0));
        QTest::mouseRelease(window, Qt::LeftButton, {}, at(target));
    };
    drag(c, b);
    EXPECT_TRUE(drops.empty()) << "dragging is off at first";
    tree.setDragAllowed(true);
    drag(c, a);
    EXPECT_TRUE(drops.empty());
    drag(c, b);
    EXPECT_EQ(drops, (std::vector<std::pair<KorTreeHandle, KorTreeHandle>>{{c, b}}));
    EXPECT_EQ(tree.childCount(root), 3) << "the tree itself moves nothing";
}

TEST_F(TreeCtrl, AFilterHidesEntriesAndLeavesThemWhereTheyAre) {
    tree.expand(a);
    tree.selectItem(c);
    tree.setFilter([this](const KorTreeEntry& entry) {
        return &entry == root || &entry == a || &entry == a2 || entry.text.view() == "new";
    });
    const auto inView = [this] {
        std::vector<std::string> texts;
        for (QModelIndex at = tree.model()->index(0, 0); at.isValid(); at = tree.indexBelow(at))
            texts.push_back(at.data().toString().toStdString());
        return texts;
    };
    EXPECT_EQ(inView(), (std::vector<std::string>{"root", "a", "a2"}));
    EXPECT_TRUE(tree.isHidden(b));
    EXPECT_EQ(tree.childCount(root), 3);
    // Entries come and go on both sides of what is hidden.
    tree.insertItem("new", -1, root);
    tree.insertItems(root, {{KorString("unseen"), -1, nullptr, false, true}, {KorString("seen")}});
    tree.deleteItem(b);
    tree.insertItem("first", -1, a, nullptr, KorTreeCtrl::first());
    EXPECT_EQ(inView(), (std::vector<std::string>{"root", "a", "first", "a2", "new", "seen"}));
    tree.selectItem(a2);
    tree.deleteItem(a2);
    EXPECT_EQ(tree.getItemText(tree.selectedItem()).view(), "first");
    tree.collapse(a);
    tree.setFilter(nullptr);
    EXPECT_EQ(inView(), (std::vector<std::string>{"root", "a", "first", "a1", "c", "new", "unseen", "seen"}));
}
