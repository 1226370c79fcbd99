#include "pages/KorDSMPageViewCategories.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMTwins.h"

#include <QGuiApplication>

#include <algorithm>

namespace {

constexpr int kList = 1011;
constexpr int kFrame = 1161;
constexpr int kInfo = 1111;
constexpr int kInfoPicture = 1020;
constexpr int kBoxWidth = 20;
constexpr int kNameWidth = 240; // at least

const StructDetViewRequest& requestOf(const KorDSMDatabaseItem& item) {
    return static_cast<const StructDetViewRequest&>(*item.record());
}

/// A wait cursor for as long as it lives.
struct WaitCursor {
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

} // namespace

KorDSMPageViewCategories::KorDSMPageViewCategories(QWidget* parent) : KorDSMPage(parent, 2006, {}) {
    setTitle(Prompts::ups(33670));
    m_pageCode = 19;
}

bool KorDSMPageViewCategories::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    m_list = KorControls::find<KorListCtrl>(this, kList);
    if (!KorAssert::check(m_list != nullptr, "the template has a list"))
        return false;
    setCaption(kFrame, 33671);
    addTooltip(kList, 33845);
    m_list->setAccessibleName(toQt(Prompts::ups(33671)));
    KorControls::find<KorInfoCtrl>(this, kInfo)->setInfo(Prompts::ups(33672), kInfoPicture);
    m_list->setHeaderHidden(true);
    m_list->setCheckBoxes(true);
    m_list->setGridLines(true);
    m_list->insertColumn(Prompts::ups(21951), kBoxWidth);
    m_list->insertColumn(Prompts::ups(21952), kNameWidth);
    connect(m_list, &KorListCtrl::checkToggled, this, &KorDSMPageViewCategories::onCheckToggled);
    return true;
}

bool KorDSMPageViewCategories::loadData() {
    if (!item())
        return false;
    KorArray<KorString> names;
    KorOdbcGUI::getDetBaseCategoryList(names);
    std::sort(names.begin(), names.end());
    std::vector<KorListRow> rows;
    for (const KorString& name : names) {
        StructDetBaseCategory category;
        if (KorOdbcGUI::getDetBaseCategory(name, category) != 1)
            continue;
        KorListRow row;
        row.texts = {{}, name};
        row.data = KorEntryData(category.key);
        row.checked = KorRequestObject::getSelected(category, requestOf(*item()));
        rows.push_back(row);
    }
    m_list->setItems(std::move(rows));
    m_list->resizeColumnToContents(1);
    m_list->setColumnWidth(1, std::max(m_list->columnWidth(1), kNameWidth));
    return true;
}

std::vector<ShownColumns> KorDSMPageViewCategories::shownColumns() const {
    return {{item()->tableType(), KorOdbcKey(item()->recordKey()), {}, {kTableViewRequestCategory}}};
}

void KorDSMPageViewCategories::onCheckToggled(int row) {
    StructDetBaseCategory category;
    if (!item() || KorOdbcGUI::getDetBaseCategory(KorOdbcKey(m_list->getItemData(row).key()), category) != 1)
        return;
    const WaitCursor wait;
    const bool select = !KorRequestObject::getSelected(category, requestOf(*item()));
    m_list->setChecked(row, select);
    // Where a view is offered changes no drawing, so nobody is asked even if several styles use it.
    if (!KorDSMGuardedWrite::announce(KorRequestObject::setSelected(select, category, requestOf(*item())))) {
        m_list->setChecked(row, !select);
        return;
    }
    KorDSMTwins::recordWritten(*item());
    setOtherPagesModified(true);
    DsmCategoriesChanged message;
    message.item = item();
    KorDSMMainWindow::sendMessage(message);
}
