#include "services/AddInManager.h"
#include "services/KorExchangeUtilities.h"
#include "services/KordoBitmaps.h"
#include "services/ServicesTestSupport.h"

namespace {

class AddInsTest : public ServicesTest {};

} // namespace

TEST_F(AddInsTest, FoldersAreAddInsInTheOrderOfTheirNames) {
    m_folder.write("addins/us/addin.ini", "name = North America \ncountry=US\nicon = flag.svg\n");
    m_folder.write("addins/us/flag.svg", "<svg/>");
    m_folder.write("addins/us/styles.dsdb", "");
    m_folder.write("addins/de/addin.ini", "icon = not.there.svg\n");
    m_folder.write("addins/de/styles.dsdb", "");
    m_folder.write("addins/readme.txt", "no folder");
    m_folder.write("addins/.hidden/file", "");
    AddInManager::getInstance().scan(m_folder.path());
    EXPECT_TRUE(KorHostReport::take().empty());

    KorArray<KorAddInId> ids;
    AddInManagerInterface::getInstance().getInstalledAddIns(ids);
    ASSERT_EQ(ids.length(), 2);
    EXPECT_EQ(ids[0], (KorAddInId{"de", 0}));
    EXPECT_EQ(ids[1], (KorAddInId{"us", 1}));
    const KorAddInInfo info = AddInManagerInterface::getInstance().getInstalledCountryAddInInfo(ids[1]);
    EXPECT_TRUE(info.isValid() && info.name == "North America" && info.country == "US");
    const KorAddIn& american = AddInManager::getInstance().getAddIn(ids[1]);
    EXPECT_EQ(american.getIcon().toStdString(), (m_folder.path() / "addins/us/flag.svg").string());
    EXPECT_EQ(american.database(), m_folder.path() / "addins/us/styles.dsdb");
    const KorAddIn& german = AddInManager::getInstance().getAddIn(ids[0]);
    EXPECT_TRUE(german.info().name == "de" && german.getIcon().isEmpty());
    EXPECT_FALSE(AddInManagerInterface::getInstance().getInstalledCountryAddInInfo({"fr", 2}).isValid());
}

TEST_F(AddInsTest, IncompleteAddInsAreReportedAndLeftOut) {
    m_folder.write("addins/a/styles.dsdb", "");
    m_folder.write("addins/b/addin.ini", "name = Bridges\n");
    m_folder.write("addins/c/addin.ini", "name = Complete\n");
    m_folder.write("addins/c/styles.dsdb", "");
    AddInManager::getInstance().scan(m_folder.path());
    const std::vector<KorString> sentences = KorHostReport::take();
    ASSERT_EQ(sentences.size(), 2u);
    EXPECT_TRUE(mentions(sentences[0].toStdString(), (m_folder.path() / "addins/a").string()));
    EXPECT_TRUE(mentions(sentences[1].toStdString(), (m_folder.path() / "addins/b/styles.dsdb").string()));
    ASSERT_EQ(AddInManager::getInstance().addIns().size(), 1u);
    EXPECT_EQ(AddInManager::getInstance().addIns()[0].id().number, 0) << "numbered without gaps";

    m_folder.write("addins/b/styles.dsdb-journal", "left over");
    AddInManager::getInstance().scan(m_folder.path());
    EXPECT_TRUE(mentions(KorHostReport::take()[1].toStdString(),
                         "moving " + (m_folder.path() / "addins/b/styles.dsdb-journal").string() + " away"));

    AddInManager::getInstance().scan(m_folder.path() / "nothing");
    EXPECT_TRUE(AddInManager::getInstance().addIns().empty() && KorHostReport::take().empty());
    m_folder.write("bad/addins", "a file");
    AddInManager::getInstance().scan(m_folder.path() / "bad");
    EXPECT_TRUE(mentions(onlySentence(), (m_folder.path() / "bad/addins").string()));
}

TEST_F(AddInsTest, AQueueHandsValuesFromOneModuleToAnother) {
    int status = 0;
    KorExchangeUtilities::getNamedQueue("Q", status, 0).push("Number", 42);
    EXPECT_EQ(status, 1);
    KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue("Q", status, 0);
    EXPECT_EQ(queue.getInt("Number"), 42);
    EXPECT_EQ(queue.getDouble("Number"), 42.0);
    queue.push("Number", 2.5);
    queue.push("Text", KorString("Träger"));
    EXPECT_EQ(queue.getInt("Number"), 2);
    EXPECT_EQ(queue.getString("Text"), "Träger");
    EXPECT_EQ(queue.getInt("Text"), 0);
    queue.push("Huge", 1e300);
    EXPECT_EQ(queue.getInt("Huge"), 0);
    EXPECT_FALSE(KorExchangeUtilities::getNamedQueue("Other", status, 0).has("Number"));
}

TEST_F(AddInsTest, PicturesAreFoundByNumber) {
    EXPECT_TRUE(exists(KordoBitmaps::ReadDIBFromDll("KorDetailBitmaps.dll", 1106)));
    EXPECT_TRUE(KordoBitmaps::ReadDIBFromDll("Another.dll", 1106).empty());
    EXPECT_TRUE(KordoBitmaps::ReadDIBFromDll("KorDetailBitmaps.dll", 999999).empty());
    EXPECT_TRUE(exists(KordoBitmaps::pictureFile(AddInManager::getInstance().getCurrentInstalationFlag())));
}
