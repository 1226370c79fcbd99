#include "pages/KorDSMPageStyleViews.h"

#include "operations/CurrentRows.h"
#include "pages/PartListEditor.h"
#include "services/Prompts.h"

#include <QBoxLayout>

namespace {

constexpr int kTemplate = 2025;
constexpr int kTitle = 772;

} // namespace

KorDSMPageStyleViews::KorDSMPageStyleViews(QWidget* parent) : KorDSMPage(parent, kTemplate, {}) {
    setTitle(Prompts::dsm(kTitle));
}

bool KorDSMPageStyleViews::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    m_views = new PartListEditor(*this, kTableDetailStyle);
    auto* lines = static_cast<QBoxLayout*>(layout());
    lines->insertWidget(lines->count() - 1, m_views);
    lines->setStretch(lines->count() - 1, 1);
    return true;
}

bool KorDSMPageStyleViews::loadData() {
    const bool exists =
        item() && item()->record() && CurrentRows::find(kTableDetailStyle, KorOdbcKey(item()->recordKey()));
    m_views->setVisible(exists);
    if (!exists)
        return false;
    m_views->load({kTableDetailStyle, item()->recordKey()});
    return true;
}

void KorDSMPageStyleViews::enableControls() {
    KorDSMPage::enableControls();
    m_views->enable();
}

std::vector<ShownColumns> KorDSMPageStyleViews::shownColumns() const {
    std::vector<int> slots;
    for (const Column& column : findTable(kTableDetailStyle)->columns)
        if (column.isSlot())
            slots.push_back(column.number);
    return shownWith(std::move(slots));
}
