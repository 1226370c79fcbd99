#pragma once

#include "base/KorTreeHandle.h"
#include "controls/KorEntrySearch.h"
#include "controls/KorRowThumbnails.h"

#include <QFrame>

#include <functional>

class KorTreeCtrl;
class QHelpEvent;
class QLabel;
class QLineEdit;
class KorTreeModel;

/// The drop-down of a VELComboTree: a search field above the tree, which shows what is found. The keyboard
/// stays in the search field, which passes the keys on that move in the tree.
class VELComboTreePopup : public QFrame {
    Q_OBJECT

public:
    /// `combo` owns it, and `entries` must outlive it. `hint` gives what is said of an entry under the
    /// pointer.
    VELComboTreePopup(QWidget& combo, KorTreeModel& entries, std::function<QString(KorTreeHandle)> hint);
    ~VELComboTreePopup() override;

    /// Shows the drop-down at its combo, on the chosen entry, or on what `search` finds.
    void open(KorTreeHandle chosen, const QString& search);

    /// The room for the pictures of entries.
    void setIconSize(QSize size);

    /// Shows thumbnails of entries from now on, and is larger then.
    void setThumbnails(KorRowThumbnails::SubjectOf subjectOf);

Q_SIGNALS:
    /// The user wants this entry, which may be null; it need not be one that can be chosen.
    void wanted(KorTreeHandle entry);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool onKey(QKeyEvent& event);
    bool showHint(const QHelpEvent& event);
    void narrow();
    void step(bool isDown);
    void place();

    QWidget& m_combo;
    KorTreeModel& m_entries;
    std::function<QString(KorTreeHandle)> m_hint;
    KorEntrySearch m_found;
    QLineEdit* m_search;
    QLabel* m_none;
    KorTreeCtrl* m_tree;
    bool m_hasThumbnails = false;
};
