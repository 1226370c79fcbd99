#include "base/LinetypeFile.h"
#include "base/TextLines.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

class LinetypeFileTest : public testing::Test {
protected:
    LinetypeFile read(const std::string& content) {
        return LinetypeFile::read(folder.write("a.lin", content));
    }

    TempFolder folder;
};

std::string names(const LinetypeFile& file) {
    std::string all;
    for (const auto& definition : file.definitions())
        all += definition->name.toStdString() + "|";
    return all;
}

std::string kinds(const LinetypePattern& pattern) {
    std::string all;
    for (const LinetypeElement& element : pattern)
        all += "-_.ST"[element.kind];
    return all;
}

} // namespace

TEST_F(LinetypeFileTest, ReadsWhatFilesInTheFieldHold) {
    const LinetypeFile file = read(";; a comment\r\n"
                                   "*HIDDEN, Hidden , edges __ __\r\n"
                                   "A,5,-2.5\r\n\r\n"
                                   "*gas_line,Gas ----GAS----\r\n"
                                   "A,.5,-.2,[\"GAS,]\",STANDARD,S=.1,U=0.0,X=-0.1,Y=-.05],-.25 ; pipes\r\n"
                                   "*FENCE\r\n"
                                   "a, +12.7 , -3 , [CIRC1,shapes.shx,x=-.1,s=2,r=100g] , 0 , -3\r\n");
    ASSERT_EQ(names(file), "HIDDEN|gas_line|FENCE|");
    EXPECT_EQ(file.damaged() + file.repeated(), 0);
    EXPECT_EQ(file.find("hidden")->description.toStdString(), "Hidden , edges __ __");
    EXPECT_EQ(kinds(file.find("HIDDEN")->pattern), "-_");
    EXPECT_EQ(LinetypePatterns::length(file.find("HIDDEN")->pattern), 7.5);

    const LinetypePattern gas = file.find("GAS_LINE")->pattern;
    ASSERT_EQ(kinds(gas), "-_T_");
    EXPECT_EQ(gas[2].text.toStdString() + gas[2].font.toStdString(), "GAS,]STANDARD");
    EXPECT_EQ(gas[2].scale, 0.1);
    EXPECT_EQ(gas[2].rotationKind, LinetypeElement::kUpright);
    EXPECT_EQ(gas[2].x, -0.1);
    EXPECT_EQ(gas[2].y, -0.05);

    const LinetypePattern fence = file.find("fence")->pattern;
    ASSERT_EQ(kinds(fence), "-_S._");
    EXPECT_EQ(fence[2].text.toStdString(), "CIRC1");
    EXPECT_DOUBLE_EQ(fence[2].rotation, 90.0);
}

TEST_F(LinetypeFileTest, OfTwoDefinitionsOfOneNameTheLaterHoldsUnlessItIsDamaged) {
    const LinetypeFile file = read("*GAP,as delivered\nA,5,-2.5\n*OTHER,between\nA,1,-1\n"
                                   "*gap,the user's own\nA,5,-2.5,0,-2.5\n*Gap,damaged\nA,x\n");
    EXPECT_EQ(names(file), "gap|OTHER|");
    EXPECT_EQ(file.find("GAP")->description.view(), "the user's own");
    EXPECT_EQ(kinds(file.find("GAP")->pattern), "-_._");
    EXPECT_EQ(file.repeated(), 1);
    EXPECT_EQ(file.damaged(), 1);
}

TEST_F(LinetypeFileTest, JoinsContinuedLinesAndLeavesOutDamagedAndRepeatedOnes) {
    const LinetypeFile file =
        read("rubbish before\n"
             "*long,before\nA,1\n"
             "*LONG,goes on\nover lines\nA,5,-2.5,\n  5\n; between\n,-2.5,[\"X\",S,\nS=1]\n"
             "*NOTHING,no pattern\n"
             "*WORD,no number\nA,5,abc\n"
             "*HUGE,no length\nA,1e300,-1e300\n"
             "*INF,no length\nA,inf\n"
             "*OPEN,not closed\nA,5,[\"GAS\n"
             "*,no name\nA,1\n"
             "*LAST,cut in the middle\nA,12.7,-");
    ASSERT_EQ(names(file), "LONG|");
    EXPECT_EQ(kinds(file.find("LONG")->pattern), "-_-_T");
    EXPECT_EQ(file.find("LONG")->description.toStdString(), "goes on over lines");
    EXPECT_EQ(file.repeated(), 1);
    EXPECT_EQ(file.damaged(), 7);
}

TEST_F(LinetypeFileTest, ReadsEveryEncoding) {
    const std::string definition = ",x\nA,1\n";
    EXPECT_EQ(names(read("*Tr\xE4ger\x80" + definition)), "Träger€|") << "Windows-1252";
    EXPECT_EQ(names(read("*Träger" + definition)), "Träger|") << "UTF-8";
    EXPECT_EQ(names(read("\xEF\xBB\xBF*Träger" + definition)), "Träger|") << "UTF-8 with mark";
    EXPECT_EQ(names(read("*OLD,x\rA,1\r*MAC,x\rA,1\r\x1A")), "OLD|MAC|") << "CR alone, end mark";
    std::string wide = "\xFF\xFE";
    for (const char16_t unit : std::u16string(u"*Tr\u00E4ger\U0001F600,x\r\nA,1\r\n"))
        wide += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    EXPECT_EQ(names(read(wide)), "Träger😀|") << "UTF-16";
}

TEST_F(LinetypeFileTest, SaysWhatIsNoLinetypeFile) {
    EXPECT_EQ(LinetypeFile::read(folder.path()).outcome(), LinetypeFile::kNoPlainFile);
    EXPECT_EQ(LinetypeFile::read("/dev/zero").outcome(), LinetypeFile::kNoPlainFile);
    EXPECT_EQ(LinetypeFile::read(folder.path() / "absent.lin").outcome(), LinetypeFile::kUnreadable);
    EXPECT_EQ(read("").outcome(), LinetypeFile::kNoLinetypes);
    EXPECT_EQ(read(std::string("\x7F"
                               "ELF\0\0*A,\nA,1\n",
                               14))
                  .outcome(),
              LinetypeFile::kNoLinetypes);
}

TEST_F(LinetypeFileTest, StopsInHugeFiles) {
    std::string many = "*FIRST,x\nA,1\n";
    for (std::size_t i = 0; i <= LinetypeFile::kMostDefinitions; ++i)
        many += "*L" + std::to_string(i) + ",x\nA,1,-1\n";
    const LinetypeFile definitions = read(many);
    EXPECT_EQ(definitions.definitions().size(), LinetypeFile::kMostDefinitions);
    EXPECT_TRUE(definitions.isCutShort());

    const fs::path huge = folder.write("huge.lin", "*FIRST,x\nA,1\n*LONG,");
    fs::resize_file(huge, 200'000'000); // the rest is zeros
    EXPECT_EQ(names(LinetypeFile::read(huge)), "FIRST|");

    const LinetypeFile oneLine = read("*FIRST,x\nA,1\n;" + std::string(TextLines::kMostBytes, 'x'));
    EXPECT_EQ(names(oneLine), "FIRST|");
    EXPECT_TRUE(oneLine.isCutShort());
}

TEST_F(LinetypeFileTest, TranslatesPathsAndNoticesChanges) {
    folder.write("Shared/Support/a.lin", "*ONE,x\nA,1\n");
    const KorString base = KorString(folder.path().string()).replaced("/", "\\") + "\\Shared\\Support";
    const fs::path file = LinetypeFile::pathOf(base, "a.lin");
    EXPECT_EQ(file, folder.path() / "Shared/Support/a.lin");
    EXPECT_EQ(LinetypeFile::pathOf({}, base + "\\a.lin"), file);
    for (const KorString& path : {KorString("a.lin"), KorString("\\a.lin"), base + "\\a.lin"}) {
        const auto [directory, name] = LinetypeFile::split(path);
        EXPECT_EQ(name, "a.lin");
        EXPECT_EQ(LinetypeFile::joined(directory, name), path);
    }
    EXPECT_EQ(LinetypeFile::split("\\a.lin").first, "\\");
    EXPECT_TRUE(LinetypeFile::isSameFolder(base, base.lowered() + "/"));
    EXPECT_FALSE(LinetypeFile::isSameFolder(base, base + "\\Other"));
    const auto before = LinetypeFile::shared(file);
    EXPECT_EQ(LinetypeFile::shared(file), before);
    folder.write("Shared/Support/a.lin", "*ONE,x\nA,1\n*TWO,x\nA,1\n");
    EXPECT_EQ(names(*LinetypeFile::shared(file)), "ONE|TWO|");
    EXPECT_EQ(before->definitions().size(), 1U) << "who holds the old one keeps it";
}
