#include "pages/PictureChoice.h"

#include "controls/KorControls.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorQt.h"
#include "pages/ValuePictures.h"
#include "session/KorDSMValueText.h"

#include <QBoxLayout>
#include <QRadioButton>

PictureChoice::PictureChoice(const TableSchema& table, const Column& column, int firstControl)
    : QGroupBox(toQt(KorDSMValueText::columnCaption(table, column))), m_table(table), m_column(column),
      m_picture(new KorInfoCtrl) {
    auto* line = new QHBoxLayout(this);
    auto* buttons = new QVBoxLayout;
    const std::vector<KorString> names = KorDSMValueText::valueNames(table, column);
    const std::vector<std::int32_t> values = KorDSMValueText::valuesOf(column);
    for (std::size_t i = 0; i < values.size(); ++i)
        buttons->addWidget(addRadio(names[i], firstControl + static_cast<int>(i), values[i]));
    buttons->addStretch(1);
    line->addLayout(buttons);
    line->addWidget(m_picture);
    line->addStretch(1);
    m_picture->setFrame(true);
    m_picture->setFitToContent(true);
    m_picture->setInfo({}, ValuePictures::explaining(table, column, values.front()));
}

QRadioButton* PictureChoice::addRadio(const KorString& name, int control, int value) {
    auto* radio = new QRadioButton(toQt(name));
    KorControls::setId(radio, control);
    m_radios.emplace_back(control, value);
    connect(radio, &QRadioButton::toggled, this, [this, value](bool on) {
        if (on)
            m_picture->setInfo({}, ValuePictures::explaining(m_table, m_column, value));
    });
    return radio;
}
