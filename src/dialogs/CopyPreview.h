#pragma once

#include "session/KorDSMDeepCopy.h"

#include <QObject>

class QDialog;
class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;

/// What would become of records on their way into another source: a tree with a verdict for each record that
/// comes along, how many there are of each verdict, and what is done where another record has the name
/// already, for all of them or for one. It is tried and taken back, so what it shows is what is done.
class CopyPreview : public QObject {
    Q_OBJECT

public:
    /// The template of `dialog` has the controls 2375 to 2381; its button 1 is on while something would be
    /// done. Both must outlive the object; what the user chooses here stands in `wish`.
    CopyPreview(QDialog& dialog, KorDSMDeepCopy::Wish& wish);

    /// Tries the wish as it is now, with progress where that takes a while; Esc ends it.
    void show();

private:
    void setUpNamesakes();
    void setUpRows();
    void showRows(const ImportReport& report);
    void choose(RowRef row, eNamesakes namesakes);

    QDialog& m_dialog;
    KorDSMDeepCopy::Wish& m_wish;
    QTreeWidget& m_rows;
    QLabel& m_summary;
    QProgressBar& m_progress;
    QPushButton& m_done;
};
