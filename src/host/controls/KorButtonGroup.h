#pragma once

#include "base/KorString.h"

#include <QIcon>
#include <QKeySequence>
#include <QWidget>

#include <vector>

class QBoxLayout;
class QMenu;
class QToolButton;

/// A strip of tool buttons of equal size, named by command ids; in several rows where its property `mayWrap`
/// is true and room is short. One stop of the Tab key; arrow keys, Home and End go from button to button.
class KorButtonGroup : public QWidget {
    Q_OBJECT

public:
    explicit KorButtonGroup(QWidget* parent = nullptr);
    explicit KorButtonGroup(Qt::Orientation orientation, QWidget* parent = nullptr);

    /// Whether buttons stand side by side (at first) or below each other.
    void setOrientation(Qt::Orientation orientation);
    /// Size of the pictures, 24 x 24 pixels at first.
    void setIconSize(const QSize& size);

    /// Appends a button. Its tooltip is also its accessible name.
    void addButton(int id, const KorString& tooltip, const QIcon& icon);
    /// Gives a button another tooltip and accessible name; the tooltip also tells the key that does the same,
    /// where there is one.
    void setButtonText(int id, const KorString& text, const QKeySequence& key);
    /// Gives a button a menu, opened by the arrow beside its picture, or by Alt and the down key.
    void setButtonMenu(int id, QMenu* menu);
    /// The id of the button at a position, -1 when there is none.
    int buttonId(int index) const;
    /// The button itself, for menus and key accelerators; null when there is none of that id.
    QToolButton* button(int id) const;

    /// Whether exactly one button is kept down, the one pressed last. Off at first.
    void setCheckable(bool on);
    /// Presses a button down without announcing it.
    void setCheckedButton(int id);
    /// The id of the button that is down, -1 when there is none.
    int checkedButton() const;

    void enableButton(int id, bool enable);
    /// The button's own state, whether or not the strip as a whole is enabled.
    bool isButtonEnabled(int id) const;
    /// Disables the strip as a whole, or brings each button back to its own state.
    void enableWindow(bool enable);

Q_SIGNALS:
    /// The user pressed a button.
    void buttonPressed(int id);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Button {
        int id;
        QToolButton* widget;
        bool enabled;
    };

    Button* find(int id);
    void moveFocus(const QToolButton* from, int key);
    void keepOneTabStop();

    QBoxLayout* m_layout;
    std::vector<Button> m_buttons;
    QSize m_iconSize{24, 24};
    bool m_checkable = false;
    bool m_enabled = true;
};
