#pragma once

#include "dialogs/KorDSMDialog.h"
#include "dialogs/SearchHitList.h"

#include <QTimer>

#include <optional>

class QLabel;
class QLineEdit;
class QListView;

/// One field that finds records, values, fields, pages, commands and topics while they are typed. The arrow
/// keys choose a hit from within the field, Enter takes it.
class KorDSMDialogSearch : public KorDSMDialog {
    Q_OBJECT

public:
    /// `search` must outlive the dialog; `typed` is what was looked for before.
    KorDSMDialogSearch(KorDSMSearch& search, SearchHitList::PictureOf pictureOf, const KorString& typed,
                       QWidget* parent);

    /// What the user chose; nothing where the dialog was left.
    const std::optional<KorDSMSearchHit>& chosen() const { return m_chosen; }
    KorString typed() const;

    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void collectAhead();
    void look();
    void say(const KorDSMSearchResult& result);

    KorDSMSearch& m_search;
    QLineEdit* m_field;
    QListView* m_view;
    QLabel* m_said;
    SearchHitList* m_hits;
    QTimer m_rest; // of the hand, before more than a letter is typed
    std::optional<KorDSMSearchHit> m_chosen;
};
