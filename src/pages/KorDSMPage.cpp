#include "pages/KorDSMPage.h"

#include "base/EditorSession.h"
#include "base/KorAssert.h"
#include "controls/KorButtonGroup.h"
#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorLineEdit.h"
#include "controls/KorMnemonics.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "model/CurrentUnits.h"
#include "operations/CurrentRows.h"
#include "pages/PageHead.h"
#include "pages/PagePart.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMTwins.h"
#include "session/KorDSMUndo.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace {

struct CurrentPage {
    KorDSMPage* page = nullptr;
};

KorDSMPage*& current() {
    return EditorSession::currentPart<CurrentPage>().page;
}

constexpr int kFirstTemplate = 1086;
constexpr int kLastTemplate = 2321;
constexpr int kNotStored = 454;
constexpr int kNameColumn = 1;

/// Presses a button of the page by the key of renaming that the focused control of the page leaves, before
/// the window has it.
class PageRenameKey : public QObject {
public:
    PageRenameKey(QWidget& page, QAbstractButton& button) : QObject(&page), m_button(button) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isAsked = event->type() == QEvent::ShortcutOverride;
        if ((!isAsked && event->type() != QEvent::KeyPress) || !m_button.isEnabled() ||
            static_cast<QKeyEvent*>(event)->keyCombination() != QKeyCombination(Qt::Key_F2))
            return QObject::eventFilter(watched, event);
        event->accept();
        if (!isAsked)
            m_button.click();
        return true;
    }

private:
    QAbstractButton& m_button;
};

} // namespace

KorDSMPage::KorDSMPage(QWidget* parent, int templateId, const KorString& title)
    : KorTabPage(parent, templateId, title), m_head(new PageHead(this)) {
    connect(m_head, &PageHead::typing, this, [this] {
        updateMark();
        notifyTyping();
    });
    KorAssert::check(templateId >= kFirstTemplate && templateId <= kLastTemplate,
                     "page templates are numbered 1086 to 2321");
}

KorDSMPage::~KorDSMPage() {
    if (current() == this)
        current() = nullptr;
}

KorDSMPage* KorDSMPage::currentPage() {
    return current();
}

void KorDSMPage::addLinkedPage(KorDSMPage* page) {
    if (page)
        m_linkedPages.push_back(page);
}

void KorDSMPage::OnActivate(int active) {
    current() = active ? this : nullptr;
    KorTabPage::OnActivate(active);
}

void KorDSMPage::OnShow(int show) {
    KorTabPage::OnShow(show);
    if (show && getData()) {
        current() = this;
        enableControls();
        const SourceId here = CurrentRows::source();
        if (m_needsInit || m_listsFrom != here) {
            m_listsFrom = here;
            fillLists();
        } else if (m_needsRefresh) {
            refreshLists();
            m_needsRefresh = false;
        }
        KorFieldNote::clear(this);
        loadHead();
        reload();
        m_needsInit = false;
        return;
    }
    if (current() == this && getData()) {
        finishEditing();
        updateMark();
        current() = nullptr;
    }
}

void KorDSMPage::reload() {
    loadData();
    afterLoad();
    KorControls::nameByLabels(this);
    KorMnemonics::give(*this);
}

void KorDSMPage::loadHead() {
    if (auto* lines = qobject_cast<QBoxLayout*>(layout()); lines && lines->indexOf(m_head) < 0)
        lines->insertWidget(0, m_head);
    m_head->load(item(), isEditable(), leadsElsewhere());
}

std::vector<PagePart*> KorDSMPage::parts() const {
    const auto found = findChildren<PagePart*>(QString(), Qt::FindDirectChildrenOnly);
    return {found.begin(), found.end()};
}

std::vector<ShownColumns> KorDSMPage::shownColumns() const {
    std::vector<ShownColumns> shown;
    for (const PagePart* part : parts())
        if (ShownColumns columns = part->shownColumns(); CurrentRows::find(columns.table, columns.key))
            shown.push_back(std::move(columns));
    return shown;
}

std::vector<ShownColumns> KorDSMPage::shownWith(std::vector<int> columns) const {
    std::vector<ShownColumns> shown = KorDSMPage::shownColumns();
    shown.push_back({item()->tableType(), KorOdbcKey(item()->recordKey()), std::move(columns)});
    return shown;
}

std::vector<FieldPlaces*> KorDSMPage::places() const {
    const std::vector<PagePart*> own = parts();
    std::vector<FieldPlaces*> all(own.begin(), own.end());
    for (QWidget* control : findChildren<QWidget*>())
        if (auto* shown = dynamic_cast<FieldPlaces*>(control))
            all.push_back(shown);
    return all;
}

std::optional<FieldPlace> KorDSMPage::fieldAt(const QWidget& control) const {
    if (!item() || !item()->record())
        return std::nullopt;
    const std::vector<FieldPlaces*> all = places();
    const std::vector<OwnField> own = ownFields();
    for (const QWidget* each = &control; each && each != this; each = each->parentWidget()) {
        if (each == m_head)
            return FieldPlace{{item()->tableType(), item()->recordKey()}, kNameColumn};
        for (const FieldPlaces* shown : all)
            if (auto place = shown->placeOf(*each))
                return place;
        const int id = KorControls::id(each);
        if (const auto field = std::ranges::find(own, id, &OwnField::control); id != 0 && field != own.end())
            return FieldPlace{field->row, field->column};
    }
    return std::nullopt;
}

bool KorDSMPage::focusField(RowRef row, int column) {
    QWidget* control = nullptr;
    for (FieldPlaces* shown : places())
        if (!control)
            control = shown->bringUp(row, column);
    for (const OwnField& field : ownFields())
        if (!control && field.row == row && field.column == column)
            control = KorControls::find(this, field.control);
    if (!control)
        return false;
    control->setFocus(Qt::OtherFocusReason);
    // A page that comes up only now has its places when all else is done.
    QTimer::singleShot(0, control, [control] {
        for (QWidget* each = control; each; each = each->parentWidget())
            if (auto* area = qobject_cast<QScrollArea*>(each))
                area->ensureWidgetVisible(control);
    });
    return true;
}

void KorDSMPage::updateMark() {
    // The name stands above each page.
    const auto isNamePending = [this] {
        return ShownColumns{item()->tableType(), KorOdbcKey(item()->recordKey()), {kNameColumn}}.isPending();
    };
    setModified(item() && item()->record() &&
                (m_head->isEdited() || isNamePending() || hasEditedParts() ||
                 std::ranges::any_of(shownColumns(), &ShownColumns::isPending)));
}

void KorDSMPage::finishEditing() {
    KorControls::commitEdits(this);
    storePendingChanges(false);
}

bool KorDSMPage::hasEditedParts() const {
    return std::ranges::any_of(parts(), &PagePart::isEdited);
}

void KorDSMPage::showColleagues() {
    m_head->showColleagues();
}

void KorDSMPage::dropEdits() {
    KorControls::dropEdits(this);
    storePendingChanges(true);
}

void KorDSMPage::storePendingChanges(bool) {}

KorString KorDSMPage::helpTopic() const {
    return KorString::format("_%s", {KorString(metaObject()->className())});
}

bool KorDSMPage::PreTranslateMessage(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier)
        return CKorHelp::showTopic(helpTopic());
    return event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier && onDeleteKey();
}

void KorDSMPage::enableControls() {
    const bool editable = isEditable();
    for (QWidget* control : KorControls::all(this)) {
        // A disabled frame would hold everything inside down for good, and what explains stays as it is.
        if (!qobject_cast<QGroupBox*>(control) && !qobject_cast<QLabel*>(control) &&
            !qobject_cast<KorInfoCtrl*>(control))
            KorControls::setEditable(control, editable);
    }
}

void KorDSMPage::enableControl(int controlId, bool enable) {
    QWidget* control = KorControls::find(this, controlId);
    if (!control || (enable && !isEditable()))
        return;
    if (auto* strip = qobject_cast<KorButtonGroup*>(control))
        strip->enableWindow(enable);
    else
        control->setEnabled(enable);
}

void KorDSMPage::notifyModified() {
    KorDSMMainWindow::sendMessage(DsmSetModified());
}

void KorDSMPage::notifyTyping() {
    const auto fields = findChildren<KorLineEdit*>();
    DsmSetModified message;
    message.modified =
        KorDSMUndo::isPending() || std::ranges::any_of(fields, &KorLineEdit::isEdited) || hasEditedParts();
    KorDSMMainWindow::sendMessage(message);
}

void KorDSMPage::setOtherPagesModified(bool modified) {
    DsmMarkOtherPages message;
    message.modified = modified;
    KorDSMMainWindow::sendMessage(message);
}

WriteResult KorDSMPage::writeField(int column, const CellValue& value) {
    KorDSMDatabaseItem* shown = item();
    if (!shown || !shown->record())
        return {WriteResult::kFailed};
    // What was typed before counts before.
    storePendingChanges(false);
    // What is stored already is no change, and nobody is asked about it.
    const eTableType type = shown->tableType();
    const KorOdbcKey key(shown->recordKey());
    const Column* written = findTable(type)->column(column);
    const StructRecord* stored = CurrentRows::find(type, key);
    if (written && stored && written->read(stored) == value)
        return {WriteResult::kUnchanged};
    WriteResult result = KorDSMGuardedWrite::setAttributeValue(type, key, column, value);
    if (result.isStored()) {
        KorDSMTwins::recordWritten(*shown);
        m_head->refresh(); // it may lack less now
    }
    return result;
}

void KorDSMPage::markStored(QWidget* control, bool stored) {
    const auto* button = qobject_cast<QAbstractButton*>(control);
    if (button && button->group())
        for (QAbstractButton* other : button->group()->buttons())
            KorFieldNote::show(other, {});
    KorFieldNote::show(control, stored ? QString() : toQt(Prompts::dsm(kNotStored)));
}

bool KorDSMPage::writeFrom(QWidget* control, int column, const CellValue& value) {
    const bool stored = writeField(column, value).isStored();
    markStored(control, stored);
    return stored;
}

void KorDSMPage::addTooltip(int controlId, int promptNumber) {
    if (QWidget* control = KorControls::find(this, controlId))
        control->setToolTip(toQt(Prompts::ups(promptNumber)));
}

KorString KorDSMPage::getTooltip(int controlId) const {
    const QWidget* control = KorControls::find(this, controlId);
    return control ? fromQt(control->toolTip()) : KorString();
}

void KorDSMPage::setCaption(int controlId, int promptNumber) {
    const QString text = toQt(Prompts::ups(promptNumber));
    QWidget* control = KorControls::find(this, controlId);
    if (auto* box = qobject_cast<QGroupBox*>(control))
        box->setTitle(text);
    else if (auto* button = qobject_cast<QAbstractButton*>(control))
        button->setText(text);
    else if (auto* label = qobject_cast<QLabel*>(control))
        label->setText(text);
}

void KorDSMPage::setButton(int controlId, int bitmap, int disabledBitmap, int tooltipPrompt) {
    auto* button = KorControls::find<QAbstractButton>(this, controlId);
    if (!button)
        return;
    button->setIcon(KorPictures::buttonBitmap(bitmap, 0, disabledBitmap));
    addTooltip(controlId, tooltipPrompt);
    button->setAccessibleName(button->toolTip());
}

void KorDSMPage::setRenameKey(int controlId) {
    if (auto* button = KorControls::find<QAbstractButton>(this, controlId))
        installEventFilter(new PageRenameKey(*this, *button));
}

void KorDSMPage::notifyLinkedPages(const KorString& name, int what, int index) {
    DsmListChanged message;
    message.senderPageCode = m_pageCode;
    message.action = what;
    message.name = name;
    for (int i = 0; i < static_cast<int>(m_linkedPages.size()); ++i)
        if (index == -1 || index == i)
            m_linkedPages[static_cast<std::size_t>(i)]->onMessage(message);
}

std::optional<double> KorDSMPage::parseValue(const KorString& text, int unitKind) {
    return getUnitsOfCurrentDatabase().parse(text, unitKind);
}

KorString KorDSMPage::formatValue(double value, int unitKind) {
    return getUnitsOfCurrentDatabase().format(value, unitKind);
}

void KorDSMPage::reformatField(int controlId) {
    auto* field = KorControls::find<QLineEdit>(this, controlId);
    if (!field)
        return;
    if (const auto value = parseValue(fromQt(field->text()), KorUnitsManager::kLength))
        field->setText(toQt(formatValue(*value, KorUnitsManager::kLength)));
}

std::vector<int> KorDSMPage::columnWidths(int width, const std::vector<int>& percentages) {
    constexpr int kNear = 20;
    std::vector<int> widths;
    int before = 0;
    for (const int percent : percentages) {
        int share = static_cast<int>(std::lround(percent / 100.0 * width));
        const int sum = before + share;
        if (sum > width - kNear && sum < width + kNear)
            share = std::abs(width - before);
        widths.push_back(share);
        before += share;
    }
    return widths;
}
