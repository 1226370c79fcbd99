#include "pages/KorDSMPageDetailStylesProperties.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorQt.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "model/items/KorDsmItems.h"
#include "pages/LabelDesignerSetup.h"
#include "services/Prompts.h"

#include <QRadioButton>

#include <algorithm>

namespace {

constexpr int kDesigner = 1012;
constexpr int kPicture = 1013;
constexpr int kPositionFrame = 1157;
constexpr int kFormatFrame = 1158;
constexpr int kColumnTitleFormat = 5;
constexpr int kColumnTitlePosition = 6;
constexpr int kDetailTitleObject = 17; // what the designer offers variables for

struct Position {
    int value;
    int radio;
    int prompt;
    int picture;
};

constexpr Position kPositions[] = {
    {0, 1040, 33933, 1106}, {1, 1036, 33663, 1083}, {2, 1034, 33662, 1085}, {3, 1033, 33661, 1084},
    {4, 1035, 33929, 1102}, {5, 1037, 33930, 1105}, {6, 1038, 33931, 1103}, {7, 1039, 33932, 1104},
};
constexpr const Position& kFallback = kPositions[3]; // above main view

const Position& positionOf(int number, int Position::*member) {
    const auto* it = std::ranges::find(kPositions, number, member);
    return it == std::end(kPositions) ? kFallback : *it;
}

const StructDetailStyle& styleOf(const KorDSMDatabaseItem& item) {
    return static_cast<const StructDetailStyle&>(*item.record());
}

} // namespace

KorDSMPageDetailStylesProperties::KorDSMPageDetailStylesProperties(QWidget* parent)
    : KorDSMPage(parent, 2002, {}) {
    setTitle(Prompts::getPrompt("UPS", 33655));
    m_pageCode = KorDSMDefines::kDetailStyle;
}

bool KorDSMPageDetailStylesProperties::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    m_designer = KorControls::find<VELLabelDesignerCtrlWrap>(this, kDesigner);
    m_picture = KorControls::find<KorInfoCtrl>(this, kPicture);
    if (!KorAssert::check(m_designer && m_picture, "bRes"))
        return false;
    setCaption(kPositionFrame, 33656);
    setCaption(kFormatFrame, 33657);
    for (const Position& position : kPositions) {
        setCaption(position.radio, position.prompt);
        addTooltip(position.radio, 33825);
        connect(KorControls::find<QRadioButton>(this, position.radio), &QRadioButton::clicked, this,
                [this, radio = position.radio] { onTitlePositionClicked(radio); });
    }
    addTooltip(kDesigner, 33826);
    LabelDesignerSetup::apply(*m_designer, kDetailTitleObject);
    connect(m_designer, &VELLabelDesignerCtrlWrap::changed, this, [this] {
        m_titleEdited = true;
        notifyModified();
    });
    return true;
}

void KorDSMPageDetailStylesProperties::OnShow(int show) {
    KorDSMPage::OnShow(show);
    m_titleEdited = false;
}

bool KorDSMPageDetailStylesProperties::loadData() {
    if (!item() || !m_designer)
        return false;
    const StructDetailStyle& style = styleOf(*item());
    LabelDesignerSetup::applySource(*m_designer);
    m_designer->SetString(style.getTitleFormat());
    const Position& position = positionOf(static_cast<int>(style.getTitlePosition()), &Position::value);
    KorAssert::check(position.value == style.getTitlePosition(), "0");
    KorControls::find<QRadioButton>(this, position.radio)->setChecked(true);
    m_picture->setInfo({}, position.picture);
    return true;
}

void KorDSMPageDetailStylesProperties::enableControls() {
    KorDSMPage::enableControls();
    if (!m_designer)
        return;
    // The designer shows itself read-only, so that its text can still be read and copied.
    m_designer->setEnabled(true);
    m_designer->Enable(isEditable());
}

void KorDSMPageDetailStylesProperties::onTitlePositionClicked(int radioId) {
    if (!item())
        return;
    const Position& position = positionOf(radioId, &Position::radio);
    if (position.value != styleOf(*item()).getTitlePosition())
        writeField(kColumnTitlePosition, std::int64_t{position.value});
    m_picture->setInfo({}, position.picture);
}

void KorDSMPageDetailStylesProperties::storePendingChanges(bool discard) {
    if (discard || !m_titleEdited || !item())
        return;
    m_titleEdited = false;
    const KorString text = m_designer->GetString();
    if (text != styleOf(*item()).getTitleFormat())
        writeField(kColumnTitleFormat, text);
}
