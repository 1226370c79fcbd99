#include "app/ProgramFixture.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonObject>

namespace {

class PictureTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        ASSERT_EQ(runBare({"samples", named("samples")}).exitCode, 0);
    }
    ProgramRun picture(const QStringList& arguments) {
        return runBare(QStringList{"--data", named("samples"), "picture"} + arguments);
    }
};

} // namespace

TEST_F(PictureTest, DrawsAStyleIntoAFileThatSaysItIsSchematic) {
    const QStringList column = {"Column, shop drawing", "--out", named("c.svg"), "--json"};
    const ProgramRun drawn = picture(column);
    EXPECT_EQ(drawn.exitCode, 0) << drawn.complaints.join('\n').toStdString();
    EXPECT_EQ(drawn.json()["part"].toString(), "Column with base plate and anchors");
    EXPECT_EQ(drawn.json()["views"].toArray().size(), 5);
    const std::string file = bytesOf(folder() / "c.svg");
    EXPECT_TRUE(file.starts_with("<?xml") && file.find("Schematic, of the sample part") != std::string::npos);
    EXPECT_EQ(picture(column).exitCode, 1); // it is there
    environment.insert("LC_ALL", "de_DE.UTF-8");
    EXPECT_EQ(picture(column + QStringList{"--overwrite"}).exitCode, 0);
    std::string german = bytesOf(folder() / "c.svg");
    EXPECT_NE(german.find("Schematisch"), std::string::npos);
    const auto drawnLength = [](const std::string& text) { return text.rfind("<text") - text.find("<g "); };
    EXPECT_EQ(drawnLength(german), drawnLength(file));
    ASSERT_EQ(picture(column + QStringList{"--overwrite", "--sheet"}).exitCode, 0);
    german = bytesOf(folder() / "c.svg");
    EXPECT_NE(german.find("„Hauptansicht“"), std::string::npos);
    EXPECT_EQ(german.find("Main view"), std::string::npos) << "words are those of the pages";
}

TEST_F(PictureTest, ShowsOneViewOfAnotherPart) {
    const ProgramRun drawn = picture({"Beam, shop drawing", "--part", "Long-Beam", "--view", "Beam, top",
                                      "--out", named("t.svg"), "--json"});
    ASSERT_EQ(drawn.exitCode, 0);
    ASSERT_EQ(drawn.json()["views"].toArray().size(), 1);
    EXPECT_EQ(drawn.json()["views"][0]["name"].toString(), "Beam, top");
    EXPECT_TRUE(picture({"--help"}).output.contains(" long-beam "));
}

// The same primitives in each kind of file; what is drawn twice is the same, byte for byte.
TEST_F(PictureTest, DrawsPicturesOfPixelsAndOnPaper) {
    for (const auto& [ending, start] : {std::pair("png", "\x89PNG"), std::pair("pdf", "%PDF")}) {
        const QString file = named("p.") + ending;
        std::string before;
        for (int i = 0; i < 2; ++i) {
            ASSERT_EQ(picture({"Plate, single part", "--overwrite", "--out", file}).exitCode, 0) << ending;
            const std::string bytes = bytesOf(file.toStdString());
            EXPECT_TRUE(bytes.starts_with(start) && bytes.size() > 5000) << ending;
            EXPECT_TRUE(before.empty() || before == bytes) << ending;
            before = bytes;
        }
    }
    const QImage image(named("p.png"));
    std::set<QRgb> colors; // of lines and texts, save what smoothing mixes
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2)
            colors.insert(image.pixel(x, y));
    EXPECT_TRUE(colors.contains(qRgb(255, 255, 255)) && colors.size() > 20);
}

TEST_F(PictureTest, PointsOutWhatAColumnGovernsAndTellsTheStyleInWords) {
    const QStringList beam = {"Beam, shop drawing", "--out", named("h.svg"), "--overwrite", "--json"};
    const auto governed = [&](const char* record) {
        return picture(beam + QStringList{"--highlight", "appearance", record, "line_weight"})
            .json()
            .object();
    };
    const int some = governed("Main part")["highlighted"].toInt();
    EXPECT_GT(some, 50);
    EXPECT_EQ(QString::fromStdString(bytesOf(folder() / "h.svg")).count("stroke-width=\"2.4\""), some);
    const QJsonObject none = governed("Bolts");
    EXPECT_EQ(none["highlighted"].toInt(), 0);
    EXPECT_TRUE(none["notes"].toArray().last().toString().contains("does not use the appearance \"Bolts\""));
    ASSERT_EQ(picture(beam + QStringList{"--sheet"}).exitCode, 0);
    const std::string sheet = bytesOf(folder() / "h.svg");
    for (const char* words : {">Beam, front, 1:15<", "2. Plate purpose is end plate as Fitting<",
                              "drawn as &quot;Plate&quot;, labelled by", ">8. Overall length<"})
        EXPECT_NE(sheet.find(words), std::string::npos) << words;
}

TEST_F(PictureTest, RefusesInOneSentence) {
    const std::pair<QStringList, QString> cases[] = {
        {{"Beam, shop drawing", "--out", named("x.bmp")}, "ends in .svg, .png or .pdf"},
        {{"Beam, shop drawing", "--out", named("x.svg"), "--part", "barn"},
         "There is no sample part \"barn\""},
        {{"Beam, shop drawing", "--out", named("x.svg"), "--view", "Column, front"},
         "has no view \"Column, front\""},
        {{"Baem", "--out", named("x.svg")}, "Baem"},
        {{"Beam, shop drawing", "--out", named("x.svg"), "--highlight", "appearance", "Main part", "width"},
         "has no column \"width\""},
    };
    for (const auto& [arguments, expected] : cases) {
        const ProgramRun refused = picture(arguments);
        EXPECT_EQ(refused.exitCode, 1) << expected.toStdString();
        EXPECT_TRUE(refused.complaints.join('\n').contains(expected))
            << refused.complaints.join('\n').toStdString();
        EXPECT_FALSE(std::filesystem::exists(folder() / "x.svg"));
    }
}
