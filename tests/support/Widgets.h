#pragma once

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <gtest/gtest.h>

/// Shows the window and waits until keys go to it.
inline void showActive(QWidget& window) {
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

/// One step of the wheel downwards over the widget. Returns whether it was used.
inline bool turnWheel(QWidget& over) {
    QWheelEvent event({5, 5}, over.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&over, &event);
    return event.isAccepted();
}

/// A click into the first column of a row of a list.
inline void clickRow(QAbstractItemView& list, int row) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualRect(list.model()->index(row, 0)).center());
}
