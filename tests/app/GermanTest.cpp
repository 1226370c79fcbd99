#include "app/ProgramFixture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

namespace fs = std::filesystem;

namespace {

class GermanTest : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        environment.insert("LC_ALL", "de_DE.UTF-8");
    }
};

} // namespace

TEST_F(GermanTest, HelpWrongUsageAndWrongNamesAreGerman) {
    const QString help = runBare({"--help"}).output;
    EXPECT_TRUE(help.startsWith("Verwaltet die Detailstile") && help.contains("Aufruf:") &&
                help.contains("Diese Hilfe zeigen") && help.contains("Einträge auflisten"))
        << help.toStdString();
    EXPECT_FALSE(help.contains("Options") || help.contains("Usage") || help.contains("Print"));
    sql("user.dsdb", "INSERT INTO area_type (key, name) VALUES (1, 'Whole part')");
    const std::vector<std::pair<QStringList, QString>> wrong = {
        {{"list", "--nonsense"}, "Die Option „--nonsense“ gibt es nicht"},
        {{"list", "Beam", "x"}, "Unerwartete Angabe"},
        {{"lst"},
         "Weder einen Befehl noch eine Datei „lst“ gibt es; „detailstyles --help“ nennt die Befehle. "
         "Meinten Sie „list“?"},
        {{"set", "detail-style", "Beam", "title_format", "{bogus}"},
         "Eine Variable {bogus} ist nicht bekannt"},
        {{"list", "--kind", "darstelungstabelle"}, "Meinten Sie „Darstellungstabelle“?"},
        {{"show", "detail-style"}, "NAME fehlt."},
        {{"list", "--source"}, "--source: Es fehlen Angaben"},
        {{"show", "view-request", "Nirgends"},
         "Es gibt keinen Eintrag der Art „Ansicht“ mit dem Namen „Nirgends“."},
        {{"set", "detail-style", "Beam", "title_position", "8"},
         "Titelposition: „8“ ist keiner der Werte; wählen Sie einen von Kein Titel, Unten links, "},
        {{"set", "view-request", "Section", "area_type", "Alles"}, "Es gibt „Ganzes Teil“."},
        {{"list", "--kind", "detail-stil"}, "Die Art „detail-stil“ gibt es nicht"},
        {{"show", "detail-style", "Baem"}, "Meinten Sie „Beam“?"},
        {{"delete", "view-request", "Front"}, "Detailstil „Beam“ verwendet dies als „Ansicht 1“ (Benutzer)."},
    };
    for (const auto& [arguments, expected] : wrong) {
        const QString said = run(arguments).complaints.join('\n');
        EXPECT_TRUE(said.contains(expected)) << said.toStdString();
    }
}

TEST_F(GermanTest, WhatIsWrongInADatabaseIsSaidInGermanAndNamedForPrograms) {
    sql("user.dsdb", "UPDATE detail_style SET view_1 = 77, title_position = x'00' WHERE name = 'Beam'");
    const ProgramRun checked = run({"check", "--json"});
    QString sentences;
    for (const QJsonValue& finding : checked.json().array()) {
        sentences += finding["sentence"].toString() + '\n';
        EXPECT_TRUE(QStringList({"error", "warning", "note"}).contains(finding["severity"].toString()));
    }
    EXPECT_TRUE(sentences.contains("Detailstil „Beam“ (Schlüssel 1) in „") &&
                sentences.contains(
                    "verweist in „Ansicht 1“ auf einen Eintrag, den es nicht gibt (Ansicht, Schlüssel 77)"))
        << sentences.toStdString();
    EXPECT_TRUE(sentences.contains(
        "enthält Binärdaten statt einer ganzen Zahl mit 32 Bit in der Spalte „Titelposition“"))
        << sentences.toStdString();
    EXPECT_TRUE(run({"check"}).output.contains("  Fehler: "));
    EXPECT_EQ(run({"show", "detail-style", "Beam", "--json"}).json()["columns"][5]["column"],
              "title_position");

    writeBytes(data() / "user.dsdb", std::string(8192, 'x'));
    EXPECT_TRUE(run({"list"}).complaints.value(0).endsWith(
        "user.dsdb“ ist keine Datenbank; wählen Sie eine Detailstil-Datenbank, oder stellen Sie sie aus "
        "einer Kopie wieder her."));
}

TEST_F(GermanTest, WhatTheTextFilesLackComesInEnglishAndIsTold) {
    const fs::path resources = folder() / "resources";
    fs::create_directories(resources / "prompts");
    for (const char* name : {"en.tsv", "de.tsv", "de.sentences.tsv"}) {
        QFile file(QString::fromStdString((fs::path(SOURCE_DIR) / "resources" / "prompts" / name).string()));
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        QString text = QString::fromUtf8(file.readAll());
        text.remove("DSM\t303\tKeine Angabe\n").remove("Filed under\tAbgelegt unter\n");
        writeBytes(resources / "prompts" / name, text.toStdString());
    }
    environment.insert("DETAILSTYLES_RESOURCES", QString::fromStdString(resources.string()));
    const ProgramRun shown = run({"show", "detail-style", "Heavy beam"});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_TRUE(shown.output.contains("None"));
    ASSERT_EQ(shown.complaints.size(), 1);
    EXPECT_TRUE(shown.complaints[0].contains("Der Text DSM 303 fehlt in") &&
                shown.complaints[0].contains("de.tsv"));
    EXPECT_TRUE(run({"list"}).output.startsWith("Quelle    Name        Filed under  Beschreibung\n"));
}
