#pragma once

#include "controls/KorImageList.h"
#include "controls/MemoryDlg.h"
#include "model/KorDSMDataStructure.h"
#include "model/KorDSMMessages.h"
#include "shell/WindowLeaving.h"
#include "shell/WindowTurn.h"

#include <QDialog>
#include <QWidgetList>

#include <memory>

class KorDSMPageRegistry;
class KorDSMSectionTree;
class KorDSMSelectionHistory;
struct WindowParts;

/// The editor's window: four section trees with their source combos at the left, the pages of the selected
/// item (or the list of its children) at the right, and the command strips. It lays its parts out and
/// connects them; what the editor does is decided in the session.
class KorDSMMainDialog : public QDialog, public KorMessageReceivers {
    Q_OBJECT

public:
    /// The window takes part in nothing before it is set up.
    explicit KorDSMMainDialog(QWidget* parent);
    ~KorDSMMainDialog() override;

    /// Builds the window on its template and shows the section of the data structure. Returns 1.
    int OnInitDialog();
    bool isSetUp() const { return m_parts != nullptr; }

    KorDSMPageRegistry& pages();
    const KorDSMSelectionHistory& history() const;
    KorDSMSectionTree& currentTree();

    /// Makes a section current and shows it.
    void switchSection(KorDSMDefines::eViewSections section);

    void accept() override;
    void reject() override;
    /// Closes the window and hands the data structure to the editor that was open before.
    void done(int result) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    // Set-up
    void setUpImages();
    void setUpTexts();
    void setUpTabOrder();
    void setUpKeys();
    void connectSelection();
    void connectCommands();
    void receiveFromItems();
    void receiveFromPages();

    // Turns
    void letGo();
    void showStructure();

    void leave(WindowLeaving::eWay way);
    void use();
    bool isFree() const;
    void lookAround();
    static void showReportsSoon();

    KorDSMDataStructure& m_structure;
    KorImageListPtr m_images;
    MemoryDlg m_memory{"DlgDetailStylesNew2"};
    WindowTurn m_turn;
    QWidgetList m_tabOrder;
    std::unique_ptr<WindowParts> m_parts; // null before the window is set up
};
