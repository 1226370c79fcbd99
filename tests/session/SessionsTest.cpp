#include "session/KorDSMUndo.h"
#include "session/SampleSession.h"

#include "model/KorDSMBusy.h"

namespace {

class Sessions : public SampleSession {
protected:
    // In the current session: a pending change of the first detail style of the User database.
    static void change(const char* description) {
        KorOdbcMan::setCurrentDSN(KorDSNDefinitions::kUser);
        KorOdbcMan::setCurrentAddIn(KorDSNDefinitions::kUserIndex);
        StyleDatabases& open = StyleDatabases::current();
        const KorOdbcKey key(open.here()->table(kTableDetailStyle).rows().at(0).key);
        const int column = findTable(kTableDetailStyle)->column("description")->number;
        EXPECT_EQ(KorOdbcMan::setAttribute(kTableDetailStyle, key, column, KorString(description), 0), 1);
    }
};

} // namespace

TEST_F(Sessions, HaveNothingOfEachOther) {
    change("first");
    KorHostReport::add("Something is wrong.");
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    const KorDSMBusy busy;
    {
        EditorSession beside;
        EXPECT_TRUE(StyleDatabases::current().sources().empty());
        EXPECT_FALSE(KorDSMUndo::canUndo());
        KorDSMDataStructure& content = KorDSMDialogFactory::getDSMDataStructure();
        EXPECT_EQ(content.getUpdateStatus(), KorDSMDataStructure::kNotLoaded);
        EXPECT_TRUE(content.getDetailStylesSection()->children().isEmpty());
        EXPECT_FALSE(KorDSMDialogFactory::options().asksBeforeLeaving);
        EXPECT_FALSE(KorDSMBusy::isBusy());
        EXPECT_EQ(KorDSMMainWindow::get(), nullptr);
        EXPECT_TRUE(KorHostReport::take().empty());

        const TempFolder samples;
        ASSERT_EQ(buildSampleData(SOURCE_DIR "/resources", samples.path().string()).error, "");
        ASSERT_TRUE(StyleDatabases::current().openFile(SourceId::user(), samples.file("user.dsdb"), false));
        KorDSMSectionLoader().loadDataStructure(content);
        change("second");
        change("third");
        EXPECT_EQ(StyleDatabases::current().pending().steps().size(), 2u);
        {
            const EditorSession::Use back(session());
            EXPECT_EQ(StyleDatabases::current().pending().steps().size(), 1u);
        }
        EXPECT_GT(content.getDetailStylesSection()->children().length(), 0);
    }
    EXPECT_EQ(StyleDatabases::current().pending().steps().size(), 1u);
    EXPECT_EQ(structure.getUpdateStatus(), KorDSMDataStructure::kUpToDate);
    EXPECT_EQ(&KorDSMDialogFactory::getDSMDataStructure(), &structure);
    EXPECT_EQ(KorDSMMainWindow::get(), this);
    EXPECT_EQ(KorHostReport::take(), std::vector<KorString>{"Something is wrong."});
    EXPECT_TRUE(KorDSMBusy::isBusy());
}

TEST_F(Sessions, StartAnewOneAfterTheOther) {
    for (int run = 0; run < 2; ++run) {
        const EditorSession next;
        EXPECT_TRUE(StyleDatabases::current().sources().empty());
        ASSERT_TRUE(StyleDatabases::current().openFile(SourceId::standard(), file("standard.dsdb"), true));
        KorDSMSectionLoader().loadDataStructure(KorDSMDialogFactory::getDSMDataStructure());
        EXPECT_EQ(KorDSMDialogFactory::getDSMDataStructure().getDetailStylesSection()->children().length(),
                  2);
    }
    EXPECT_EQ(StyleDatabases::current().sources().size(), 2u);
}
