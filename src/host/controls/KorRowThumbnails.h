#pragma once

#include "controls/KorThumbnails.h"

#include <QStyledItemDelegate>

#include <functional>

class QAbstractItemView;

/// Shows thumbnails in the place of the icons in the first column of a view, for rows that have some. Those
/// in sight, and a few around them, are asked for each time the view is painted.
class KorRowThumbnails : public QStyledItemDelegate {
    Q_OBJECT

public:
    using SubjectOf = std::function<KorThumbnails::Subject(const QModelIndex& row)>;

    /// `view` owns it.
    KorRowThumbnails(QAbstractItemView& view, SubjectOf subjectOf);

    /// Rows have room for thumbnails only while some of them may have one. Off at first.
    void setWanted(bool wanted);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool areShown() const;
    void layOut();
    void want();

    QAbstractItemView& m_view;
    SubjectOf m_subjectOf;
    bool m_isWanted = false;
};
