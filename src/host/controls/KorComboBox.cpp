#include "controls/KorComboBox.h"

#include "controls/KorItemSelection.h"
#include "controls/KorQt.h"
#include "controls/KorTreeModel.h"
#include "controls/VELComboTreePopup.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QWheelEvent>

#include <map>

namespace {

constexpr int kMostSeenAtOnce = 20; // entries; among more of them one looks for a name

/// The entries of a combo, below their groups: an entry's image is its place in the combo, and its picture is
/// asked for when it is seen.
class ComboEntries : public KorTreeModel {
public:
    using PictureOf = std::function<QVariant(int place)>;

    ComboEntries(const QComboBox& combo, PictureOf pictureOf)
        : m_combo(combo), m_pictureOf(std::move(pictureOf)) {
        std::map<QString, std::vector<int>> groups;
        for (int place = 0; place < combo.count(); ++place)
            if (const QString group = combo.itemData(place, KorComboBox::kGroupRole).toString();
                group.isEmpty())
                add(nullptr, place);
            else
                groups[group].push_back(place);
        for (const auto& [group, places] : groups) {
            const KorTreeHandle above = insert(nullptr, -1, {fromQt(group)});
            above->selectable = false;
            for (const int place : places)
                add(above, place);
        }
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const KorTreeHandle entry = index.isValid() ? entryOf(index) : nullptr;
        if (entry && entry->image >= 0 && role == Qt::DecorationRole)
            return m_pictureOf(entry->image);
        if (entry && entry->image >= 0 && role == Qt::ToolTipRole)
            return m_combo.itemData(entry->image, role);
        return KorTreeModel::data(index, role);
    }

private:
    void add(KorTreeHandle above, int place) {
        const KorTreeHandle entry = insert(above, -1, {fromQt(m_combo.itemText(place)), place});
        const QModelIndex index =
            m_combo.model()->index(place, m_combo.modelColumn(), m_combo.rootModelIndex());
        entry->selectable = m_combo.model()->flags(index).testFlag(Qt::ItemIsEnabled);
    }

    const QComboBox& m_combo;
    PictureOf m_pictureOf;
};

// What a key adds to a text that is searched for; empty for keys that do something else.
QString typedBy(const QKeyEvent& event) {
    const QString text = event.text();
    const bool isCommand = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    return !isCommand && !text.isEmpty() && text.front().isPrint() && !text.front().isSpace() ? text
                                                                                              : QString();
}

KorTreeHandle entryAt(const KorTreeModel& entries, int place) {
    KorTreeHandle entry = entries.nextInOrder(nullptr);
    while (entry && entry->image != place)
        entry = entries.nextInOrder(entry);
    return place < 0 ? nullptr : entry;
}

} // namespace

KorComboBox::KorComboBox(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus); // the wheel alone must not give it the focus
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
}

KorComboBox::~KorComboBox() {
    delete m_search; // before the entries that it shows
}

void KorComboBox::setPictures(const std::vector<QIcon>& pictures, QSize size) {
    QSize room;
    for (int entry = 0; entry < count() && entry < static_cast<int>(pictures.size()); ++entry) {
        const QIcon& picture = pictures[static_cast<std::size_t>(entry)];
        setItemIcon(entry, picture);
        if (!picture.isNull())
            room = room.expandedTo(picture.actualSize(size));
    }
    if (!room.isEmpty())
        setIconSize(room);
}

void KorComboBox::keyPressEvent(QKeyEvent* event) {
    Q_EMIT choosing();
    const QString typed = typedBy(*event);
    if (typed.isEmpty() || isEditable() || count() == 0)
        return QComboBox::keyPressEvent(event);
    openSearch(typed);
}

// Typing into the open list, which has no search field.
bool KorComboBox::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = watched == view() && event->type() == QEvent::KeyPress && !isEditable();
    const QString typed = isKey ? typedBy(*static_cast<QKeyEvent*>(event)) : QString();
    if (typed.isEmpty())
        return QComboBox::eventFilter(watched, event);
    hidePopup();
    openSearch(typed);
    return true;
}

bool KorComboBox::isSearched() const {
    return !isEditable() &&
           (count() > kMostSeenAtOnce || (count() > 0 && !itemData(count() - 1, kGroupRole).isNull()));
}

void KorComboBox::showPopup() {
    Q_EMIT choosing();
    if (isSearched())
        return openSearch({});
    QPalette soft = palette();
    KorItemSelection::soften(soft);
    view()->setPalette(soft);
    QComboBox::showPopup();
    view()->installEventFilter(this);
}

void KorComboBox::hidePopup() {
    if (m_search)
        m_search->hide();
    QComboBox::hidePopup();
}

void KorComboBox::openSearch(const QString& typed) {
    delete m_search; // the entries may be others by now
    m_entries = std::make_unique<ComboEntries>(*this, [this](int place) { return pictureOf(place); });
    m_search = new VELComboTreePopup(*this, *m_entries, [](KorTreeHandle) { return QString(); });
    m_search->setIconSize(pictureSize());
    connect(m_search, &VELComboTreePopup::wanted, this, &KorComboBox::chooseFound);
    m_search->open(entryAt(*m_entries, currentIndex()), typed);
}

void KorComboBox::chooseFound(KorTreeHandle entry) {
    if (!entry || !entry->selectable)
        return;
    const int place = entry->image;
    m_search->hide();
    setFocus();
    setCurrentIndex(place);
    Q_EMIT activated(place);
}

void KorComboBox::wheelEvent(QWheelEvent* event) {
    if (!hasFocus())
        return event->ignore();
    Q_EMIT choosing();
    QComboBox::wheelEvent(event);
}
