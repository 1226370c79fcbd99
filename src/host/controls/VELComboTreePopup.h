#pragma once

#include "base/KorTreeHandle.h"

#include <QFrame>

class KorTreeCtrl;
class QLineEdit;
class VELComboTree;

/// The drop-down of a VELComboTree: a search field above the tree. The keyboard stays in the search field,
/// which passes the keys on that move in the tree.
class VELComboTreePopup : public QFrame {
    Q_OBJECT

public:
    explicit VELComboTreePopup(VELComboTree& combo);
    ~VELComboTreePopup() override;

    /// Shows the drop-down at its combo, on the chosen entry, or on what `search` finds.
    void open(const QString& search);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool onKey(QKeyEvent& event);
    void find(KorTreeHandle from, bool forward);
    void choose(KorTreeHandle entry);
    void place();

    VELComboTree& m_combo;
    QLineEdit* m_search;
    KorTreeCtrl* m_tree;
};
