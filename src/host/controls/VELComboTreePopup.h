#pragma once

#include "base/KorTreeHandle.h"
#include "controls/KorRowThumbnails.h"

#include <QFrame>

class KorTreeCtrl;
class QLineEdit;
class KorTreeModel;

/// The drop-down of a VELComboTree: a search field above the tree. The keyboard stays in the search field,
/// which passes the keys on that move in the tree.
class VELComboTreePopup : public QFrame {
    Q_OBJECT

public:
    /// `combo` owns it, and `entries` must outlive it.
    VELComboTreePopup(QWidget& combo, KorTreeModel& entries);
    ~VELComboTreePopup() override;

    /// Shows the drop-down at its combo, on the chosen entry, or on what `search` finds.
    void open(KorTreeHandle chosen, const QString& search);

    /// Shows thumbnails of entries from now on, and is larger then.
    void setThumbnails(KorRowThumbnails::SubjectOf subjectOf);

Q_SIGNALS:
    /// The user wants this entry, which may be null; it need not be one that can be chosen.
    void wanted(KorTreeHandle entry);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool onKey(QKeyEvent& event);
    void find(KorTreeHandle from, bool forward);
    void place();

    QWidget& m_combo;
    KorTreeModel& m_entries;
    QLineEdit* m_search;
    KorTreeCtrl* m_tree;
    bool m_hasThumbnails = false;
};
