#pragma once

#include "dialogs/KorDSMDialog.h"
#include "session/KorDSMDimensionSettings.h"

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class QLabel;

/// Shows the values that new dimensions and titles of a source start from, and lets the user change them:
/// OK stores all as one step. A source that cannot be changed is shown to be looked at.
class KorDSMDialogDimensionSettings : public KorDSMDialog {
    Q_OBJECT

public:
    KorDSMDialogDimensionSettings(SourceId source, QWidget* parent);

    /// Whether something was stored, when the dialog was accepted.
    bool isStored() const { return m_isStored; }

    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setTexts(SourceId source);
    void setUpRows();
    void fill();
    void onEdited(QTreeWidgetItem* item);
    void onSelected();
    void add();
    /// The setting of the selected row; none for a group.
    std::optional<std::size_t> selected() const;
    std::optional<KorDSMDimensionSettings::eGroup> selectedGroup() const;
    void selectSetting(std::size_t index);
    void say(const QString& text);

    KorDSMDimensionSettings m_settings;
    const bool m_isEditable;
    bool m_isStored = false;
    bool m_isFilling = false;
    QTreeWidget& m_rows;
    QLabel& m_note;
    QPushButton& m_reset;
    QPushButton& m_add;
    QPushButton& m_remove;
};
