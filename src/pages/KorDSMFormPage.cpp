#include "pages/KorDSMFormPage.h"

#include "controls/KorMFCGridCtrl.h"
#include "operations/CurrentRows.h"
#include "pages/FormBody.h"
#include "pages/PageFields.h"
#include "pages/PartListEditor.h"
#include "services/Prompts.h"

#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kFirstField = 6000;

} // namespace

KorDSMFormPage::KorDSMFormPage(QWidget* parent, const FormTable& form)
    : KorDSMPage(parent, form.templateId, {}), m_form(form) {
    setTitle(Prompts::ups(form.title));
    m_pageCode = form.pageCode;
    // What is new or has another name elsewhere is offered here too.
    receive<DsmListChanged>([this](const DsmListChanged&) { requestInit(); });
}

bool KorDSMFormPage::OnInitDialog() {
    new QVBoxLayout(this);
    return KorDSMPage::OnInitDialog();
}

// Only when first shown: most pages are never looked at. Items of one type can hold records of two tables.
void KorDSMFormPage::build() {
    delete m_body;
    delete m_content;
    m_lists.clear();
    m_table = item()->tableType();
    m_content = new QWidget;
    auto* lines = new QVBoxLayout(m_content);
    lines->setContentsMargins(0, 0, 0, 0);
    m_body = new FormBody(*this, m_form.groups, m_table, kFirstField,
                          [this](eTableType parts) { return selectedPart(parts); });
    lines->addWidget(m_body);
    for (const eTableType parts : KorDSMPartList::listedParts(m_table)) {
        auto* list = new PartListEditor(*this, parts);
        m_lists.emplace_back(parts, list);
        m_body->addList(*list);
        if (std::ranges::find(m_form.groups, parts, &FormGroup::part) != m_form.groups.end())
            connect(list->findChild<KorMFCGridCtrl*>(), &KorMFCGridCtrl::itemSelectionChanged, m_body,
                    &FormBody::load);
    }
    layout()->addWidget(m_content);
    m_body->connectControls();
    m_content->show();
    requestInit();
}

bool KorDSMFormPage::isFor(eTableType table) const {
    return table == m_form.table ||
           (table != kNoTable &&
            std::ranges::find(m_form.groups, table, &FormGroup::of) != m_form.groups.end());
}

RowRef KorDSMFormPage::selectedPart(eTableType parts) const {
    for (const auto& [table, list] : m_lists)
        if (const KorDSMPartList::Keys selected = list->selected(); table == parts && selected.size() == 1)
            return {parts, selected.front()};
    return {parts, 0};
}

void KorDSMFormPage::OnShow(int show) {
    const eTableType table = item() && item()->record() ? item()->tableType() : kNoTable;
    if (show != 0 && m_table != table && isFor(table))
        build();
    KorDSMPage::OnShow(show);
    if (m_body)
        m_body->forgetEdits();
}

void KorDSMFormPage::enableControls() {
    KorDSMPage::enableControls();
    if (m_body)
        m_body->enable();
    for (const auto& [parts, list] : m_lists)
        list->enable();
}

void KorDSMFormPage::storePendingChanges(bool discard) {
    if (m_body)
        m_body->store(discard);
}

std::vector<ShownColumns> KorDSMFormPage::shownColumns() const {
    std::vector<ShownColumns> shown = KorDSMPage::shownColumns();
    if (item() && item()->record())
        shown.push_back(
            {item()->tableType(), KorOdbcKey(item()->recordKey()), {}, partTablesOf(item()->tableType())});
    return shown;
}

bool KorDSMFormPage::fillLists() {
    if (m_body)
        m_body->fillLists();
    return true;
}

bool KorDSMFormPage::loadData() {
    const bool exists = m_body && item()->tableType() == m_table &&
                        CurrentRows::find(m_table, KorOdbcKey(item()->recordKey()));
    if (m_content)
        m_content->setVisible(exists);
    if (!exists)
        return false;
    for (const auto& [parts, list] : m_lists)
        list->load({m_table, item()->recordKey()});
    m_body->load();
    return true;
}
