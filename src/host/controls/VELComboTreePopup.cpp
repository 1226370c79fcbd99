#include "controls/VELComboTreePopup.h"

#include "base/Translation.h"
#include "controls/KorQt.h"
#include "controls/KorTreeCtrl.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>

namespace {
constexpr QSize kLeast(240, 200); // what is chosen from can be read in it
constexpr QSize kLeastWithThumbnails(320, 440);
} // namespace

VELComboTreePopup::VELComboTreePopup(QWidget& combo, KorTreeModel& entries,
                                     std::function<QString(KorTreeHandle)> hint)
    : QFrame(&combo, Qt::Popup), m_combo(combo), m_entries(entries), m_hint(std::move(hint)),
      m_search(new QLineEdit(this)),
      m_none(new QLabel(toQt(translated("Nothing has this in its name.")), this)),
      m_tree(new KorTreeCtrl(&entries, this)) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    setAttribute(Qt::WA_NoMouseReplay); // a click on the combo closes the drop-down, and that is all
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(1);
    layout->addWidget(m_search);
    layout->addWidget(m_none);
    layout->addWidget(m_tree);
    m_none->setWordWrap(true);
    m_none->setMargin(4);
    m_none->hide();
    m_search->setPlaceholderText(toQt(translated("Search")));
    m_search->setAccessibleName(toQt(translated("Search")));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_tree->setFocusPolicy(Qt::NoFocus);
    m_tree->setFrameStyle(QFrame::NoFrame);
    m_tree->viewport()->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, &VELComboTreePopup::narrow);
    connect(m_tree, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { Q_EMIT wanted(KorTreeModel::entryOf(index)); });
}

VELComboTreePopup::~VELComboTreePopup() {
    m_search->disconnect(this);
    m_tree->disconnect(this);
    m_tree->setFilter(nullptr); // the entries outlive it
}

void VELComboTreePopup::setIconSize(QSize size) {
    m_tree->setIconSize(size);
}

void VELComboTreePopup::setThumbnails(KorRowThumbnails::SubjectOf subjectOf) {
    m_hasThumbnails = true;
    (new KorRowThumbnails(*m_tree, std::move(subjectOf)))->setWanted(true);
}

void VELComboTreePopup::open(KorTreeHandle chosen, const QString& search) {
    if (KorThumbnails* thumbnails = KorThumbnails::current(); thumbnails && m_hasThumbnails)
        thumbnails->lookAgain(); // something was changed while it was closed, perhaps
    place();
    show();
    m_search->setText(search);
    m_search->setFocus();
    if (!m_found.isSet())
        m_tree->selectItem(chosen ? chosen : m_tree->getRoot());
    if (const KorTreeHandle selected = m_tree->selectedItem())
        m_tree->ensureVisible(selected);
}

void VELComboTreePopup::place() {
    const QRect screen = m_combo.screen()->availableGeometry();
    const QRect combo(m_combo.mapToGlobal(QPoint(0, 0)), m_combo.size());
    const KorThumbnails* thumbnails = KorThumbnails::current();
    const bool isLarge = m_hasThumbnails && thumbnails && thumbnails->areShown();
    const QSize least = isLarge ? kLeastWithThumbnails : kLeast;
    const int above = combo.top() - screen.top();
    const int below = screen.bottom() - combo.bottom();
    const int height = std::min(least.height(), std::max(above, below) - 1);
    QRect popup(combo.bottomLeft() + QPoint(0, 1), QSize(std::max(combo.width(), least.width()), height));
    if (below <= height)
        popup.moveBottom(combo.top() - 1);
    popup.moveRight(std::min(popup.right(), screen.right()));
    popup.moveLeft(std::max(popup.left(), screen.left()));
    setGeometry(popup);
}

// Enter must not choose what fits only the first letters of what is typed.
void VELComboTreePopup::narrow() {
    constexpr std::size_t kMostOpened = 200;
    m_found.look(m_entries, m_search->text());
    m_none->setVisible(m_found.isSet() && m_found.found().empty());
    if (!m_found.isSet()) {
        m_tree->setFilter(nullptr);
        return;
    }
    m_tree->setFilter([this](const KorTreeEntry& entry) { return m_found.isShown(entry); });
    for (std::size_t i = 0; i < std::min(m_found.found().size(), kMostOpened); ++i)
        for (KorTreeHandle above = m_entries.parentOf(m_found.found()[i]); above;
             above = m_entries.parentOf(above))
            m_tree->expand(above);
    m_tree->selectItem(m_found.best());
}

void VELComboTreePopup::step(bool isDown) {
    if (const KorTreeHandle next = m_found.nextTo(m_tree->selectedItem(), isDown))
        m_tree->selectItem(next);
}

bool VELComboTreePopup::onKey(QKeyEvent& event) {
    const bool searching = m_found.isSet();
    const bool alt = event.modifiers() & Qt::AltModifier;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT wanted(m_tree->selectedItem());
        return true;
    case Qt::Key_Escape:
        if (m_search->text().isEmpty())
            hide();
        else
            m_search->clear();
        return true;
    case Qt::Key_F4:
    case Qt::Key_Tab:
        hide();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (alt)
            hide();
        else if (searching)
            step(event.key() == Qt::Key_Down);
        else
            QCoreApplication::sendEvent(m_tree, &event);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(m_tree, &event);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (!searching)
            QCoreApplication::sendEvent(m_tree, &event);
        return !searching;
    default:
        return false;
    }
}

bool VELComboTreePopup::showHint(const QHelpEvent& event) {
    const QModelIndex index = m_tree->indexAt(event.pos());
    const QString hint = index.isValid() ? m_hint(KorTreeModel::entryOf(index)) : QString();
    if (!hint.isEmpty())
        QToolTip::showText(event.globalPos(), hint, m_tree);
    return !hint.isEmpty();
}

void VELComboTreePopup::hideEvent(QHideEvent* event) {
    QFrame::hideEvent(event);
    m_search->clear();
}

bool VELComboTreePopup::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ToolTip && showHint(*static_cast<QHelpEvent*>(event)))
        return true;
    if (watched == m_search && event->type() == QEvent::KeyPress && onKey(*static_cast<QKeyEvent*>(event)))
        return true;
    return QFrame::eventFilter(watched, event);
}
