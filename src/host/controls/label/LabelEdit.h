#pragma once

#include "controls/label/LabelDocument.h"
#include "controls/label/LabelToken.h"

#include <QTextEdit>

/// The field in which a label is edited: text and variables together. It takes part in the clipboard and in
/// drag and drop with a form of its own, which keeps variables and formatting, and with plain text; formatted
/// text of other programs comes in as plain text.
class LabelEdit : public QTextEdit {
    Q_OBJECT

public:
    explicit LabelEdit(QWidget* parent = nullptr);

    /// What is shown already keeps its looks until it is filled in again. With `textOnly` nothing but text
    /// can be pasted.
    void setLook(const LabelLook& look, bool textOnly);
    /// Text that cannot be edited can still be selected and copied, by mouse and keyboard.
    void setEditable(bool editable);
    void setTexts(const LabelDesignerTexts& texts);

    /// Replaces everything. Not a user's edit; undo does not lead back behind it.
    void fill(const LabelRuns& runs);
    LabelRuns runs() const { return LabelDocument::runs(*document(), m_look.defaults); }

    /// Replaces the selection by a variable in the style at the cursor.
    void insertVariable(const QString& name);
    LabelStyle currentStyle() const { return LabelDocument::styleOf(currentCharFormat(), m_look.defaults); }

    /// The label in words, variables by their captions.
    QString words(const LabelRuns& runs) const;

Q_SIGNALS:
    /// Ctrl+Space was pressed; `at` is the place below the cursor, in global coordinates.
    void variableMenuRequested(const QPoint& at);
    void tooltipWanted(const QPoint& globalPoint);

protected:
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void selectTokenAt(const QPoint& point);

    bool isLabel(const QMimeData* source) const;

    LabelLook m_look;
    bool m_textOnly = false;
    LabelDesignerTexts m_texts;
    LabelToken* m_token;
};
