#include "controls/VELComboTree.h"

#include "base/KorAssert.h"
#include "controls/KorQt.h"
#include "controls/VELComboTreePopup.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

#include <utility>

namespace {

constexpr char kDelimiter = '\x1f'; // the "unit separator": nobody types it into a name

/// The names of a path. One can be empty, but an empty path has none.
std::vector<KorString> namesOf(std::string_view path) {
    std::vector<KorString> names;
    for (std::size_t from = 0; !path.empty() && from <= path.size();) {
        const std::size_t end = std::min(path.find(kDelimiter, from), path.size());
        names.emplace_back(path.substr(from, end - from));
        from = end + 1;
    }
    return names;
}

} // namespace

VELComboTree::VELComboTree(QWidget* parent) : KorComboBox(parent), m_model(new KorTreeModel(this)) {}

VELComboTree::~VELComboTree() {
    delete m_popup;
}

KorString VELComboTree::GetPathDelimiter() {
    return KorString(std::string_view(&kDelimiter, 1));
}

void VELComboTree::setImageList(KorImageListPtr images) {
    m_images = images;
    m_model->setImageList(std::move(images));
    showSelected();
}

void VELComboTree::setDisplayFullPath(bool on) {
    m_displayFullPath = on;
    showSelected();
}

KorTreeHandle VELComboTree::child(KorTreeHandle parent, const KorString& name) const {
    const auto found = m_children.find({parent, name});
    return found == m_children.end() ? nullptr : found->second;
}

void VELComboTree::fillWhenNeeded(std::function<void(VELComboTree&)> fill, int image) {
    const KorString chosen = getSelectedPath();
    deleteAll();
    m_fill = std::move(fill);
    m_unfilledImage = image;
    selectPath(chosen);
}

// To be filled late is not a change that anybody sees: the choice stays, and nothing is announced.
void VELComboTree::fillNow() const {
    if (!m_fill)
        return;
    auto& self = const_cast<VELComboTree&>(*this);
    const KorString chosen = getSelectedPath();
    const auto fill = std::exchange(self.m_fill, {});
    self.deleteAll();
    fill(self);
    self.selectPath(chosen);
}

KorTreeHandle VELComboTree::insertPath(const KorString& path) {
    KorTreeHandle entry = nullptr;
    for (const KorString& name : namesOf(path.view())) {
        KorTreeHandle next = child(entry, name);
        if (!next) {
            next = m_model->insert(entry, -1, {name, -1, nullptr, false});
            m_children.emplace(ChildKey{entry, name}, next);
        }
        entry = next;
    }
    return entry;
}

KorTreeHandle VELComboTree::addEntry(const KorString& path, int image, const KorEntryData& entryData) {
    fillNow();
    KorTreeHandle entry = insertPath(path);
    if (!KorAssert::check(entry != nullptr, "an entry is given"))
        return nullptr;
    entry->image = image;
    entry->data = entryData;
    if (entry == m_selected)
        showSelected();
    return entry;
}

bool VELComboTree::deleteEntry(const KorString& path) {
    const KorTreeHandle entry = findEntry(path);
    if (!entry)
        return false;
    const KorTreeHandle parent = m_model->parentOf(entry);
    const KorTreeHandle end = m_model->nextOutside(entry);
    m_children.erase({parent, entry->text});
    bool selectionGoes = false;
    for (KorTreeHandle at = entry; at != end; at = m_model->nextInOrder(at)) {
        selectionGoes = selectionGoes || at == m_selected;
        if (at != entry)
            m_children.erase({at->parent, at->text});
    }
    if (selectionGoes)
        setSelected(nullptr);
    m_model->remove(entry);
    return true;
}

bool VELComboTree::renameEntry(const KorString& path, const KorString& name) {
    const KorTreeHandle entry = findEntry(path);
    const KorTreeHandle parent = entry ? m_model->parentOf(entry) : nullptr;
    if (!entry || child(parent, name))
        return false;
    m_children.erase({parent, entry->text});
    m_children.emplace(ChildKey{parent, name}, entry);
    m_model->setText(entry, name);
    showSelected();
    return true;
}

void VELComboTree::deleteAll() {
    m_fill = {};
    delete m_popup;
    m_children.clear();
    m_model->removeChildren(nullptr);
    setSelected(nullptr);
}

KorTreeHandle VELComboTree::findEntry(const KorString& path) const {
    fillNow();
    return entryOf(path);
}

KorTreeHandle VELComboTree::entryOf(const KorString& path) const {
    KorTreeHandle entry = nullptr;
    for (const KorString& name : namesOf(path.view())) {
        entry = child(entry, name);
        if (!entry)
            return nullptr;
    }
    return entry;
}

KorString VELComboTree::getPath(KorTreeHandle entry) const {
    KorString path = getEntryText(entry);
    while (entry && (entry = m_model->parentOf(entry)))
        path = entry->text + GetPathDelimiter() + path;
    return path;
}

KorString VELComboTree::getEntryText(KorTreeHandle entry) const {
    return entry ? entry->text : KorString();
}

KorEntryData VELComboTree::getEntryData(KorTreeHandle entry) const {
    return entry ? entry->data : KorEntryData();
}

int VELComboTree::childCount(KorTreeHandle parent) const {
    fillNow();
    return m_model->childCount(parent);
}

KorTreeHandle VELComboTree::getChildAt(KorTreeHandle parent, int index) const {
    fillNow();
    return m_model->childAt(parent, index);
}

bool VELComboTree::selectPath(const KorString& path) {
    KorTreeHandle entry = entryOf(path);
    if (!entry && m_fill && !path.isEmpty()) {
        entry = insertPath(path);
        entry->image = m_unfilledImage;
    }
    setSelected(entry);
    return m_selected || path.isEmpty();
}

bool VELComboTree::selectName(const KorString& name) {
    fillNow();
    KorTreeHandle entry = m_model->nextInOrder(nullptr);
    while (entry && !(canChoose(entry) && entry->text == name))
        entry = m_model->nextInOrder(entry);
    setSelected(entry);
    return entry != nullptr;
}

KorString VELComboTree::getSelectedPath() const {
    return getPath(m_selected);
}

bool VELComboTree::canChoose(KorTreeHandle entry) const {
    return entry && entry->selectable;
}

void VELComboTree::choose(KorTreeHandle entry) {
    setSelected(entry);
    Q_EMIT entrySelected(entry);
}

void VELComboTree::setSelected(KorTreeHandle entry) {
    m_selected = entry;
    showSelected();
}

/// The combo's own list holds just the chosen entry, so that its look and its accessible value are those
/// of any other combo.
void VELComboTree::showSelected() {
    const QSignalBlocker quiet(this);
    clear();
    setToolTip({});
    if (!m_selected)
        return;
    QString path = toQt(getSelectedPath());
    path.replace(QLatin1Char(kDelimiter), QStringLiteral(" / "));
    addItem(m_images ? m_images->at(m_selected->image) : QIcon(),
            m_displayFullPath ? path : toQt(m_selected->text));
    setCurrentIndex(0); // a combo with a placeholder text does not choose its first item by itself
    setToolTip(path);
}

void VELComboTree::initStyleOption(QStyleOptionComboBox* option) const {
    KorComboBox::initStyleOption(option);
    QRect field = style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxEditField, this);
    const int icon = option->currentIcon.isNull() ? 0 : option->iconSize.width() + 8;
    option->currentText =
        option->fontMetrics.elidedText(option->currentText, Qt::ElideMiddle, field.width() - icon - 4);
}

void VELComboTree::step(int by) {
    fillNow();
    KorTreeHandle entry = m_selected;
    do
        entry = by > 0 ? m_model->nextInOrder(entry) : m_model->previousInOrder(entry);
    while (entry && !canChoose(entry));
    if (entry)
        choose(entry);
}

void VELComboTree::keyPressEvent(QKeyEvent* event) {
    const bool alt = event->modifiers() & Qt::AltModifier;
    const QString typed = event->text();
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (alt)
            return showPopup();
        return step(event->key() == Qt::Key_Up ? -1 : 1);
    case Qt::Key_F4:
    case Qt::Key_Space:
        return showPopup();
    default:
        if (!typed.isEmpty() && typed.front().isPrint() && !alt &&
            !(event->modifiers() & Qt::ControlModifier))
            return openPopup(typed);
        QWidget::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call): a combo would choose by itself
    }
}

void VELComboTree::wheelEvent(QWheelEvent* event) {
    event->setAccepted(hasFocus());
    if (hasFocus() && event->angleDelta().y() != 0)
        step(event->angleDelta().y() > 0 ? -1 : 1);
}

void VELComboTree::showPopup() {
    openPopup({});
}

void VELComboTree::openPopup(const QString& search) {
    fillNow();
    if (!m_popup) {
        m_popup = new VELComboTreePopup(*this, *m_model, [this](KorTreeHandle entry) {
            return m_hint ? m_hint(entry->text) : QString();
        });
        if (m_thumbnailOf)
            m_popup->setThumbnails(
                [this](const QModelIndex& row) { return m_thumbnailOf(KorTreeModel::entryOf(row)); });
        connect(m_popup, &VELComboTreePopup::wanted, this, [this](KorTreeHandle entry) {
            if (!canChoose(entry))
                return;
            m_popup->hide();
            setFocus();
            choose(entry);
        });
    }
    m_popup->open(m_selected, search);
}

void VELComboTree::hidePopup() {
    if (m_popup)
        m_popup->hide();
}
