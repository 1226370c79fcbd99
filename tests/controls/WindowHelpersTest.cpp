#include "controls/KorControls.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorPictures.h"
#include "controls/KorTemplates.h"
#include "controls/KorVerticalSplitter.h"
#include "controls/MemoryDlg.h"
#include "support/Widgets.h"

#include <QLabel>

namespace {

struct Window : QWidget {
    Window() {
        (new QVBoxLayout(this))->addWidget(splitter = new KorVerticalSplitter);
        KorControls::setId(splitter, 1096);
        splitter->addWidget(new QWidget);
        splitter->addWidget(new QWidget);
    }
    KorVerticalSplitter* splitter;
};

} // namespace

TEST(VerticalSplitter, TheLeftPaneGivesWayWhereRoomIsShort) {
    KorVerticalSplitter splitter;
    splitter.addWidget(new QWidget);
    splitter.addWidget(new QWidget);
    splitter.resize(1000, 100);
    showActive(splitter);
    splitter.setLeftWidth(256);
    splitter.setRightRoom(450);
    EXPECT_EQ(splitter.leftWidth(), 256);
    splitter.resize(640, 100);
    EXPECT_EQ(splitter.sizes().value(1), 450);
    splitter.resize(1000, 100);
    EXPECT_EQ(splitter.leftWidth(), 256) << "there is room again";
    splitter.resize(400, 100);
    EXPECT_EQ(splitter.leftWidth(), 150) << "names stay readable";
    splitter.setLeftWidth(200);
    splitter.resize(1000, 100);
    EXPECT_EQ(splitter.leftWidth(), 200) << "the user's own place";
}

TEST(MemoryDlg, AWindowComesBackAsItWasLeft) {
    KorLayoutStore::setBackend({}, {});
    KorLayoutStore::write("Dlg", "");
    MemoryDlg memory("Dlg");
    memory.registerControl(1096, MemoryDlg::eStretchX | MemoryDlg::eStretchY);
    Window first;
    memory.setWindow(&first);
    EXPECT_FALSE(memory.restore()) << "nothing is remembered yet";
    first.setGeometry(50, 60, 640, 480);
    first.show();
    first.splitter->setLeftWidth(200);
    first.splitter->setRightRoom(480);
    EXPECT_EQ(first.splitter->leftWidth(), 150) << "it gives way, and that is not what the user wants";
    memory.writeSetting();
    EXPECT_EQ(first.splitter->leftWidth(), 150);

    Window second;
    memory.setWindow(&second);
    EXPECT_TRUE(memory.restore());
    second.show();
    EXPECT_EQ(second.geometry(), first.geometry());
    EXPECT_EQ(second.splitter->leftWidth(), 200);
    EXPECT_EQ(second.splitter->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);

    KorLayoutStore::write("Dlg", "rubbish;1096=??;=;");
    EXPECT_FALSE(memory.restore());
}

TEST(VerticalSplitter, TheLeftPaneKeepsItsWidthAndKeysMoveTheBar) {
    Window window;
    window.resize(600, 300);
    window.show();
    window.splitter->setLeftWidth(200);
    window.resize(900, 300);
    EXPECT_EQ(window.splitter->leftWidth(), 200);
    QTest::keyClick(window.splitter->handle(1), Qt::Key_Right);
    EXPECT_EQ(window.splitter->leftWidth(), 216);
    QTest::keyClick(window.splitter->handle(1), Qt::Key_Left);
    EXPECT_EQ(window.splitter->leftWidth(), 200);
}

TEST(Controls, AreFoundByNumberInTheirOwnFormOnly) {
    KorTemplates::setFactory([](int, QWidget* window) {
        KorControls::setId(new QLabel(window), 1012);
        return true;
    });
    QWidget dialog;
    auto* page = new QWidget(&dialog);
    ASSERT_TRUE(KorTemplates::setUp(2002, page));
    EXPECT_EQ(KorControls::find(&dialog, 1012), nullptr) << "the number of another form";
    EXPECT_NE(KorControls::find<QLabel>(page, 1012), nullptr);
    EXPECT_EQ(KorControls::find<KorInfoCtrl>(page, 1012), nullptr) << "of another class";
    auto* late = new QWidget(&dialog);
    KorControls::setId(late, 1012);
    EXPECT_EQ(KorControls::find(&dialog, 1012), late);
    delete late;
    EXPECT_EQ(KorControls::find(&dialog, 1012), nullptr);
    EXPECT_EQ(KorControls::all(page).size(), 1u);
}

TEST(Pictures, AreSharpAtAnyScaleAndMissingOnesAreReportedOnce) {
    std::vector<KorString> missing;
    KorPictures::setBase(SOURCE_DIR "/resources");
    KorPictures::setMissingSink([&](const KorString& path) { missing.push_back(path); });
    EXPECT_EQ(KorPictures::bitmapSize(1106), QSize(160, 120));
    const QPixmap picture = KorPictures::bitmap(1106).pixmap(QSize(160, 120), 1.5);
    EXPECT_EQ(picture.size(), QSize(240, 180)) << "drawn for the screen, not scaled up";
    const QIcon icon = KorPictures::icon(1055);
    EXPECT_NE(icon.pixmap(16).toImage(), icon.pixmap(QSize(16, 16), 1.0, QIcon::Disabled).toImage());
    EXPECT_TRUE(KorPictures::icon(99999).isNull());
    KorPictures::icon(99999);
    EXPECT_EQ(missing, std::vector{KorString("icons/99999.svg")});

    KorInfoCtrl info;
    info.setInfo("", 1106);
    const QSize alone = info.sizeHint();
    info.setInfo("What the picture means", 1106);
    EXPECT_GT(info.sizeHint().width(), alone.width());
    info.setInfo("", 99998);
    info.resize(60, 60);
    EXPECT_FALSE(info.grab().isNull()) << "a missing picture leaves the panel empty";
    EXPECT_EQ(missing.size(), 2u);
    KorPictures::setMissingSink({});
}
