#include "controls/label/LabelToolBar.h"

#include "base/LabelVariables.h"
#include "controls/KorControls.h"
#include "controls/KorFoldingColumns.h"
#include "controls/KorQt.h"
#include "controls/label/DrawingColorMenu.h"
#include "controls/label/DrawingColors.h"
#include "controls/label/LabelCombo.h"

#include <QAction>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace {

// Inserts in front of the first item that is greater, and gives its row.
template <typename Less>
int insertSorted(QComboBox* combo, const QString& text, const QVariant& data, Less less) {
    int row = 0;
    while (row < combo->count() && !less(data, combo->itemData(row)))
        ++row;
    combo->insertItem(row, text, data);
    return row;
}

void describe(QPushButton* button, const QString& name, const QString& tip) {
    button->setAccessibleName(name);
    button->setToolTip(tip);
}

} // namespace

LabelToolBar::LabelToolBar(QWidget* parent)
    : QWidget(parent), m_fonts(new LabelCombo(this)), m_sizeCombo(new LabelCombo(this)),
      m_color(new QPushButton(this)), m_palette(new DrawingColorMenu(this)),
      m_bold(addToggle(QKeySequence::Bold)), m_italic(addToggle(QKeySequence::Italic)),
      m_underline(addToggle(QKeySequence::Underline)), m_insert(new QPushButton(this)),
      m_variables(new QMenu(this)) {
    m_color->setMenu(m_palette);
    m_insert->setMenu(m_variables);
    for (QPushButton* button : {m_color, m_insert}) {
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus);
    }
    QFont font;
    font.setBold(true);
    m_bold->setFont(font);
    font = QFont();
    font.setItalic(true);
    m_italic->setFont(font);
    font = QFont();
    font.setUnderline(true);
    m_underline->setFont(font);
    layOut();
    connectTools();
}

QAction* LabelToolBar::addToggle(const QKeySequence& shortcut) {
    auto* action = new QAction(this);
    action->setCheckable(true);
    action->setShortcut(shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return action;
}

void LabelToolBar::layOut() {
    auto* both = new KorFoldingColumns(this);
    both->setContentsMargins(0, 0, 0, 0);
    both->setSpacing(4);
    auto* type = new QHBoxLayout;
    auto* row = new QHBoxLayout;
    for (QHBoxLayout* part : {type, row}) {
        part->setSpacing(4);
        both->addLayout(part, 1);
    }
    m_sizeCombo->setMinimumContentsLength(6);
    m_sizeCombo->setMaximumWidth(fontMetrics().averageCharWidth() * 16);
    m_fonts->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    type->addWidget(m_fonts, 1);
    type->addWidget(m_sizeCombo);
    type->addStretch();
    row->addWidget(m_color);
    for (QAction* action : toggles()) {
        auto* button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setFocusPolicy(Qt::TabFocus);
        row->addWidget(button);
    }
    row->addWidget(m_insert);
    row->addStretch();
}

void LabelToolBar::connectTools() {
    connect(m_fonts, &QComboBox::activated, this,
            [this](int row) { Q_EMIT fontPicked(m_fonts->itemData(row).toString()); });
    connect(m_sizeCombo, &QComboBox::activated, this,
            [this](int row) { Q_EMIT sizePicked(m_sizeCombo->itemData(row).toDouble()); });
    for (const LabelCombo* combo : {m_fonts, m_sizeCombo})
        connect(combo, &LabelCombo::chosenInList, this, &LabelToolBar::done, Qt::QueuedConnection);
    connect(m_palette, &DrawingColorMenu::chosen, this, [this](int number) {
        Q_EMIT colorPicked(number);
        Q_EMIT done();
    });
    connect(m_bold, &QAction::triggered, this, &LabelToolBar::boldPicked);
    connect(m_italic, &QAction::triggered, this, &LabelToolBar::italicPicked);
    connect(m_underline, &QAction::triggered, this, &LabelToolBar::underlinePicked);
    connect(m_variables, &QMenu::triggered, this, [this](const QAction* action) {
        Q_EMIT variablePicked(action->data().toString());
        Q_EMIT done();
    });
}

void LabelToolBar::setTexts(const LabelDesignerTexts& texts) {
    m_texts = texts;
    KorControls::setName(m_fonts, texts.font);
    KorControls::setName(m_sizeCombo, texts.size);
    m_sizeCombo->setToolTip(texts.size);
    describe(m_insert, QString(texts.insertVariable).remove('&'), texts.insertVariableTip);
    m_insert->setText(texts.insertVariable);
    m_palette->setTexts(texts);
    keepColorWidth();
    const auto set = [](QAction* action, const QString& letter, const QString& name) {
        action->setText(name);
        action->setIconText(letter);
        action->setToolTip(
            QStringLiteral("%1 (%2)").arg(name, action->shortcut().toString(QKeySequence::NativeText)));
    };
    set(m_bold, texts.boldLetter, texts.bold);
    set(m_italic, texts.italicLetter, texts.italic);
    set(m_underline, texts.underlineLetter, texts.underline);
    for (QAction* action : toggles()) {
        for (QObject* button : action->associatedObjects()) {
            if (auto* tool = qobject_cast<QToolButton*>(button))
                tool->setAccessibleName(action->text());
        }
    }
    fillVariables();
    showStyle(m_style);
}

// Wide enough for every name, so that the row stands still while the cursor walks through the label.
void LabelToolBar::keepColorWidth() {
    QStringList names = m_texts.colorNames;
    names << m_texts.byLayer << m_texts.byBlock << m_texts.colorName(255);
    m_color->setMinimumWidth(0);
    m_color->setIcon(QPixmap(fontMetrics().height(), fontMetrics().height()));
    int width = 0;
    for (const QString& name : std::as_const(names)) {
        m_color->setText(name);
        width = std::max(width, m_color->sizeHint().width());
    }
    m_color->setMinimumWidth(width);
}

void LabelToolBar::setSizes(std::vector<double> sizes, const SizeText& sizeText) {
    m_sizes = std::move(sizes);
    m_sizeText = sizeText;
    fillSizes();
    showSize(m_style.size);
}

void LabelToolBar::setBackground(const QColor& background) {
    m_background = background;
    m_palette->setBackground(background);
    showColor(m_style.color);
}

void LabelToolBar::setObjectType(int objectType) {
    m_objectType = objectType;
    fillVariables();
}

void LabelToolBar::fillSizes() {
    m_sizeCombo->clear();
    for (const double size : m_sizes)
        addSize(size);
}

void LabelToolBar::addSize(double size) {
    if (m_sizeCombo->findData(size) < 0)
        insertSorted(m_sizeCombo, m_sizeText(size), size,
                     [](const QVariant& a, const QVariant& b) { return a.toDouble() < b.toDouble(); });
}

void LabelToolBar::fillVariables() {
    m_variables->clear();
    for (const LabelVariable& variable : kLabelVariables) {
        if (!variable.offeredIn(m_objectType))
            continue;
        const QString name = QString::fromLatin1(variable.name.data(), qsizetype(variable.name.size()));
        m_variables->addAction(m_texts.variable(name))->setData(name);
    }
}

void LabelToolBar::showStyle(const LabelStyle& style) {
    m_style = style;
    showFont(toQt(style.font));
    showSize(style.size);
    showColor(style.color);
    m_bold->setChecked(style.bold);
    m_italic->setChecked(style.italic);
    m_underline->setChecked(style.underline);
}

// A label can name a font that this machine does not have: it is in the list all the same, and says so.
void LabelToolBar::showFont(const QString& family) {
    int row = m_fonts->findData(family);
    if (row < 0) {
        row = insertSorted(m_fonts, family, family, [](const QVariant& a, const QVariant& b) {
            return a.toString().localeAwareCompare(b.toString()) < 0;
        });
        m_fonts->setItemData(row, m_texts.fontMissing, Qt::ToolTipRole);
    }
    m_fonts->setCurrentIndex(row);
    const QString missing = m_fonts->itemData(row, Qt::ToolTipRole).toString();
    m_fonts->setToolTip(missing.isEmpty() ? m_texts.font : missing);
}

void LabelToolBar::showSize(double size) {
    if (!m_sizeText)
        return;
    addSize(size);
    m_sizeCombo->setCurrentIndex(m_sizeCombo->findData(size));
}

void LabelToolBar::showColor(int number) {
    const qreal scale = devicePixelRatioF();
    const int side = fontMetrics().height();
    QPixmap picture(QSize(side, side) * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(DrawingColors::swatch(number, m_background));
    QPainter painter(&picture);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawRect(QRectF(0.5, 0.5, side - 1, side - 1));
    painter.end();
    const QString name = m_texts.colorName(number);
    m_color->setIcon(picture);
    m_color->setText(name);
    describe(m_color, QStringLiteral("%1: %2").arg(m_texts.color, name), m_texts.color);
    m_palette->setCurrent(number);
}

void LabelToolBar::openVariables(const QPoint& at) {
    m_variables->popup(at);
    m_variables->setActiveAction(m_variables->actions().value(0));
}

// Listing the fonts takes a while on machines with many, and most pages are never shown.
void LabelToolBar::showEvent(QShowEvent* event) {
    if (!std::exchange(m_fontsListed, true)) {
        m_fonts->clear();
        for (const QString& family : QFontDatabase::families())
            m_fonts->addItem(family, family);
        showFont(toQt(m_style.font));
    }
    QWidget::showEvent(event);
}
