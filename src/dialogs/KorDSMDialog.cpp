#include "dialogs/KorDSMDialog.h"

#include "controls/KorControls.h"
#include "controls/KorItemSelection.h"
#include "controls/KorMnemonics.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "controls/KorReadable.h"
#include "controls/KorScreenFit.h"
#include "controls/KorTemplates.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QTreeWidget>

KorDSMDialog::KorDSMDialog(int templateId, QWidget* parent) : QDialog(parent) {
    KorTemplates::setUp(templateId, this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    KorReadable::keep(this);
    // As in the lists that do so themselves.
    for (auto* tree : findChildren<QTreeWidget*>())
        KorItemSelection::keepSoft(tree);
    for (auto* list : findChildren<QListView*>())
        KorItemSelection::keepSoft(list);
    connectButtons();
}

void KorDSMDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    KorMnemonics::give(*this);
    KorScreenFit::fit(*this);
}

void KorDSMDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1)
        CKorHelp::showTopic(KorString("_") + KorString(metaObject()->className()));
    else
        QDialog::keyPressEvent(event);
}

void KorDSMDialog::setCaption(int controlId, int number, const char* category) {
    setCaption(controlId, Prompts::getPrompt(category, number));
}

void KorDSMDialog::setCaption(int controlId, const KorString& text) {
    QWidget* control = KorControls::find(this, controlId);
    if (auto* label = qobject_cast<QLabel*>(control))
        label->setText(toQt(text));
    else if (auto* button = qobject_cast<QAbstractButton*>(control))
        button->setText(toQt(text));
    else if (auto* box = qobject_cast<QGroupBox*>(control))
        box->setTitle(toQt(text));
}

void KorDSMDialog::connectButtons() {
    if (auto* ok = KorControls::find<QAbstractButton>(this, 1))
        connect(ok, &QAbstractButton::clicked, this, &QDialog::accept);
    if (auto* cancel = KorControls::find<QAbstractButton>(this, 2))
        connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);
}
