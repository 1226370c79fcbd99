#include "controls/linetype/CKorlinetypelistctrl.h"
#include "controls/linetype/KorLinetypeCombo.h"
#include "pages/KorDSMPageViewClipping.h"
#include "pages/PageFixture.h"
#include "pages/RecordButtons.h"
#include "services/KOSettings.h"

#include <QToolButton>

#include <cmath>
#include <functional>

namespace {

constexpr int kAutomaticClipping = 9; // column of a detail style
constexpr int kClipOfView = 9;        // column of a view request
constexpr int kLinetype = 1269;

const QString kDefault = QStringLiteral("Use default");
const QString kDefaultLinetype = QStringLiteral(" Use default");
const QString kLoad = QStringLiteral("\u00A0Load...");

class Clipping : public PageFixture {
protected:
    KorDsmViewRequestItem& view(const char* name = "HB front, shortened", bool withStyle = true) {
        auto& style = item<KorDsmDetailStyleItem>();
        arrange(style, kAutomaticClipping, 0);
        auto& made = withStyle ? viewBelow(style, name) : item<KorDsmViewRequestItem>(name);
        m_clip = made.getRecord().lengthClipKey;
        return made;
    }
    KorDsmViewRequestItem& viewBelow(KorDsmDetailStyleItem& style, const KorString& name = {}) {
        auto& made = style.addChild(std::make_unique<KorDsmViewRequestItem>());
        made.updateRecord(row<StructDetViewRequest>(name));
        return made;
    }
    /// Changes the strategy behind the page's back.
    void setClip(int column, const CellValue& value) { store(kTableLengthClip, m_clip, column, value); }
    testing::AssertionResult wroteClip(int column, const CellValue& value) {
        return wroteOnly(kTableLengthClip, m_clip, column, value);
    }
    int picture() {
        auto& panel = control<KorInfoCtrl>(1117);
        return panel.isVisible() ? panel.pictureId() : 0;
    }
    std::string linetype() { return control<KorLinetypeCombo>(kLinetype).selectedName().toStdString(); }
    StructLinetypes storedLinetype() {
        return *rowOfKey<StructLinetypes>(rowOfKey<StructDetViewLengthClip>(m_clip)->linetypeKey);
    }
    static void inDialog(std::function<void(QWidget*)> use) {
        QTimer::singleShot(0, qApp, [use] { use(QApplication::activeModalWidget()); });
    }
    static void press(QWidget* dialog, int button) {
        QTest::mouseClick(KorControls::find(dialog, button), Qt::LeftButton);
    }
    std::int32_t m_clip = 0;
};

TEST_F(Clipping, DefaultsAreStoredAsMinusOneAndTheExtensionsLocksItsField) {
    auto& shown = view();
    open<KorDSMPageViewClipping>(shown);
    EXPECT_EQ(textOf(1091) + " " + textOf(1095) + " " + textOf(1096) + " " + textOf(1098) + " " +
                  textOf(1094),
              "HB long beams 2000 300 3 5");
    EXPECT_TRUE(isChecked(1093) && !isChecked(1092) && !isChecked(1099));
    click(1097);
    EXPECT_TRUE(wroteClip(9, std::int64_t{1}));
    takeBack(shown);
    type(1095, QStringLiteral("1 m"));
    EXPECT_TRUE(wroteClip(5, 1000.0));
    takeBack(shown);
    for (const auto& [combo, column, value] : {std::tuple(1100, 7, CellValue(std::int64_t{-1})),
                                               {kLinetype, 8, CellValue(std::int64_t{-1})},
                                               {1094, 10, CellValue(-1.0)}}) {
        choose(combo, combo == kLinetype ? kDefaultLinetype : kDefault);
        EXPECT_TRUE(wroteClip(column, value)) << column;
        takeBack(shown);
    }
    click(1099);
    EXPECT_EQ(textOf(1098), "0");
    EXPECT_FALSE(isEnabled(1098));
    EXPECT_TRUE(wroteClip(6, -1.0));
    click(1099);
    EXPECT_TRUE(isEnabled(1098));
    EXPECT_EQ(steps().back()->after, CellValue(0.0));
}

TEST_F(Clipping, AStrategyIsMadeAndDeletedBesideItsChoice) {
    auto& shown = view();
    open<KorDSMPageViewClipping>(shown);
    const QList<QToolButton*> buttons = page().findChild<RecordButtons*>()->findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 2);
    answerName("HB bridges");
    QTest::mouseClick(buttons[0], Qt::LeftButton);
    EXPECT_EQ(textOf(1091), "HB bridges");
    EXPECT_NE(rowOfKey<StructDetViewRequest>(shown.recordKey())->lengthClipKey, m_clip);
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    EXPECT_EQ(rowOfKey<StructDetViewRequest>(shown.recordKey())->lengthClipKey, 0);
    EXPECT_EQ(control<QComboBox>(1091).findText("HB bridges"), -1);
    EXPECT_FALSE(buttons[1]->isEnabled()) << "nothing is chosen";
    databases.undo();
    EXPECT_EQ(row<StructDetViewLengthClip>("HB bridges").name, "HB bridges");
}

TEST_F(Clipping, WhatIsNoChangeOrNoLengthIsNotWritten) {
    auto& shown = view();
    open<KorDSMPageViewClipping>(shown);
    const auto note = [this](int field) { return KorFieldNote::textOf(&control(field)).toStdString(); };
    for (const int field : {1095, 1096, 1098}) {
        const std::string before = textOf(field);
        for (const auto& [text, word] : {std::pair("", "Not a number"),
                                         {"abc", "Not a number"},
                                         {"1e999", "Not a number"},
                                         {"1,000", "Not a number"},
                                         {"-1", field == 1095 ? "Not below 1 mm" : "Not below 0 mm"},
                                         {"100000000000000000000", "Not above 100000000 mm"}}) {
            type(field, QString::fromLatin1(text));
            EXPECT_EQ(textOf(field), text) << field << " stays to be corrected";
            EXPECT_EQ(note(field), word) << field << " took " << text;
        }
        QTest::keyClick(&control(field), Qt::Key_Escape);
        EXPECT_EQ(textOf(field) + note(field), before) << field;
    }
    type(1095, QStringLiteral("0"));
    EXPECT_EQ(note(1095), "Not below 1 mm");
    type(1095, QStringLiteral("2000"));
    EXPECT_EQ(note(1095), "");
    for (const auto& [combo, text] : {std::pair(1094, "5"),
                                      {1100, "Oblique break line"},
                                      {kLinetype, "BREAK_LINE"},
                                      {1091, "HB long beams"}})
        choose(combo, QString::fromLatin1(text));
    leave();
    EXPECT_TRUE(wroteNothing());
    show(shown);
    type(1096, QStringLiteral("-0"));
    EXPECT_FALSE(std::signbit(rowOfKey<StructDetViewLengthClip>(m_clip)->keepEachSide));
}

TEST_F(Clipping, ThePictureAndTheLocksFollowTheSituation) {
    struct Case {
        std::int64_t type;
        double gap;
        double extension;
        int picture;
        bool extensionOpen;
        bool linetypeOpen;
    };
    auto& shown = view();
    open<KorDSMPageViewClipping>(shown);
    for (const Case& c : {Case{1, 5.0, 0.0, 1311, true, true},
                          {1, 0.0, 0.0, 1312, true, true},
                          {1, 5.0, 3.0, 1313, true, true},
                          {1, 0.0, 3.0, 1314, true, true},
                          {1, -1.0, 3.0, 1313, true, true},
                          {2, 5.0, 3.0, 1321, false, false},
                          {2, 0.0, 3.0, 1322, false, false},
                          {2, -1.0, 3.0, 1321, false, false},
                          {3, 5.0, 3.0, 1333, true, false},
                          {4, 0.0, -1.0, 1342, false, true},
                          {-1, 5.0, 3.0, 0, true, true},
                          {99, 5.0, 3.0, 0, true, true}}) {
        setClip(7, c.type);
        setClip(10, c.gap);
        setClip(6, c.extension);
        show(shown);
        EXPECT_EQ(picture(), c.picture) << c.type << " " << c.gap << " " << c.extension;
        EXPECT_EQ(isEnabled(1098), c.extensionOpen) << c.type;
        EXPECT_EQ(isEnabled(kLinetype), c.linetypeOpen) << c.type;
    }
    setClip(7, std::int64_t{1});
    setClip(6, 0.0);
    show(shown);
    choose(1094, QStringLiteral("0"));
    EXPECT_EQ(picture(), 1312);
    type(1098, QStringLiteral("2"));
    EXPECT_EQ(picture(), 1314);
    choose(1100, QStringLiteral("No break line"));
    EXPECT_EQ(picture(), 1322);
}

TEST_F(Clipping, AStrategyIsChosenAndLeftAgain) {
    auto& shown = view("HB front");
    auto& twin = view("HB front");
    shown.linkEqualItem(twin);
    open<KorDSMPageViewClipping>(shown);
    EXPECT_EQ(textOf(1091), "No clipping");
    choose(1091, QStringLiteral("HB railing panels"));
    const std::int32_t key = row<StructDetViewLengthClip>("HB railing panels").key;
    EXPECT_TRUE(wroteOnly(shown, kClipOfView, std::int64_t{key}));
    EXPECT_EQ(twin.getRecord().lengthClipKey, key);
    EXPECT_EQ(textOf(1095), "1500");
    EXPECT_EQ(linetype(), kDefaultLinetype.toStdString());
    EXPECT_FALSE(isEnabled(1098)) << "its extension is the default";
    choose(1091, QStringLiteral("HB long beams"));
    for (const int control : {1092, 1093, 1094, 1095, 1096, 1097, 1098, 1099, 1100, kLinetype, 1104, 1208})
        EXPECT_TRUE(isEnabled(control)) << control;
    choose(1091, QStringLiteral("No clipping"));
    EXPECT_EQ(shown.getRecord().lengthClipKey, 0);
    EXPECT_EQ(textOf(1091) + textOf(1095), "No clipping");
    EXPECT_FALSE(isEnabled(1095) || isEnabled(1100));
}

TEST_F(Clipping, ShowsOnlyWhatTheViewHas) {
    open<KorDSMPageViewClipping>(view("HB front, shortened", false));
    EXPECT_EQ(textOf(1091) + "|" + textOf(1094) + "|" + textOf(1095) + "|" + textOf(1096),
              "HB long beams|5|2000|");
    EXPECT_TRUE(isEnabled(1094) && isEnabled(1095) && !isEnabled(1096) && !isEnabled(kLinetype));
    EXPECT_EQ(picture(), 0);

    auto& without = view("HB front");
    show(without);
    EXPECT_EQ(textOf(1091) + textOf(1094) + textOf(1095), "No clipping");
    EXPECT_TRUE(isEnabled(1091) && !isEnabled(1094) && !isEnabled(1095) && !isEnabled(1208) &&
                !isEnabled(1104));

    auto& odd = view();
    setClip(10, 1.25); // no gap of the table
    setClip(8, std::int64_t{77777});
    setClip(7, std::int64_t{77777});
    arrange(static_cast<KorDSMDatabaseItem&>(*odd.parent()), kAutomaticClipping, 1);
    show(odd);
    EXPECT_EQ(control<QComboBox>(1094).placeholderText(), QStringLiteral("1.25"));
    EXPECT_EQ(textOf(1100) + linetype(), "");
    EXPECT_FALSE(isEnabled(1096)) << "the style clips automatically";
    leave();
    EXPECT_TRUE(wroteNothing());
}

TEST_F(Clipping, ALinetypeOfTheHostJoinsTheTableOnce) {
    open<KorDSMPageViewClipping>(view());
    choose(kLinetype, QStringLiteral("LONG_DASH"));
    ASSERT_EQ(steps().size(), 2U);
    EXPECT_EQ(steps()[0]->table, kTableLinetypes);
    EXPECT_EQ(storedLinetype().name, "LONG_DASH");
    EXPECT_EQ(storedLinetype().lineTypeId, 3);
    EXPECT_TRUE(storedLinetype().filePath.isEmpty());
    choose(kLinetype, QStringLiteral("DOTTED"));
    choose(kLinetype, QStringLiteral("LONG_DASH"));
    EXPECT_EQ(steps().size(), 4U);
}

TEST_F(Clipping, ALinetypeIsLoadedFromAFile) {
    m_folder.write("data/Shared/Support/VELHcadIso.lin", "*DOTTED,known\nA,0,-2\n*Gas Line,new\nA,5,-1\n");
    KOSettings::getInstance().setPathData(m_folder.path() / "data");
    open<KorDSMPageViewClipping>(view());
    for (const char* cancelled : {"", "dotted"}) {
        inDialog([cancelled](QWidget* dialog) {
            EXPECT_EQ(KorControls::find<CKorlinetypelistctrl>(dialog, 1268)->selectLinetype(cancelled),
                      *cancelled != '\0');
            press(dialog, *cancelled ? 1 : 2);
        });
        choose(kLinetype, kLoad);
        EXPECT_TRUE(wroteNothing()) << "known already, or cancelled";
        EXPECT_EQ(linetype(), "BREAK_LINE");
    }
    inDialog([](QWidget* dialog) {
        KorControls::find<CKorlinetypelistctrl>(dialog, 1268)->selectLinetype("GAS LINE");
        press(dialog, 1);
    });
    choose(kLinetype, kLoad);
    ASSERT_EQ(steps().size(), 2U);
    EXPECT_EQ(storedLinetype().name, "Gas Line");
    EXPECT_EQ(storedLinetype().filePath, "VELHcadIso.lin");
    EXPECT_EQ(storedLinetype().lineTypeId, 0);
    EXPECT_EQ(linetype(), "Gas Line");
    databases.undo();
    EXPECT_TRUE(wroteNothing()) << "one step for the user";
}

TEST_F(Clipping, CopiesAndRenamesTheStrategy) {
    auto& shown = view();
    open<KorDSMPageViewClipping>(shown);
    answerName(QStringLiteral("HB copied"));
    click(1208);
    ASSERT_EQ(steps().size(), 2U);
    const auto* copy = rowOfKey<StructDetViewLengthClip>(shown.getRecord().lengthClipKey);
    EXPECT_EQ(copy->name, "HB copied");
    EXPECT_NE(copy->key, m_clip);
    EXPECT_EQ(copy->interval, 2000.0);
    EXPECT_EQ(textOf(1091), "HB copied");
    databases.undo();
    EXPECT_TRUE(wroteNothing()) << "one step for the user";
    takeBack(shown);

    answerName(QStringLiteral("HB renamed"));
    click(1104);
    EXPECT_TRUE(wroteClip(1, KorString("HB renamed")));
    EXPECT_EQ(textOf(1091), "HB renamed");
    EXPECT_EQ(control<QComboBox>(1091).findText(QStringLiteral("HB long beams")), -1);
}

} // namespace
