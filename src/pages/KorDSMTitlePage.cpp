#include "pages/KorDSMTitlePage.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorQt.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "pages/LabelField.h"
#include "records/TableSchema.h"
#include "services/Prompts.h"

#include <QRadioButton>

#include <algorithm>

namespace {
constexpr int kDesigner = 1012;
}

KorDSMTitlePage::KorDSMTitlePage(QWidget* parent, const TitlePageTable& table)
    : KorDSMPage(parent, table.templateId, {}), m_table(table) {
    setTitle(Prompts::ups(table.title));
    m_pageCode = table.pageCode;
}

bool KorDSMTitlePage::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    m_designer = KorControls::find<VELLabelDesignerCtrlWrap>(this, kDesigner);
    m_picture = KorControls::find<KorInfoCtrl>(this, m_table.picture);
    if (!KorAssert::check(m_designer != nullptr, "bRes"))
        return false;
    if (m_picture) {
        m_picture->setFitToContent(true);
        m_picture->setFrame(true);
    }
    setCaption(m_table.positionFrame, 33656);
    setCaption(m_table.formatFrame, 33657);
    std::vector<int> radios;
    for (const TitlePosition& position : m_table.positions) {
        radios.push_back(position.radio);
        KorFieldNote::prepare(KorControls::find(this, position.radio));
        setCaption(position.radio, position.prompt);
        if (m_table.positionTooltip)
            addTooltip(position.radio, m_table.positionTooltip);
        connect(KorControls::find<QRadioButton>(this, position.radio), &QRadioButton::clicked, this,
                [this, radio = position.radio] { onPositionClicked(radio); });
    }
    KorControls::group(this, radios);
    if (m_table.designerTooltip)
        addTooltip(kDesigner, m_table.designerTooltip);
    m_title = new LabelField(*this, *m_designer, m_table.formatColumn, m_table.objectType);
    connect(m_designer, &VELLabelDesignerCtrlWrap::tooltipRequested, this, &KorDSMTitlePage::answerTooltip,
            Qt::DirectConnection);
    return true;
}

void KorDSMTitlePage::OnShow(int show) {
    KorDSMPage::OnShow(show);
    if (m_title)
        m_title->forgetEdits();
}

bool KorDSMTitlePage::loadData() {
    if (!item() || !m_title)
        return false;
    m_title->load();
    const CellValue value = stored(m_table.positionColumn);
    const TitlePosition& position =
        positionOf(static_cast<int>(std::get<std::int64_t>(value)), &TitlePosition::value);
    KorAssert::check(value == CellValue(std::int64_t{position.value}), "0");
    KorControls::find<QRadioButton>(this, position.radio)->setChecked(true);
    showPicture(position);
    return true;
}

void KorDSMTitlePage::enableControls() {
    KorDSMPage::enableControls();
    if (m_title)
        m_title->enable();
}

void KorDSMTitlePage::storePendingChanges(bool discard) {
    if (m_title)
        m_title->store(discard);
}

std::vector<ShownColumns> KorDSMTitlePage::shownColumns() const {
    return shownWith({m_table.positionColumn});
}

std::vector<KorDSMPage::OwnField> KorDSMTitlePage::ownFields() const {
    std::vector<OwnField> fields;
    if (!item() || !item()->record())
        return fields;
    const RowRef row{item()->tableType(), item()->recordKey()};
    for (const TitlePosition& position : m_table.positions) {
        const OwnField field{position.radio, row, m_table.positionColumn};
        const bool isChecked = KorControls::find<QRadioButton>(this, position.radio)->isChecked();
        fields.insert(isChecked ? fields.begin() : fields.end(), field); // the one that gets the focus
    }
    return fields;
}

const TitlePosition& KorDSMTitlePage::positionOf(int number, int TitlePosition::*member) const {
    const auto it = std::ranges::find(m_table.positions, number, member);
    return it == m_table.positions.end() ? m_table.positions[static_cast<std::size_t>(m_table.fallback)]
                                         : *it;
}

CellValue KorDSMTitlePage::stored(int column) const {
    return findTable(item()->tableType())->column(column)->read(item()->record());
}

void KorDSMTitlePage::showPicture(const TitlePosition& position) {
    if (m_picture)
        m_picture->setInfo({}, position.picture);
}

void KorDSMTitlePage::onPositionClicked(int radioId) {
    if (!item())
        return;
    const TitlePosition& position = positionOf(radioId, &TitlePosition::radio);
    writeFrom(KorControls::find(this, radioId), m_table.positionColumn, std::int64_t{position.value});
    showPicture(position);
}

void KorDSMTitlePage::answerTooltip(VELTooltipRequest& request) const {
    const QRect window(m_designer->mapToGlobal(QPoint()), m_designer->size());
    if (!window.contains(request.mousePoint))
        return;
    request.toolRect = window;
    request.toolOwner = m_designer;
    request.text = toQt(getTooltip(kDesigner));
}
