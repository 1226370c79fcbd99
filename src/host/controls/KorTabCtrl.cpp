#include "controls/KorTabCtrl.h"

#include "controls/KorQt.h"
#include "controls/KorTabPage.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

KorTabCtrl::KorTabCtrl(QWidget* parent)
    : QWidget(parent), m_bar(new QTabBar(this)), m_stack(new QStackedWidget(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_bar);
    layout->addWidget(m_stack, 1);
    m_bar->setExpanding(false);
    m_bar->setDrawBase(false);
    m_bar->setElideMode(Qt::ElideNone);
    m_bar->setUsesScrollButtons(true);
    m_stack->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    connect(m_bar, &QTabBar::currentChanged, this, &KorTabCtrl::onTabChosen);
}

KorTabCtrl::~KorTabCtrl() {
    m_bar->disconnect(this);
}

KorTabPage* KorTabCtrl::currentPage() const {
    return m_content ? m_content->currentPage() : nullptr;
}

void KorTabCtrl::setCurrentContent(TabContent* content) {
    if (content != m_content) {
        finishCurrentPage();
        if (m_content) {
            m_content->m_shown = false;
            m_content->disconnect(this);
            for (int index = 0; index < m_content->pageCount(); ++index)
                if (KorTabPage* page = m_content->page(index))
                    page->disconnect(this);
        }
        m_content = content;
        if (content) {
            content->m_shown = true;
            connect(content, &TabContent::currentChanged, this, &KorTabCtrl::showPage);
            connect(content, &QObject::destroyed, this, &KorTabCtrl::clear);
        }
        fillBar();
        showPage();
    }
    resumeCurrentPage();
}

void KorTabCtrl::finishCurrentPage() {
    if (m_content)
        m_content->leave();
}

void KorTabCtrl::resumeCurrentPage() {
    if (m_content)
        m_content->enter();
}

void KorTabCtrl::clear() {
    m_content = nullptr;
    fillBar();
    showPage();
}

void KorTabCtrl::onTabChosen(int index) {
    if (!m_filling && m_content)
        m_content->setCurrentIndex(index);
}

void KorTabCtrl::fillBar() {
    const QScopedValueRollback filling(m_filling, true);
    while (m_bar->count() > 0)
        m_bar->removeTab(m_bar->count() - 1);
    for (int index = 0; m_content && index < m_content->pageCount(); ++index) {
        m_bar->addTab(QString());
        updateCaption(index);
        if (KorTabPage* page = m_content->page(index))
            connect(page, &KorTabPage::captionChanged, this, [this, index] { updateCaption(index); });
    }
}

void KorTabCtrl::updateCaption(int index) {
    const KorTabPage* page = m_content->page(index);
    if (page)
        m_bar->setTabText(index,
                          toQt(page->title()) + (page->isModified() ? QStringLiteral(" *") : QString()));
}

void KorTabCtrl::showPage() {
    KorTabPage* page = currentPage();
    m_stack->setVisible(page != nullptr);
    if (!page)
        return;
    const QScopedValueRollback filling(m_filling, true);
    m_bar->setCurrentIndex(m_content->currentIndex());
    // A bar that is not shown yet lays itself out here without telling its layout that it has grown.
    m_bar->updateGeometry();
    m_stack->setCurrentWidget(areaOf(page));
}

QScrollArea* KorTabCtrl::areaOf(KorTabPage* page) {
    QWidget* viewport = page->parentWidget();
    if (viewport && m_stack->isAncestorOf(viewport))
        return static_cast<QScrollArea*>(viewport->parentWidget());
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameStyle(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(page);
    page->show();
    m_stack->addWidget(area);
    connect(page, &QObject::destroyed, area, &QObject::deleteLater);
    return area;
}

void KorTabCtrl::keyPressEvent(QKeyEvent* event) {
    const bool tab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    if (!tab || !(event->modifiers() & Qt::ControlModifier) || m_bar->count() == 0)
        return QWidget::keyPressEvent(event);
    const int step = event->key() == Qt::Key_Backtab ? m_bar->count() - 1 : 1;
    m_bar->setCurrentIndex((m_bar->currentIndex() + step) % m_bar->count());
}
