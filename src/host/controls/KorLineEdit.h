#pragma once

#include <QLineEdit>

/// A line edit whose text counts when the user is done with it: on Return, or when the focus goes to
/// another control. Return never presses the dialog's default button; Escape brings the last text back
/// before it closes anything. The keys of undo and redo belong to the text only while it is being typed.
/// A read-only field looks like one.
class KorLineEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit KorLineEdit(QWidget* parent = nullptr);
    ~KorLineEdit() override;

    /// Takes what was typed now, as Return does. Does nothing when the text is unchanged;
    /// a text that the field's validator refuses is restored instead.
    void commit();
    /// Drops what was typed since the text was last set or committed.
    void restore();
    /// Says, while `committed` is announced, that the text cannot be taken: it stays, counts as being typed
    /// still, and is announced again when the user is done with it once more.
    void refuse();
    /// Whether something was typed that does not count yet.
    bool isEdited() const;

    /// Sets the text from the program: it counts as committed, and nothing is announced.
    void setText(const QString& text);

Q_SIGNALS:
    /// The user changed the text and is done with it; comes once per change.
    void committed(const QString& text);
    /// What was typed has been dropped, or a refused text corrected to the one that counts.
    void restored();

protected:
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QString m_committedText;
    QString m_lastTaken; // what a refusal goes back to
    bool m_refused = false;
    bool m_onWindow = false; // drawn on the colour of the window
};
