#include "pages/KorDSMPageModelObjectsSelection.h"

#include "base/KorAssert.h"
#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorFoldingColumns.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "pages/FormBody.h"
#include "records/OwnWords.h"
#include "services/Prompts.h"

#include <QBoxLayout>

#include <numeric>

namespace {

constexpr int kFirstButton = 2310;
constexpr int kButtonTooltip = 33833;
constexpr int kInfo = 1110;
constexpr int kInfoText = 33668;
constexpr int kInfoPicture = 1020;
constexpr int kColumnStrategy = 4;

constexpr int kFirstField = 6000;

const std::vector<FormGroup> kGroups = {
    {.fields = {{.column = 4},
                {.column = 2, .via = {4}},
                {.column = 3, .via = {4}},
                {.column = 4, .via = {4}},
                {.column = 5, .via = {4}}},
     .named = kTableSelectionStrategy},
};

constexpr std::pair<int, int> kFrames[] = {{1159, 33666}, {1160, 33667}};
constexpr std::pair<int, int> kHeadings[] = {{1241, 33898}, {1242, 33899}, {1243, 33900}};
constexpr int kHeadingPoints = 9;

} // namespace

KorDSMPageModelObjectsSelection::KorDSMPageModelObjectsSelection(QWidget* parent)
    : KorDSMPage(parent, 2003, {}) {
    setTitle(Prompts::ups(33665));
    m_pageCode = 6;
}

bool KorDSMPageModelObjectsSelection::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    for (const auto& [frame, prompt] : kFrames)
        setCaption(frame, prompt);
    for (const auto& [heading, prompt] : kHeadings) {
        setCaption(heading, prompt);
        QWidget* label = KorControls::find(this, heading);
        QFont font = label->font();
        font.setPointSize(kHeadingPoints);
        font.setWeight(QFont::Bold);
        label->setFont(font);
    }
    KorControls::find<KorInfoCtrl>(this, kInfo)->setInfo(Prompts::ups(kInfoText), kInfoPicture);
    for (std::size_t i = 0; i < kButtons; ++i) {
        const int control = kFirstButton + static_cast<int>(i);
        m_buttons[i] = KorControls::find<QRadioButton>(this, control);
        if (!KorAssert::check(m_buttons[i] != nullptr, "the template has a button for each choice"))
            return false;
        KorFieldNote::prepare(m_buttons[i]);
        addTooltip(control, kButtonTooltip);
        connect(m_buttons[i], &QRadioButton::clicked, this, [this, i] { onButtonClicked(i); });
    }
    std::vector<int> radios(kButtons);
    std::iota(radios.begin(), radios.end(), kFirstButton);
    KorControls::group(this, radios);
    m_form = new FormBody(*this, kGroups, kTableDetailStyle, kFirstField);
    // Beside the buttons.
    QWidget* buttons = KorControls::find(this, kFrames[0].first);
    auto* line = new KorFoldingColumns;
    static_cast<QBoxLayout*>(layout())->insertLayout(0, line);
    line->addWidget(buttons, 1);
    line->addWidget(m_form, 1);
    m_form->takeWholeWidth();
    m_form->connectControls();
    connect(m_form, &FormBody::written, this, &KorDSMPageModelObjectsSelection::loadData);
    return true;
}

bool KorDSMPageModelObjectsSelection::fillLists() {
    m_names.clear();
    KorOdbcGUI::getDetObjSelectionStrategyList(m_names);
    for (std::size_t i = 0; i < kButtons; ++i) {
        const bool used = static_cast<int>(i) < m_names.length();
        m_buttons[i]->setVisible(used);
        if (used)
            m_buttons[i]->setText(KorMnemonics::literal(
                toQt(OwnWords::nameOf(kTableSelectionStrategy, m_names[static_cast<int>(i)]))));
    }
    m_form->fillLists();
    return true;
}

bool KorDSMPageModelObjectsSelection::loadData() {
    if (!item())
        return false;
    const auto& style = static_cast<const StructDetailStyle&>(*item()->record());
    StructDetObjSelectionStrategy strategy;
    const bool found = KorODBCDetStyle::getDetObjSelectionStrategy(
                           KorOdbcKey(style.getObjectSelectionStrategy()), strategy) == 1;
    // Names need not be unique; the first button of the name stands for it.
    const int shown = found ? m_names.find(strategy.name) : -1;
    for (std::size_t i = 0; i < kButtons; ++i)
        KorControls::setChecked(m_buttons[i], static_cast<int>(i) == shown);
    m_form->load();
    return true;
}

void KorDSMPageModelObjectsSelection::enableControls() {
    KorDSMPage::enableControls();
    m_form->enable();
}

std::vector<ShownColumns> KorDSMPageModelObjectsSelection::shownColumns() const {
    return shownWith({kColumnStrategy});
}

std::vector<KorDSMPage::OwnField> KorDSMPageModelObjectsSelection::ownFields() const {
    std::vector<OwnField> fields;
    for (std::size_t i = 0; i < kButtons; ++i)
        fields.push_back({kFirstButton + static_cast<int>(i),
                          {item()->tableType(), item()->recordKey()},
                          kColumnStrategy});
    return fields;
}

void KorDSMPageModelObjectsSelection::onButtonClicked(std::size_t index) {
    StructDetObjSelectionStrategy strategy;
    if (item() && KorOdbcGUI::getDetObjSelectionStrategy(m_names[static_cast<int>(index)], strategy) == 1)
        writeFrom(m_buttons[index], kColumnStrategy, std::int64_t{strategy.key});
    m_form->load();
}
