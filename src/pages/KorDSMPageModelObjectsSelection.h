#pragma once

#include "pages/KorDSMPage.h"

#include <QRadioButton>

#include <array>

class FormBody;

/// Which model objects a drawing made with a detail style selects: one button per selection strategy, and
/// what the chosen one says.
class KorDSMPageModelObjectsSelection : public KorDSMPage {
    Q_OBJECT

public:
    explicit KorDSMPageModelObjectsSelection(QWidget* parent);

    bool OnInitDialog() override;
    bool fillLists() override;
    bool loadData() override;
    void enableControls() override;
    std::vector<ShownColumns> shownColumns() const override;

protected:
    std::vector<OwnField> ownFields() const override;

private:
    static constexpr std::size_t kButtons = 11;

    void onButtonClicked(std::size_t index);

    std::array<QRadioButton*, kButtons> m_buttons{};
    FormBody* m_form = nullptr;
    KorArray<KorString> m_names; // of the buttons; a caption shows its ampersands otherwise
};
