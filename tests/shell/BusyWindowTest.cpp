#include "shell/EditorFixture.h"

#include <QMenu>
#include <QProgressBar>

// What comes from the event loop while the window fills itself waits until it is done.

namespace {

constexpr int kDetailStylesButton = 1064;

} // namespace

TEST_F(EditorFixture, NothingEntersASectionThatIsBeingLoaded) {
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    structure.setShowFullTree(false);
    open();
    storeElsewhere("user.dsdb", "UPDATE qualifier_set_group SET name='Seen elsewhere' "
                                "WHERE key=(SELECT min(key) FROM qualifier_set_group)");
    const auto firstDatabase = [&] {
        return structure.getSection(KorDSMDefines::kViewQualifiers)->children()[0];
    };
    const KorDSMDatabaseItem* before = firstDatabase();
    auto* sections = control<KorButtonGroup>(1234);
    auto* progress = m_dialog->findChild<QProgressBar*>();
    int looks = 0;
    QTimer meanwhile;
    QObject::connect(&meanwhile, &QTimer::timeout, [&] {
        if (!progress->isVisible())
            return meanwhile.stop();
        EXPECT_EQ(firstDatabase(), before) << "the items that are being filled are gone";
        EXPECT_EQ(structure.getSelectedSection(), KorDSMDefines::kViewQualifiers);
        if (++looks > 1)
            return;
        QEvent activation(QEvent::WindowActivate);
        QApplication::sendEvent(m_dialog.get(), &activation);
        sections->button(kDetailStylesButton)->click();
    });
    meanwhile.start(0);
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    EXPECT_GT(looks, 1);
    EXPECT_EQ(firstDatabase(), before);
    EXPECT_NE(tree().childCount(tree().getRoot()), 0);

    QApplication::processEvents();
    EXPECT_EQ(structure.getSelectedSection(), KorDSMDefines::kViewDetailStyles) << "it was chosen meanwhile";
    EXPECT_NE(firstDatabase(), before) << "what others changed is read";
    const auto& groups =
        structure.getSection(KorDSMDefines::kViewQualifiers)->children()[1]->children()[0]->children();
    EXPECT_EQ(groups[0]->getDisplayName().view(), "Seen elsewhere");
}

TEST_F(EditorFixture, ComingBackByTheContextMenuExchangesNoItemBelowIt) {
    open();
    storeElsewhere("user.dsdb", "UPDATE detail_style SET name='Seen elsewhere' WHERE name='HB beam 1:15'");
    const KorTreeHandle entry = select({"User", "Hallberg: posts and beams", "HB post 1:15"});
    const KorDSMDatabaseItem* item = KorDSMSectionTree::itemOf(entry);
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(m_dialog.get(), &activation);
    bool shown = false;
    QTimer::singleShot(0, m_dialog.get(), [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QApplication::processEvents();
        shown = tree().selectedItem() == entry && KorDSMSectionTree::itemOf(entry) == item;
        menu->close();
    });
    Q_EMIT tree().contextMenuRequested(entry, QPoint(0, 0));
    EXPECT_TRUE(shown);
    QApplication::processEvents();
    EXPECT_NE(select({"User", "Hallberg: posts and beams", "Seen elsewhere"}), nullptr);
}
