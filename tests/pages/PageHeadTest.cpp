#include "pages/PageHead.h"
#include "controls/KorLineEdit.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "pages/FormBody.h"
#include "pages/KorDSMPageAppearance.h"
#include "pages/KorDSMPageReprMapRule.h"
#include "pages/KorDSMPageViewProperties.h"
#include "pages/PageFixture.h"

#include <QGroupBox>
#include <QLabel>
#include <QToolButton>

namespace {

class PageHeadTest : public PageFixture {
protected:
    KorLineEdit& name() { return *page().findChild<PageHead*>()->findChild<KorLineEdit*>(); }
    QToolButton& users() { return *page().findChild<PageHead*>()->findChild<QToolButton*>(); }
    /// All that the head says now.
    std::string words() {
        std::string all;
        for (const QLabel* label : page().findChild<PageHead*>()->findChildren<QLabel*>())
            if (label->isVisible() && label->pixmap().isNull())
                all += label->text().toStdString() + ";";
        return all + (users().isVisible() ? users().text().toStdString() : "");
    }
    void onMessage(const KorMessage& message) override {
        PageFixture::onMessage(message);
        if (message.number == DsmGoToRecord::kNumber)
            m_wanted.emplace(static_cast<const DsmGoToRecord&>(message));
    }
    std::optional<DsmGoToRecord> m_wanted;
    void rename(const QString& text) {
        name().setFocus();
        name().selectAll();
        QTest::keyClicks(&name(), text);
        QTest::keyClick(&name(), Qt::Key_Return);
    }
};

} // namespace

TEST_F(PageHeadTest, SaysWhatIsShownAndWhoUsesItAndWhatItLacks) {
    auto& map = item<KorDsmReprMapRuleItem>("HB workshop");
    open<KorDSMPageReprMapRule>(map);
    EXPECT_EQ(name().text(), "HB workshop");
    EXPECT_EQ(words(),
              "&Representation map;Shared;User;Styles: HB beam 1:15; HB beam, long, 1:10; HB post 1:15;"
              "&In 6 views of 3 styles");
    QTest::mouseClick(&users(), Qt::LeftButton);
    auto* list = m_window.findChild<KorDSMDialogWhereUsed*>();
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->isVisible());
    for (const Referrer& entry : databases.here()->referrersOf(kTableReprMap, KorOdbcKey(map.recordKey())))
        if (entry.table->type == kTableReprMapEntry)
            databases.remove(kTableReprMapEntry, KorOdbcKey(entry.key));
    show(map);
    EXPECT_NE(words().find("Still missing: Entries"), std::string::npos) << words();
}

TEST_F(PageHeadTest, RenamesWithTheChecksOfTheCommand) {
    auto& shown = item<KorDsmAppearanceItem>("HB main part");
    auto& twin = item<KorDsmAppearanceItem>("HB main part");
    shown.linkEqualItem(twin);
    open<KorDSMPageAppearance>(shown);
    const QString taken =
        QString::fromStdString(std::string(row<StructDetObjAppearance>("HB holes").name.view()));
    for (const auto& [text, why] : {std::pair(taken, "There is one of this name already."),
                                    std::pair(QStringLiteral(" "), "A name is needed.")}) {
        rename(text);
        EXPECT_EQ(KorFieldNote::textOf(&name()), QString::fromLatin1(why));
        EXPECT_TRUE(wroteNothing());
        QTest::keyClick(&name(), Qt::Key_Escape);
        EXPECT_EQ(name().text(), "HB main part");
    }
    m_answer = KorDSMGuardedWrite::kDecline;
    rename("Main profile");
    EXPECT_TRUE(wroteNothing());
    EXPECT_FALSE(m_asked.empty());
    m_answer = KorDSMGuardedWrite::kWrite;
    show(shown);
    rename("Main profile");
    EXPECT_TRUE(wroteOnly(shown, 1, KorString("Main profile")));
    EXPECT_EQ(twin.getDisplayName(), "Main profile");
    EXPECT_EQ(told<DsmRowsChanged>(), 1);

    useSource(SourceId::standard());
    auto& standard = item<KorDsmAppearanceItem>();
    open<KorDSMPageAppearance>(standard);
    EXPECT_TRUE(name().isReadOnly());
    EXPECT_NE(words().find("Can only be read"), std::string::npos);
}

TEST_F(PageHeadTest, ColumnsOfAFormStandBelowEachOtherWhereThereIsNoRoomForBoth) {
    open<KorDSMPageAppearance>(item<KorDsmAppearanceItem>("HB main part"));
    const QList<QGroupBox*> frames = page().findChild<FormBody*>()->findChildren<QGroupBox*>();
    const auto columns = [&](int width) {
        m_window.resize(width, 900);
        QApplication::processEvents();
        std::set<int> left;
        for (const QGroupBox* frame : frames)
            left.insert(frame->x());
        return left.size();
    };
    EXPECT_EQ(columns(1500), 2u);
    EXPECT_EQ(columns(430), 1u);
    EXPECT_LE(page().width(), m_window.width()) << "nothing has to be scrolled sideways";
    EXPECT_EQ(columns(1500), 2u);
}

TEST_F(PageHeadTest, LeadsToWhatIsMissingBelow) {
    auto& view = item<KorDsmViewRequestItem>("HB front");
    const RowRef lacking{kTableReprMapEntry, row<StructDetObjReprMapKey>("Main part").key};
    ASSERT_TRUE(databases.setCell(lacking.table, KorOdbcKey(lacking.key), 5, std::int64_t{0}).isStored());
    open<KorDSMPageViewProperties>(view);
    QLabel* below = nullptr;
    for (auto* label : page().findChild<PageHead*>()->findChildren<QLabel*>())
        below = label->textFormat() == Qt::RichText ? label : below;
    ASSERT_NE(below, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([below] { return below->isVisible(); })) << "when one stays there";
    EXPECT_TRUE(below->text().startsWith("1 thing is missing below: ")) << below->text().toStdString();
    Q_EMIT below->linkActivated(below->text().section(u'"', 1, 1));
    ASSERT_TRUE(m_wanted);
    EXPECT_EQ(m_wanted->row, lacking);
    EXPECT_EQ(m_wanted->column, 5);
    EXPECT_EQ(m_wanted->within, (RowRef{kTableViewRequest, view.recordKey()}));
}
