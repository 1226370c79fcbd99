#include "pages/KorDSMPageCompassPosition.h"

#include "services/Prompts.h"

namespace {

constexpr int kColumnOverviews = 13;
constexpr std::pair<int, int> kCaptions[] = {
    {1279, 33971}, {1275, 33967}, {1277, 33968}, {1276, 33969}, {1278, 33970},
};

CompassChoice::Shown shownFor(int code) {
    return {(code - 1) % 4 + 1, (code - 1) / 4};
}

} // namespace

KorDSMPageCompassPosition::KorDSMPageCompassPosition(QWidget* parent)
    : KorDSMPage(parent, 2020, {}),
      m_fields(*this, {{.column = kColumnOverviews, .radios = {{1275, 0}, {1276, 1}, {1277, 2}, {1278, 3}}}}),
      m_compass(*this, shownFor) {
    setTitle(Prompts::ups(33972));
    m_pageCode = 31;
}

bool KorDSMPageCompassPosition::OnInitDialog() {
    KorDSMPage::OnInitDialog();
    for (const auto& [control, prompt] : kCaptions)
        setCaption(control, prompt);
    m_compass.connectControls();
    m_fields.connectControls();
    return true;
}

bool KorDSMPageCompassPosition::loadData() {
    if (!item())
        return false;
    m_compass.load();
    m_fields.load();
    return true;
}

std::vector<ShownColumns> KorDSMPageCompassPosition::shownColumns() const {
    return shownWith({CompassChoice::kColumn});
}

void KorDSMPageCompassPosition::enableControls() {
    KorDSMPage::enableControls();
    m_compass.enableChoices();
}

std::vector<KorDSMPage::OwnField> KorDSMPageCompassPosition::ownFields() const {
    std::vector<OwnField> fields;
    for (const int control : CompassChoice::controls())
        fields.push_back({control, {item()->tableType(), item()->recordKey()}, CompassChoice::kColumn});
    return fields;
}
