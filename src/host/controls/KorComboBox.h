#pragma once

#include "base/KorTreeHandle.h"

#include <QComboBox>
#include <QPointer>

#include <memory>
#include <vector>

class KorTreeModel;
class VELComboTreePopup;

/// A combo box that the wheel changes only while it has the focus: a user who scrolls a page with the
/// mouse over a combo must not change a stored value. Typing chooses nothing by itself either: it searches
/// the entries in the drop-down, where Enter or a click chooses one. A long list has the search field from
/// the start.
class KorComboBox : public QComboBox {
    Q_OBJECT

public:
    /// Where an entry keeps the name of the group below which the drop-down shows it; empty for none.
    static constexpr int kGroupRole = Qt::UserRole + 7;

    explicit KorComboBox(QWidget* parent = nullptr);
    ~KorComboBox() override;

    /// Shows a picture before each entry, in their order, none larger than `size`. The entries make room for
    /// the widest; without any picture all stay as they are.
    void setPictures(const std::vector<QIcon>& pictures, QSize size);

    /// The row that is pointed at is marked so softly that its picture stays visible.
    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    /// The user opens the list or goes through it by keys or wheel: what is expensive about it is due now.
    void choosing();

protected:
    /// Whether the drop-down has the search field from the start; otherwise it gets it when something is
    /// typed.
    virtual bool isSearched() const;
    /// What stands before an entry in the drop-down with the search field, at most so large.
    virtual QVariant pictureOf(int place) const { return itemData(place, Qt::DecorationRole); }
    virtual QSize pictureSize() const { return iconSize(); }

    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void openSearch(const QString& typed);
    void chooseFound(KorTreeHandle entry);

    std::unique_ptr<KorTreeModel> m_entries; // of the drop-down with the search field, made as it is opened
    QPointer<VELComboTreePopup> m_search;
};
