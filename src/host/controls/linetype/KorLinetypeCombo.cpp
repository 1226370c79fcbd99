#include "controls/linetype/KorLinetypeCombo.h"

#include "controls/KorQt.h"
#include "controls/linetype/HostLinetypes.h"
#include "controls/linetype/LinetypeDelegate.h"
#include "controls/linetype/LinetypeModel.h"
#include "controls/linetype/LinetypePainter.h"

#include <QListView>
#include <QStylePainter>

namespace {

LinetypeDefinitionPtr define(const KorString& name, const KorString& pattern) {
    auto definition = std::make_shared<LinetypeDefinition>();
    definition->name = name;
    definition->pattern = LinetypePatterns::parse(pattern.view()).value_or(LinetypePattern());
    return definition;
}

} // namespace

KorLinetypeCombo::KorLinetypeCombo(QWidget* parent) : KorComboBox(parent), m_model(new LinetypeModel(this)) {
    auto* list = new QListView(this);
    list->setUniformItemSizes(true);
    setView(list);
    setModel(m_model);
    setItemDelegate(new LinetypeDelegate(this));
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT chosen(selectedName()); });
}

void KorLinetypeCombo::RemoveAll() {
    m_model->removeAll();
}

void KorLinetypeCombo::SetSupportPath(const KorString& folder) {
    m_model->setSupportPath(folder);
}

void KorLinetypeCombo::SetLinetypeFile(const KorString& name) {
    m_model->setFile(name);
}

int KorLinetypeCombo::LoadLinetype(const KorString& name) {
    return m_model->load(name);
}

void KorLinetypeCombo::DefineLinetype(const KorString& name, const KorString& pattern) {
    m_model->add(define(name, pattern));
}

bool KorLinetypeCombo::SelectItem(const KorString& name) {
    const int row = m_model->rowOf(name);
    setCurrentIndex(row);
    return row >= 0;
}

int KorLinetypeCombo::getLineTypeByName(const KorString& name) const {
    return m_model->lineTypeId(m_model->rowOf(name));
}

void KorLinetypeCombo::setDefaultProperties() {
    constexpr int kRows = 20;
    setMaxVisibleItems(kRows);
    constexpr int kWidthInLetters = 44;
    view()->setMinimumWidth(fontMetrics().averageCharWidth() * kWidthInLetters);
}

void KorLinetypeCombo::initializeList() {
    for (const HostLinetype& linetype : HostLinetypes::kAll)
        m_model->add(define(linetype.name, linetype.pattern), linetype.id);
}

bool KorLinetypeCombo::contains(const KorString& name) const {
    return m_model->rowOf(name) >= 0;
}

KorString KorLinetypeCombo::selectedName() const {
    const LinetypeDefinition* chosenOne = m_model->definition(currentIndex());
    return chosenOne ? chosenOne->name : KorString();
}

QVariant KorLinetypeCombo::pictureOf(int place) const {
    const LinetypeDefinition* linetype = m_model->definition(place);
    QPixmap picture(pictureSize() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setPen(palette().color(QPalette::Text));
    if (linetype)
        LinetypePainter::paintLine(painter, QRectF(QPoint(), pictureSize()), linetype->pattern);
    return picture;
}

void KorLinetypeCombo::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText.clear();
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const LinetypeDefinition* shown = m_model->definition(currentIndex());
    if (!shown)
        return;
    constexpr int kMargin = 2;
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    painter.setPen(palette().color(QPalette::ButtonText));
    LinetypePainter::paintEntry(painter, field.adjusted(kMargin, 0, -kMargin, 0), *shown);
}
