#include "data/StyleDatabases.h"
#include "shell/EditorFixture.h"

#include "data/store/LockWait.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "operations/KorOdbcMan.h"
#include "support/OtherProgram.h"

TEST_F(EditorFixture, WhereNothingCanBeWrittenACommandSaysSoBeforeItAsks) {
    open();
    const KorTreeHandle style = select(kStyle);
    constexpr int kCommands[] = {1029, 1033, 1034, 1035, 1039};
    const QString sentences[] = {"\"User\" can be read, not changed",
                                 QString::fromStdString("The style database \"" + path("user.dsdb") +
                                                        "\" was made by a newer version of the program "
                                                        "(version 99); it can be read, but not changed.")};
    for (const bool isNewer : {false, true}) {
        if (isNewer)
            storeElsewhere("user.dsdb", "PRAGMA user_version = 99");
        ASSERT_TRUE(m_databases->openFile(SourceId::user(), path("user.dsdb"), !isNewer));
        ASSERT_FALSE(KorOdbcMan::getEditableStatus());
        for (const int id : kCommands) {
            QString said;
            answerNext([&said](QWidget* modal) {
                if (auto* box = qobject_cast<QMessageBox*>(modal))
                    said = box->text();
                QTest::keyClick(modal, Qt::Key_Escape);
            });
            command(id);
            EXPECT_EQ(said, sentences[isNewer]) << id;
            EXPECT_EQ(tree().selectedItem(), style);
        }
    }
    EXPECT_FALSE(isPending());
}

TEST_F(EditorFixture, AMakersImportGoesIntoTheSourceThatIsSelected) {
    open();
    const std::string file = (m_folder.path() / "post.dsdb").string();
    const KorTreeHandle post = select(kStyle);
    const SourceId user = SourceId::user();
    const SourceId standard = SourceId::standard();
    ASSERT_EQ(KorODBCDetailStyleExports::exportDetail(0, KorDSMSectionTree::itemOf(post)->recordKey(),
                                                      user.dsn, user.index, KorString(file)),
              KorODBCDetailStyleExports::kDone);
    ASSERT_TRUE(m_databases->openFile(standard, path("standard.dsdb"), false));
    m_databases->setOwnerMode(true);
    const KorTreeHandle general = select({"Standard", "General"});
    tree().expand(general);
    tree().selectItem(tree().getChildItem(general));
    QString said;
    readNextMessage(said);
    importFile(file, [](KorDSMDialogImport& dialog) { click(KorControls::find(&dialog, 1)); });
    EXPECT_NE(m_databases->source(standard)->table(kTableDetailStyle).find("HB post 1:15"), nullptr);
    EXPECT_EQ(m_databases->source(user)->table(kTableDetailStyle).find("HB post 1:15 1"), nullptr);
}

TEST_F(EditorFixture, ACellThatCannotBeReadIsToldAlthoughTheTableWasLockedBefore) {
    storeElsewhere("user.dsdb", "UPDATE hatch_settings SET spacing = 'far'");
    open();
    StyleSource& source = *StyleDatabases::current().source(SourceId::user());
    ASSERT_FALSE(source.isRead(*findTable(kTableHatchSettings)));
    const auto toldAtALook = [this] {
        std::string told;
        whenShown<QMessageBox>([&told](QMessageBox& box) {
            told = box.informativeText().toStdString();
            box.close();
        });
        comeBack();
        return told;
    };
    OtherProgram other(path("user.dsdb"));
    other.run("BEGIN EXCLUSIVE");
    const auto before = LockWait::setLimit(std::chrono::milliseconds(1));
    source.table(kTableHatchSettings);
    LockWait::setLimit(before);
    EXPECT_NE(toldAtALook().find("locked by another program"), std::string::npos);
    other.run("COMMIT");
    EXPECT_NE(toldAtALook().find("\"far\" instead of"), std::string::npos);
}
