#include "controls/KorQt.h"
#include "controls/linetype/CKorlinetypelistctrl.h"
#include "controls/linetype/KorLinetypeCombo.h"
#include "controls/linetype/LinetypePainter.h"
#include "support/TempFolder.h"
#include "support/Widgets.h"

#include <QImage>
#include <QLineEdit>

namespace {

/// How much of the middle of a picture each column has ink: 0 or 1, one letter a pixel.
std::string ink(const LinetypePattern& pattern, int width = 200) {
    QImage image(width, 21, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(Qt::black);
    LinetypePainter::paintLine(painter, image.rect(), pattern);
    std::string line;
    for (int x = 0; x < width; ++x)
        line += qGray(image.pixel(x, 10)) < 128 ? '#' : ' ';
    return line;
}

LinetypePattern pattern(const char* text) {
    return LinetypePatterns::parse(text).value();
}

class LinetypeControls : public testing::Test {
protected:
    template <typename Control>
    void open(Control& control, const char* file) {
        control.SetSupportPath(KorString(folder.path().string()).replaced("/", "\\"));
        control.SetLinetypeFile(file);
    }

    TempFolder folder;
};

} // namespace

TEST_F(LinetypeControls, ALineShowsItsOwnPattern) {
    EXPECT_EQ(ink(pattern("A,1")), std::string(200, '#'));
    EXPECT_EQ(ink(pattern("A,-12.7")), std::string(200, ' '));
    const std::string dashed = ink(pattern("A,10,-10")); // 38 pixels each
    EXPECT_EQ(dashed.substr(0, 36), std::string(36, '#'));
    EXPECT_EQ(dashed.substr(40, 34), std::string(34, ' '));
    EXPECT_EQ(dashed.substr(78, 34), std::string(34, '#'));
    // Far too small, far too large: the repetition is seen all the same.
    for (const char* text : {"A,.001,-.001", "A,1e6,-1e6"}) {
        const std::string line = ink(pattern(text));
        EXPECT_NE(line.find("# "), std::string::npos) << text;
        EXPECT_NE(line.find(" #"), std::string::npos) << text;
    }
    EXPECT_NE(ink(pattern("A,20,-5,0,-5")), ink(pattern("A,20,-10"))) << "the dot is drawn";
    EXPECT_NE(ink(pattern("A,5,-10,[\"GAS\",STANDARD,S=3,X=-8,Y=-1.5],-5")), ink(pattern("A,5,-15")));
    EXPECT_NE(ink(pattern("A,5,-3,[CIRC1,shapes.shx,S=3],-3")), ink(pattern("A,5,-6")));
    ink(pattern("A,0"));
    ink({});
}

TEST_F(LinetypeControls, TheListReportsWhatIsPicked) {
    folder.write("a.lin", "*zeta,x\nA,1\n*Alpha,x\nA,5,-1\n*beta,x\nA,0,-1\n*BAD,x\nA,x\n");
    CKorlinetypelistctrl list;
    list.setPrompts({"Lines", "no %s", "folder %s", "none in %s", "%s lacks %d", "cut %s"});
    list.setDefaultPrompts();
    std::vector<std::string> picked;
    QObject::connect(&list, &CKorlinetypelistctrl::linetypePicked, &list,
                     [&](const KorString& name) { picked.push_back(name.toStdString()); });
    open(list, "a.lin");
    EXPECT_EQ(list.LoadLinetype("ALPHA"), 1);
    EXPECT_EQ(list.LoadLinetype("absent"), 0);
    EXPECT_EQ(list.count(), 1);
    EXPECT_EQ(list.LoadLinetype("*"), 3);
    EXPECT_EQ(list.count(), 3) << "none twice";
    EXPECT_TRUE(list.message().toStdString().ends_with("a.lin lacks 1"));
    list.show();
    clickRow(list, 1);
    EXPECT_EQ(list.selectedLinetype(), "beta") << "sorted by name";
    QTest::keyClick(&list, Qt::Key_Down);
    list.RemoveAll();
    EXPECT_EQ(picked, (std::vector<std::string>{"beta", "zeta", ""}));

    for (const auto& [name, message] : {std::pair("absent.lin", "no "), {".", "folder "}}) {
        open(list, name);
        EXPECT_EQ(list.LoadLinetype("*"), 0);
        EXPECT_TRUE(list.message().toStdString().starts_with(message));
    }
}

TEST_F(LinetypeControls, TheComboOffersHostFileAndDefinedLinetypes) {
    folder.write("a.lin", "*hidden,x\nA,5,-1\n*OTHER,x\nA,1\n");
    KorLinetypeCombo combo;
    combo.setDefaultProperties();
    combo.initializeList();
    open(combo, "a.lin");
    combo.LoadLinetype("HIDDEN");
    combo.DefineLinetype("\u00A0Load", "A,-12.7");
    combo.DefineLinetype(" Default", "A,-12.7");
    EXPECT_EQ(combo.itemText(0), QStringLiteral(" Default"));
    EXPECT_EQ(combo.itemText(combo.count() - 1), QStringLiteral("\u00A0Load"));
    EXPECT_EQ(combo.getLineTypeByName("continuous"), 1);
    EXPECT_EQ(combo.getLineTypeByName("hidden"), 0);
    EXPECT_FALSE(combo.contains("OTHER"));

    std::vector<std::string> chosen;
    QObject::connect(&combo, &KorLinetypeCombo::chosen, &combo,
                     [&](const KorString& name) { chosen.push_back(name.toStdString()); });
    EXPECT_TRUE(combo.SelectItem("HIDDEN"));
    combo.DefineLinetype("AAA", "A,1"); // what is chosen stays chosen
    EXPECT_EQ(combo.selectedName(), "hidden");
    EXPECT_FALSE(combo.SelectItem("absent"));
    EXPECT_TRUE(combo.selectedName().isEmpty());
    EXPECT_TRUE(chosen.empty());
    combo.show();
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Home);
    EXPECT_EQ(chosen, std::vector<std::string>{" Default"});
    QTest::keyClicks(&combo, "i"); // in the middle of a name
    auto* search = combo.findChild<QLineEdit*>();
    ASSERT_NE(search, nullptr);
    QTest::keyClicks(search, "dden");
    EXPECT_EQ(combo.selectedName(), " Default");
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(combo.selectedName(), "hidden");
    combo.RemoveAll();
    EXPECT_EQ(combo.count(), 0);
}

// Rows are made when they are seen: the number of line types must not be felt.
TEST_F(LinetypeControls, TenThousandLinetypesAreListed) {
    std::string many;
    for (int i = 0; i < 10'000; ++i)
        many += "*LINE_" + std::to_string(i) + ",number " + std::to_string(i) + "\nA,5,-2.5,0,-2.5\n";
    folder.write("many.lin", many);
    CKorlinetypelistctrl list;
    open(list, "many.lin");
    EXPECT_EQ(list.LoadLinetype("*"), 10'000);
    list.resize(400, 300);
    list.show();
    list.grab();
    EXPECT_TRUE(list.selectLinetype("line_9999"));
    EXPECT_TRUE(list.viewport()->rect().intersects(list.visualRect(list.currentIndex())));
    KorLinetypeCombo combo;
    open(combo, "many.lin");
    combo.LoadLinetype("*");
    combo.show();
    combo.showPopup();
    EXPECT_TRUE(combo.view()->isVisible());
    combo.hidePopup();
}
