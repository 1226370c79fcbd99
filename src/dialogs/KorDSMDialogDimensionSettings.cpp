#include "dialogs/KorDSMDialogDimensionSettings.h"

#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"
#include "session/KorDSMWhereUsed.h"

#include <QComboBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <QTreeWidget>

namespace {

using Setting = KorDSMDimensionSettings::Setting;
using eGroup = KorDSMDimensionSettings::eGroup;

constexpr int kTemplate = 2410;
constexpr int kRows = 2411;
constexpr int kNote = 2412;
constexpr int kReset = 2413;
constexpr int kAdd = 2414;
constexpr int kRemove = 2415;

constexpr int kTitle = 802;      // "Dimension settings of %s"
constexpr int kFirstTitle = 803; // of the columns
constexpr int kResetText = 807;
constexpr int kAddText = 808;
constexpr int kRemoveText = 809;
constexpr int kAddTitle = 810;
constexpr int kAddLabel = 811;

enum eColumn : int { kNameColumn, kValueColumn, kUnitColumn, kStandardColumn };
constexpr int kIndexRole = Qt::UserRole; // of the setting; of a group row there is none
constexpr int kGroupRole = Qt::UserRole + 1;
constexpr int kChoicesRole = Qt::UserRole + 2;

// Values are typed, or chosen where they have words.
class ValueDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        if (index.column() != kValueColumn)
            return nullptr;
        const QStringList choices = index.data(kChoicesRole).toStringList();
        if (choices.isEmpty())
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto* combo = new QComboBox(parent);
        combo->addItems(choices);
        connect(combo, &QComboBox::activated, combo, [this, combo] {
            auto* self = const_cast<ValueDelegate*>(this);
            Q_EMIT self->commitData(combo);
            Q_EMIT self->closeEditor(combo);
        });
        return combo;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* combo = qobject_cast<QComboBox*>(editor))
            combo->setCurrentText(index.data().toString());
        else
            QStyledItemDelegate::setEditorData(editor, index);
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        if (const auto* combo = qobject_cast<QComboBox*>(editor))
            model->setData(index, combo->currentText());
        else
            QStyledItemDelegate::setModelData(editor, model, index);
    }
};

template <typename T>
T& control(QDialog& dialog, int id) {
    return *KorControls::find<T>(&dialog, id);
}

} // namespace

KorDSMDialogDimensionSettings::KorDSMDialogDimensionSettings(SourceId source, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_settings(source), m_isEditable(m_settings.whyReadOnly().isEmpty()),
      m_rows(control<QTreeWidget>(*this, kRows)), m_note(control<QLabel>(*this, kNote)),
      m_reset(control<QPushButton>(*this, kReset)), m_add(control<QPushButton>(*this, kAdd)),
      m_remove(control<QPushButton>(*this, kRemove)) {
    setTexts(source);
    setUpRows();
    fill();
    connect(&m_reset, &QPushButton::clicked, this, [this] {
        if (const auto index = selected()) {
            m_settings.reset(*index);
            fill();
            selectSetting(*index);
        }
    });
    connect(&m_add, &QPushButton::clicked, this, &KorDSMDialogDimensionSettings::add);
    connect(&m_remove, &QPushButton::clicked, this, [this] {
        if (const auto index = selected()) {
            m_settings.remove(*index);
            fill();
            selectSetting(*index > 0 ? *index - 1 : 0);
        }
    });
    selectSetting(0);
    m_rows.setFocus();
}

void KorDSMDialogDimensionSettings::setTexts(SourceId source) {
    setWindowTitle(toQt(KorString::format(Prompts::dsm(kTitle), {KorDSMWhereUsed::sourceName(source)})));
    setCaption(1, 33740);
    setCaption(2, 33741);
    setCaption(kReset, kResetText, "DSM");
    setCaption(kAdd, kAddText, "DSM");
    setCaption(kRemove, kRemoveText, "DSM");
    say({});
}

// What is not said of the row that is selected is why nothing can be changed.
void KorDSMDialogDimensionSettings::say(const QString& text) {
    m_note.setText(text.isEmpty() ? toQt(m_settings.whyReadOnly()) : text);
}

void KorDSMDialogDimensionSettings::setUpRows() {
    QStringList titles;
    for (int i = 0; i <= kStandardColumn; ++i)
        titles << toQt(Prompts::dsm(kFirstTitle + i));
    m_rows.setHeaderLabels(titles);
    m_rows.header()->setStretchLastSection(false);
    for (int i = 0; i <= kStandardColumn; ++i)
        m_rows.header()->setSectionResizeMode(i, i == kNameColumn ? QHeaderView::Stretch
                                                                  : QHeaderView::ResizeToContents);
    m_rows.header()->setMinimumSectionSize(fontMetrics().averageCharWidth() * 14);
    m_rows.setAccessibleName(windowTitle());
    m_rows.setItemDelegate(new ValueDelegate(this));
    m_rows.installEventFilter(this);
    m_rows.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    connect(&m_rows, &QTreeWidget::itemChanged, this, &KorDSMDialogDimensionSettings::onEdited);
    connect(&m_rows, &QTreeWidget::currentItemChanged, this, &KorDSMDialogDimensionSettings::onSelected);
}

// Whatever edits means the value of the row, in whichever column the cursor is; Right leads there, too.
bool KorDSMDialogDimensionSettings::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &m_rows || event->type() != QEvent::KeyPress || !selected())
        return KorDSMDialog::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    const bool isTyped = !key.text().isEmpty() && key.text().front().isPrint();
    if (key.key() != Qt::Key_Right && key.key() != Qt::Key_F2 && !isTyped)
        return KorDSMDialog::eventFilter(watched, event);
    m_rows.setCurrentItem(m_rows.currentItem(), kValueColumn);
    return key.key() == Qt::Key_Right;
}

void KorDSMDialogDimensionSettings::fill() {
    const QScopedValueRollback filling(m_isFilling, true);
    m_rows.clear();
    const std::vector<Setting>& settings = m_settings.settings();
    std::size_t next = 0;
    for (int i = 0; i < KorDSMDimensionSettings::kNumberOfGroups; ++i) {
        const auto group = static_cast<eGroup>(i);
        auto* head = new QTreeWidgetItem(&m_rows, {toQt(KorDSMDimensionSettings::groupCaption(group))});
        head->setData(0, kGroupRole, i);
        for (; next < settings.size() && settings[next].group == group; ++next) {
            const Setting& setting = settings[next];
            auto* item = new QTreeWidgetItem(head, {toQt(setting.caption()), toQt(setting.text),
                                                    toQt(setting.unit), toQt(setting.standard)});
            item->setData(0, kIndexRole, static_cast<int>(next));
            item->setData(0, kGroupRole, i);
            item->setToolTip(0, toQt(setting.name));
            item->setTextAlignment(kValueColumn, Qt::AlignRight | Qt::AlignVCenter);
            item->setTextAlignment(kStandardColumn, Qt::AlignRight | Qt::AlignVCenter);
            QStringList choices;
            for (const KorString& choice : setting.choices)
                choices << toQt(choice);
            item->setData(kValueColumn, kChoicesRole, choices);
            if (m_isEditable)
                item->setFlags(item->flags() | Qt::ItemIsEditable);
        }
    }
    m_rows.expandAll();
}

void KorDSMDialogDimensionSettings::onEdited(QTreeWidgetItem* item) {
    if (m_isFilling)
        return;
    const auto index = static_cast<std::size_t>(item->data(0, kIndexRole).toInt());
    const Result<> changed = m_settings.change(index, fromQt(item->text(kValueColumn)));
    const QScopedValueRollback filling(m_isFilling, true);
    item->setText(kValueColumn, toQt(m_settings.settings()[index].text));
    onSelected();
    if (!changed)
        say(item->text(kNameColumn) + QStringLiteral(": ") + QString::fromStdString(changed.error));
}

std::optional<std::size_t> KorDSMDialogDimensionSettings::selected() const {
    const QTreeWidgetItem* item = m_rows.currentItem();
    if (!item || !item->data(0, kIndexRole).isValid())
        return std::nullopt;
    return static_cast<std::size_t>(item->data(0, kIndexRole).toInt());
}

std::optional<eGroup> KorDSMDialogDimensionSettings::selectedGroup() const {
    const QTreeWidgetItem* item = m_rows.currentItem();
    return item ? std::optional(static_cast<eGroup>(item->data(0, kGroupRole).toInt())) : std::nullopt;
}

void KorDSMDialogDimensionSettings::selectSetting(std::size_t index) {
    for (int i = 0; i < m_rows.topLevelItemCount(); ++i)
        for (int j = 0; j < m_rows.topLevelItem(i)->childCount(); ++j)
            if (QTreeWidgetItem* item = m_rows.topLevelItem(i)->child(j);
                item->data(0, kIndexRole).toInt() == static_cast<int>(index))
                return m_rows.setCurrentItem(item);
    onSelected();
}

void KorDSMDialogDimensionSettings::onSelected() {
    const auto index = selected();
    const auto group = selectedGroup();
    const bool isList = group && KorDSMDimensionSettings::isList(*group);
    m_reset.setEnabled(m_isEditable && index && m_settings.canReset(*index));
    m_add.setEnabled(m_isEditable && isList);
    m_remove.setEnabled(m_isEditable && isList && index);
    control<QPushButton>(*this, 1).setEnabled(m_isEditable);
    say({});
}

void KorDSMDialogDimensionSettings::add() {
    const auto group = selectedGroup();
    bool isTyped = false;
    const QString text = QInputDialog::getText(
        this, toQt(Prompts::dsm(kAddTitle)), toQt(Prompts::dsm(kAddLabel)), QLineEdit::Normal, {}, &isTyped);
    if (!group || !isTyped || text.trimmed().isEmpty())
        return;
    if (const Result<> added = m_settings.add(*group, fromQt(text)); !added)
        return say(text + QStringLiteral(": ") + QString::fromStdString(added.error));
    fill();
    std::size_t last = 0;
    for (std::size_t i = 0; i < m_settings.settings().size(); ++i)
        if (m_settings.settings()[i].group == *group)
            last = i;
    selectSetting(last);
}

void KorDSMDialogDimensionSettings::accept() {
    if (m_settings.isChanged()) {
        if (const Result<> stored = m_settings.store(); !stored) {
            QMessageBox::warning(this, windowTitle(), QString::fromStdString(stored.error));
            return;
        }
        m_isStored = true;
    }
    KorDSMDialog::accept();
}

void KorDSMDialogDimensionSettings::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1)
        CKorHelp::showTopic("_KorDSMDialogDimensionSettings");
    else
        KorDSMDialog::keyPressEvent(event);
}
