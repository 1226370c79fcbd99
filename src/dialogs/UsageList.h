#pragma once

#include "session/KorDSMWhereUsed.h"

#include <QObject>

#include <optional>

class KorListCtrl;
class QToolButton;

/// Shows who uses a record in the list of a dialog: database, kind, name, and as what it is used.
class UsageList : public QObject {
    Q_OBJECT

public:
    /// The list belongs to the dialog, which also owns this.
    UsageList(KorListCtrl* list, std::vector<KorDSMUsage> usages, QObject* parent);

    /// Shows others; where they are the same, the list stays as the user sorted it. With the source of the
    /// record that is used, those come first that are of that source, and the others are told to use a record
    /// of their own that has the name.
    void setUsages(std::vector<KorDSMUsage> usages, std::optional<SourceId> ofRecord = {});
    /// Lets a button show and hide the list; it says how many there are. Hidden at first, and the button too
    /// when there are none.
    void foldBehind(QToolButton* button);
    int count() const { return static_cast<int>(m_usages.size()); }
    /// Why some may be missing from the list; empty when none is.
    const KorString& whyIncomplete() const { return m_whyIncomplete; }

Q_SIGNALS:
    /// A click on a row, or Enter: the user wants to go there.
    void chosen(const KorDSMUsage& usage);

private:
    void choose(int row);

    KorString caption() const;

    KorListCtrl* m_list;
    KorString m_whyIncomplete;
    std::vector<KorDSMUsage> m_usages; // the rows' data point into it
};
