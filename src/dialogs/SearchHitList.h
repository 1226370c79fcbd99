#pragma once

#include "session/KorDSMSearch.h"

#include <QAbstractListModel>
#include <QIcon>
#include <QStyledItemDelegate>

#include <functional>

/// What was found, as the rows of a list. What a row says is heard as one sentence.
class SearchHitList : public QAbstractListModel {
    Q_OBJECT

public:
    /// The picture of a hit without an icon of its own.
    using PictureOf = std::function<QIcon(const KorDSMSearchHit&)>;
    SearchHitList(PictureOf pictureOf, QObject* parent);

    void show(const SearchWords& words, std::vector<KorDSMSearchHit> hits);
    const KorDSMSearchHit& hit(int row) const { return m_hits[static_cast<std::size_t>(row)]; }
    const SearchWords& words() const { return m_words; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    PictureOf m_pictureOf;
    SearchWords m_words;
    std::vector<KorDSMSearchHit> m_hits;
};

/// Draws a hit in two lines: what was found, with the words that fit in bold, and its kind; below it where
/// that stands.
class SearchHitDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
