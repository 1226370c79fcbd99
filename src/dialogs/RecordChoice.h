#pragma once

#include "session/KorDSMDeepCopy.h"

#include <QObject>

class QTreeWidget;

/// A tree of records in their groups, each with a check box; the box of a group stands for all in it.
class RecordChoice : public QObject {
    Q_OBJECT

public:
    /// `tree` is not owned and must outlive the object.
    explicit RecordChoice(QTreeWidget& tree);

    /// Shows these records, all checked or none.
    void fill(std::vector<KorDSMDeepCopy::Choice> choices, bool isChecked);
    /// Those that are checked, in the order of the tree.
    std::vector<RowRef> checked() const;
    std::size_t count() const { return m_choices.size(); }

Q_SIGNALS:
    /// The user checked or cleared boxes; comes once for all that a click changes.
    void changed();

private:
    void tellSoon();

    QTreeWidget& m_tree;
    std::vector<KorDSMDeepCopy::Choice> m_choices;
    bool m_isFilling = false;
    bool m_isPosted = false;
};
