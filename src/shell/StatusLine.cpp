#include "shell/StatusLine.h"

#include "controls/KorControls.h"
#include "controls/KorElidedLabel.h"
#include "controls/KorQt.h"
#include "controls/KorStyle.h"
#include "model/KorDSMMessages.h"
#include "shell/LockNotice.h"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QProgressBar>

StatusLine::StatusLine(QWidget& window) : m_progressText(KorControls::find<QLabel>(&window, 1006)) {
    auto* place = KorControls::find<QWidget>(&window, 1005);
    auto* line = static_cast<QBoxLayout*>(place->layout());
    m_status = new KorElidedLabel(Qt::ElideMiddle, place);
    KorControls::setId(m_status, 1007);
    m_progressText->hide();
    m_progress = new QProgressBar(place);
    KorControls::setId(m_progress, 1008);
    m_progress->setMaximumWidth(220);
    m_progress->hide();
    m_readOnly = new KorElidedLabel(Qt::ElideRight, place);
    m_readOnly->setForegroundRole(QPalette::PlaceholderText);
    line->insertWidget(0, m_status);
    new LockNotice(line); // the line owns it
    line->addWidget(m_progress);
    line->addStretch(1);
    line->addWidget(m_readOnly);
    m_servers = new KorElidedLabel(Qt::ElideRight, place);
    KorControls::setId(m_servers, 1217);
    m_servers->hide();
    line->addWidget(m_servers);
}

void StatusLine::show(const KorString& status, const KorString& note, const KorString& reason) {
    m_status->setWhole(toQt(status));
    m_readOnly->setWhole(toQt(note), reason == note ? QString() : toQt(reason));
}

void StatusLine::say(const KorString& text) {
    m_status->setWhole(toQt(text));
}

void StatusLine::showServers(const KorString& colleagues, const KorString& trouble, const KorString& waits) {
    const QString text = toQt(!trouble.isEmpty() ? trouble : waits.isEmpty() ? colleagues : waits);
    m_servers->setWhole(text);
    m_servers->setVisible(!text.isEmpty());
    KorStyle::setNoteColor(*m_servers, !trouble.isEmpty());
}

void StatusLine::showProgress(const DsmProgress& progress) {
    const bool isUnderWay = progress.state == DsmProgress::kStep;
    m_progress->setVisible(isUnderWay);
    m_progressText->setVisible(isUnderWay);
    m_status->setVisible(!isUnderWay);
    if (!isUnderWay)
        return;
    m_progress->setRange(0, progress.range);
    m_progress->setValue(progress.percent);
    m_progressText->setText(toQt(progress.text));
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
