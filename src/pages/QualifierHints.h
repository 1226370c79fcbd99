#pragma once

#include "base/KorString.h"

#include <QObject>

class QComboBox;

/// Says in words what a qualifier set selects, while the pointer rests on a combo that has chosen it or on
/// its name in the list of that combo.
class QualifierHints : public QObject {
    Q_OBJECT

public:
    /// For a combo whose entries are qualifier sets of the current source; once is enough.
    static void addTo(QComboBox& combo);
    /// The words for the set of this name in the current source; empty where there is none.
    static QString sentenceOf(const KorString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit QualifierHints(QComboBox& combo);
};
