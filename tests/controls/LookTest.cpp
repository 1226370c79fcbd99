#include "controls/KorButtonGroup.h"
#include "controls/KorMnemonics.h"
#include "controls/KorStyle.h"
#include "controls/KorVerticalSplitter.h"
#include "support/Accessibility.h"
#include "support/Palettes.h"
#include "support/Widgets.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

namespace {

struct Part {
    const char* name;
    QWidget* (*make)(QWidget* window);
    bool isFocus; // what the focus adds counts, else what is there without it
};

template <typename Widget>
QWidget* make(QWidget* window) {
    return new Widget(window);
}
QWidget* makeSplitter(QWidget* window) {
    auto* splitter = new KorVerticalSplitter(window);
    splitter->addWidget(new QWidget);
    splitter->addWidget(new QWidget);
    return splitter;
}
QWidget* makeStrip(QWidget* window) {
    auto* strip = new KorButtonGroup(Qt::Horizontal, window);
    strip->addButton(1, "New", {});
    return strip;
}

constexpr Part kParts[] = {
    {"check box", &make<QCheckBox>, false},
    {"radio button", &make<QRadioButton>, false},
    {"field", &make<QLineEdit>, false},
    {"divider", &makeSplitter, false},
    {"field with focus", &make<QLineEdit>, true},
    {"check box with focus", &make<QCheckBox>, true},
    {"button with focus", &make<QPushButton>, true},
    {"combo with focus", &make<QComboBox>, true},
    {"strip with focus", &makeStrip, true},
};

QImage imageOf(QWidget& window, bool withFocus, QWidget& part) {
    window.setAttribute(Qt::WA_KeyboardFocusChange);
    if (QToolButton* button = part.findChild<QToolButton*>(); withFocus && button)
        button->setFocus(Qt::TabFocusReason);
    else if (withFocus)
        part.setFocus(Qt::TabFocusReason);
    else
        window.setFocus();
    QApplication::processEvents();
    return window.grab().toImage();
}

// How many pixels tell by their contrast what is there, beside the ground and beside what was there before.
int seenPixels(const QImage& image, const QImage* before, const QColor& ground) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if ((!before || before->pixelColor(x, y) != color) &&
                wcagContrast(color, ground) >= KorStyle::kContrast)
                ++count;
        }
    return count;
}

} // namespace

TEST(Look, WhatMustBeSeenHasContrastInEveryPalette) {
    for (const QPalette& palette : desktopPalettes()) {
        const QColor ground = palette.color(QPalette::Window);
        for (const Part& part : kParts) {
            QWidget window;
            window.setPalette(palette);
            window.setFocusPolicy(Qt::StrongFocus);
            (new QVBoxLayout(&window))->addWidget(part.make(&window));
            QWidget* shown = window.layout()->itemAt(0)->widget();
            showActive(window);
            const QImage plain = imageOf(window, false, *shown);
            const int least = shown->findChild<QSplitterHandle*>() ? shown->height() - 2 : 20;
            const int seen = part.isFocus ? seenPixels(imageOf(window, true, *shown), &plain, ground)
                                          : seenPixels(plain, nullptr, ground);
            EXPECT_GE(seen, least) << part.name << " on " << ground.name().toStdString();
        }
    }
}

TEST(Mnemonics, AreGivenAsFarAsLettersGo) {
    const auto chosen = [](const std::vector<QString>& texts, const QString& taken) {
        QString letters;
        for (const QChar letter : KorMnemonics::choose(texts, taken))
            letters += letter.isNull() ? u'-' : letter;
        return letters;
    };
    EXPECT_EQ(chosen({"Scale", "Scale in process", "Choice"}, {}), "SIC");
    EXPECT_EQ(chosen({"Scale", "Show"}, "s"), "CH") << "taken elsewhere";
    EXPECT_EQ(chosen({"Ab", "Ac", "A", "A"}, {}), "BCA-") << "others move, and what is left gets none";
    EXPECT_EQ(chosen({"On\tCtrl+X", "…"}, "on"), "--") << "a key is no part of the text";
}

TEST(Mnemonics, AreGivenToWhatIsReadAndTakenBackWithTheText) {
    QWidget window;
    QLabel label("Posts && beams", &window);
    QLineEdit field(&window);
    label.setBuddy(&field);
    QCheckBox box("&Beams", &window);
    KorMnemonics::give(window);
    KorMnemonics::give(window);
    EXPECT_EQ(label.text(), "&Posts && beams") << "given once, beside the ampersand that is read";
    EXPECT_EQ(box.text(), "&Beams") << "the text names its own";
    EXPECT_EQ(KorMnemonics::plain(label.text()), "Posts & beams");
    box.setText("Posts only");
    KorMnemonics::give(window);
    EXPECT_EQ(box.text(), "Posts &only");
}
