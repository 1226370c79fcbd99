#include "controls/linetype/CKorlinetypelistctrl.h"

#include "controls/KorQt.h"
#include "controls/linetype/LinetypeDelegate.h"
#include "controls/linetype/LinetypeModel.h"

#include <QPainter>
#include <QTextOption>

CKorlinetypelistctrl::CKorlinetypelistctrl(QWidget* parent)
    : QListView(parent), m_model(new LinetypeModel(this)) {
    setModel(m_model);
    setItemDelegate(new LinetypeDelegate(this));
    setUniformItemSizes(true); // ten thousand line types are measured once
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setResizeMode(Adjust);
    connect(this, &QListView::activated, this,
            [this](const QModelIndex& index) { Q_EMIT linetypeActivated(fromQt(index.data().toString())); });
}

void CKorlinetypelistctrl::RemoveAll() {
    const bool hadChoice = !selectedLinetype().isEmpty();
    m_model->removeAll();
    if (hadChoice) // a reset takes the choice away without a word
        Q_EMIT linetypePicked({});
}

void CKorlinetypelistctrl::SetSupportPath(const KorString& folder) {
    m_model->setSupportPath(folder);
}

void CKorlinetypelistctrl::SetLinetypeFile(const KorString& name) {
    m_model->setFile(name);
}

int CKorlinetypelistctrl::LoadLinetype(const KorString& name) {
    const int found = m_model->load(name);
    viewport()->update();
    return found;
}

void CKorlinetypelistctrl::setDefaultPrompts() {
    setAccessibleName(toQt(m_prompts.name));
    viewport()->update();
}

int CKorlinetypelistctrl::count() const {
    return m_model->rowCount();
}

KorString CKorlinetypelistctrl::selectedLinetype() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? KorString() : fromQt(rows.front().data().toString());
}

bool CKorlinetypelistctrl::selectLinetype(const KorString& name) {
    const int row = m_model->rowOf(name);
    if (row >= 0)
        setCurrentIndex(m_model->index(row));
    return row >= 0;
}

KorString CKorlinetypelistctrl::message() const {
    const LinetypeFile* file = m_model->file();
    if (!file)
        return {};
    const KorString path = m_model->filePath().string();
    switch (file->outcome()) {
    case LinetypeFile::kUnreadable:
        return KorString::format(m_prompts.unreadable, {path});
    case LinetypeFile::kNoPlainFile:
        return KorString::format(m_prompts.noPlainFile, {path});
    case LinetypeFile::kNoLinetypes:
        return KorString::format(m_prompts.noLinetypes, {path});
    case LinetypeFile::kRead:
        break;
    }
    if (file->isCutShort())
        return KorString::format(m_prompts.cutShort, {path});
    return file->damaged() > 0
               ? KorString::format(m_prompts.damaged, {path, KorString::number(file->damaged())})
               : KorString();
}

void CKorlinetypelistctrl::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (count() > 0)
        return;
    constexpr int kMargin = 8;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Text));
    QTextOption wrapped(Qt::AlignLeft | Qt::AlignTop);
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere); // a path can be one long word
    painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin), toQt(message()),
                     wrapped);
}

void CKorlinetypelistctrl::selectionChanged(const QItemSelection& selected,
                                            const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    Q_EMIT linetypePicked(selectedLinetype());
}
