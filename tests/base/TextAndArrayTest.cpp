#include "base/KorArray.h"
#include "base/KorString.h"
#include "base/SimilarWord.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

TEST(KorString, CopiesShareAndAssignmentsSeparate) {
    KorString a = "Träger";
    const KorString b = a;
    EXPECT_EQ(a.c_str(), b.c_str()) << "a copy costs no allocation";
    a = KorString("Stütze");
    EXPECT_EQ(b, "Träger");
    a = a;
    EXPECT_EQ(a, "Stütze");
    KorString moved = std::move(a);
    EXPECT_EQ(moved, "Stütze");
    a = "again";
    EXPECT_EQ(a, "again") << "a moved-from text can be used again";
    EXPECT_TRUE(KorString("").isEmpty() && KorString(static_cast<const char*>(nullptr)).isEmpty());
    EXPECT_EQ(KorString(std::string_view("a\0b", 3)).size(), 3u);
}

TEST(KorString, OrdersByCodePointsAndFoldsCase) {
    EXPECT_LT(KorString("Z"), KorString("a"));
    EXPECT_LT(KorString("z"), KorString("é"));
    EXPECT_EQ(KorString("a").compare("b"), -1);
    EXPECT_EQ(KorString("b").compare("a"), 1);
    EXPECT_EQ(KorString("ab").compare("ab"), 0);
    EXPECT_LT(KorString(), KorString("a"));
    EXPECT_EQ(KorString("ÄRGER İ Ω").lowered(), KorString("ärger i ω"));
    EXPECT_EQ(KorString(" \t a b \r\n").trimmed(), "a b");
    EXPECT_TRUE(KorString(" \n").trimmed().isEmpty());
}

TEST(KorString, ASlipOfTheFingerIsLikeWhatWasMeant) {
    const std::vector<KorString> words = {"", "scale", "Träger", "view_1", "view_2", "No"};
    EXPECT_EQ(similarWord("sclae", words), "scale") << "exchanged letters are one slip";
    EXPECT_EQ(similarWord("SCALE", words), "scale");
    EXPECT_EQ(similarWord("Trager", words), "Träger") << "a letter, however many bytes it has";
    EXPECT_EQ(similarWord("viev_1", words), "view_1");
    EXPECT_EQ(similarWord("view_3", words), "view_1") << "the first of those that are as like";
    EXPECT_EQ(similarWord("Na", words), KorString()) << "half of it is another word";
    EXPECT_EQ(similarWord("", words), KorString());
    EXPECT_EQ(similarWord("something else", words), KorString());
}

TEST(KorString, WideTextsComeAndGoUnchanged) {
    const std::wstring wide = L"Ø 12 – Träger 𝒳";
    EXPECT_EQ(KorString::fromWide(wide).toWide(), wide);
    // A broken sequence costs its own character, never one of its neighbours.
    const std::wstring broken = KorString("a\xC3(b\xFF\xE2\x82").toWide();
    EXPECT_EQ(broken.substr(0, 4), L"a\uFFFD(b");
    for (const wchar_t c : broken.substr(4))
        EXPECT_EQ(c, L'\uFFFD');
}

TEST(KorString, FormattingSurvivesWrongTranslations) {
    EXPECT_EQ(KorString::format("%s of %d", {"3", "7"}), "3 of 7");
    EXPECT_EQ(KorString::format("100%% of %s", {"%s"}), "100% of %s");
    EXPECT_EQ(KorString::format("%s %s", {"one"}), "one %s");
    EXPECT_EQ(KorString::format("none", {"one"}), "none");
    EXPECT_EQ(KorString::format("%x %", {"one"}), "%x %");
    EXPECT_EQ(KorString("aXbXX").replaced("X", "XX"), "aXXbXXXX");
    EXPECT_EQ(KorString("abc").replaced("", "x"), "abc");
}

TEST(KorString, ManyThreadsMayCopyOneText) {
    const KorString text = "shared between threads";
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([text] {
            for (int n = 0; n < 20000; ++n)
                KorString(text).trimmed();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(text, "shared between threads");
}

namespace {

class KorArrayTest : public testing::Test {
protected:
    void SetUp() override {
        m_before =
            KorAssert::setSink([this](const char* expression, const char*, int) { m_failed = expression; });
    }
    void TearDown() override { KorAssert::setSink(m_before); }

    /// The check that failed since the last call; empty when none did.
    std::string failed() { return std::exchange(m_failed, {}); }

private:
    KorAssert::Sink m_before;
    std::string m_failed;
};

} // namespace

TEST_F(KorArrayTest, ABadIndexIsReportedAndReadingGoesOn) {
    KorArray<int> array{1, 2, 3};
    EXPECT_EQ(array[3], 0);
    EXPECT_EQ(failed(), "isValid( index )");
    array[-1] = 7;
    EXPECT_EQ(failed(), "isValid( index )");
    EXPECT_EQ(array[-1], 0) << "what was written beyond the array is nowhere";
    failed();
    array.removeAt(3);
    EXPECT_EQ(failed(), "isValid( index )");
    array.insertAt(4, 9);
    EXPECT_EQ(failed(), "isValid( index )");
    array.setLength(-1);
    EXPECT_EQ(failed(), "len>=0");
    EXPECT_EQ(array, (KorArray<int>{1, 2, 3}));
}

TEST_F(KorArrayTest, ElementsKeepTheirOrder) {
    KorArray<KorString> array;
    for (int i = 0; i < 20; ++i)
        array.append(KorString::number(i));
    array.removeAt(0);
    array.insertAt(0, "first");
    array.insertAt(array.length(), "last");
    EXPECT_EQ(array.find("19"), 19);
    EXPECT_EQ(array.find("0"), -1);
    EXPECT_EQ(array[20], "last");
    array.setLength(2);
    array.setLength(3);
    EXPECT_EQ(array, (KorArray<KorString>{"first", "1", ""}));
    EXPECT_EQ(failed(), "");
}
