#include "controls/KorStyle.h"

#include <QApplication>
#include <QFont>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setStyle(new KorStyle);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9)); // "Sans Serif" differs between machines
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
