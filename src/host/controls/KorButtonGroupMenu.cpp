#include "controls/KorButtonGroupMenu.h"

#include "controls/KorControls.h"
#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"

#include <QBoxLayout>
#include <QMenu>
#include <QToolButton>

KorButtonGroupMenu::KorButtonGroupMenu(QWidget* parent)
    : QWidget(parent), m_group(new KorButtonGroup(Qt::Vertical, this)), m_menuButton(new QToolButton(this)),
      m_menu(new QMenu(this)) {
    auto* layout = new QBoxLayout(QBoxLayout::TopToBottom, this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_group);
    layout->addWidget(m_menuButton);
    m_menuButton->setAutoRaise(true);
    m_menuButton->setPopupMode(QToolButton::InstantPopup);
    m_menuButton->setMenu(m_menu);
    connect(m_menu, &QMenu::aboutToShow, this, [this] { KorMnemonics::give(*m_menu); });
    m_menuButton->setFocusPolicy(Qt::TabFocus);
    setOrientation(Qt::Vertical);
}

void KorButtonGroupMenu::setOrientation(Qt::Orientation orientation) {
    const bool horizontal = orientation == Qt::Horizontal;
    auto* layout = static_cast<QBoxLayout*>(this->layout());
    layout->setDirection(horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    layout->setAlignment(horizontal ? Qt::AlignLeft : Qt::AlignTop);
    m_group->setOrientation(orientation);
}

void KorButtonGroupMenu::setMenuButton(int id, const KorString& text, const QIcon& icon) {
    KorControls::setId(m_menuButton, id);
    m_menuButton->setToolTip(toQt(text));
    m_menuButton->setAccessibleName(toQt(text));
    m_menuButton->setIcon(icon);
    m_menuButton->setIconSize(QSize(24, 24));
    m_menuButton->setFixedSize(32, 32);
}

int KorButtonGroupMenu::addMenuItem(const KorString& text) {
    const int index = static_cast<int>(m_menu->actions().size());
    QAction* item = m_menu->addAction(toQt(text));
    item->setCheckable(true);
    connect(item, &QAction::triggered, this, [this, index](bool checked) { Q_EMIT toggled(index, checked); });
    return index;
}

void KorButtonGroupMenu::setCheck(int index, bool checked) {
    if (index >= 0 && index < m_menu->actions().size())
        m_menu->actions().at(index)->setChecked(checked);
}

bool KorButtonGroupMenu::isChecked(int index) const {
    return index >= 0 && index < m_menu->actions().size() && m_menu->actions().at(index)->isChecked();
}
