#pragma once

#include "base/KorString.h"

#include <QDialog>

/// Base of the editor's small modal dialogs: made from a template, with the host application's icon, and with
/// texts from the prompt store. F1 opens its topic of the help, which is named like its class.
class KorDSMDialog : public QDialog {
    Q_OBJECT

public:
    /// Fills the dialog from the template; `parent` may be null.
    KorDSMDialog(int templateId, QWidget* parent);

protected:
    /// A dialog is never larger than the screen.
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    /// Sets the text of the label, button or group box with this number from prompt `category` `number`.
    void setCaption(int controlId, int number, const char* category = "UPS");
    void setCaption(int controlId, const KorString& text);
    /// Connects OK (1) and Cancel (2) of the template.
    void connectButtons();
};
