#include "pages/QualifierHints.h"

#include "controls/KorQt.h"
#include "operations/CurrentRows.h"
#include "session/KorDSMQualifierWords.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHelpEvent>
#include <QToolTip>

QualifierHints::QualifierHints(QComboBox& combo) : QObject(&combo) {
    combo.installEventFilter(this);
    combo.view()->viewport()->installEventFilter(this);
}

void QualifierHints::addTo(QComboBox& combo) {
    if (!combo.findChild<QualifierHints*>(QString(), Qt::FindDirectChildrenOnly))
        new QualifierHints(combo);
}

bool QualifierHints::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QObject::eventFilter(watched, event);
    const auto* combo = static_cast<QComboBox*>(parent());
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString name =
        watched == combo ? combo->currentText() : combo->view()->indexAt(help->pos()).data().toString();
    const QString sentence = sentenceOf(fromQt(name));
    if (sentence.isEmpty())
        return QObject::eventFilter(watched, event);
    QToolTip::showText(help->globalPos(), sentence);
    return true;
}

QString QualifierHints::sentenceOf(const KorString& name) {
    const StructRecord* set = CurrentRows::find(kTableQualifierSet, name);
    return set ? toQt(KorDSMQualifierWords::sentenceOf(set->key)) : QString();
}
