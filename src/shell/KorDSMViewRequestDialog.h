#pragma once

#include "controls/MemoryDlg.h"
#include "dialogs/KorDSMDialog.h"
#include "model/KorDSMDataStructure.h"
#include "model/KorDSMMessages.h"
#include "session/KorDSMItemSource.h"
#include "shell/KorDSMSectionTree.h"
#include "shell/RightSide.h"
#include "shell/WindowTurn.h"

#include <array>
#include <optional>
#include <vector>

class KorButtonGroup;
class QAction;
class QLabel;
class QLineEdit;

/// Lets the user pick one view request: sources, categories and requests as a tree, beside it the list of
/// what is in the selected node, or the pages of the selected request, only to be looked at. Requests can be
/// made, renamed and deleted; that is stored by OK and taken back by Cancel.
class KorDSMViewRequestDialog : public KorDSMDialog, public KorMessageReceivers {
    Q_OBJECT

public:
    /// The actions of the button group, by the numbers of their buttons.
    enum eAction : int { kNew = 0, kRename = 1, kDelete = 2, kHelp = 3 };

    /// `requestKey` is shown as selected, in the current source where that has it; 0 or an unknown one: none.
    KorDSMViewRequestDialog(int requestKey, QWidget* parent);
    /// The source that was current before the dialog is current again.
    ~KorDSMViewRequestDialog() override;

    /// Whether the requests of all sources are shown, or those of the current source alone, as at first.
    void setRequestMode(bool on) { m_requestMode = on; }

    /// Shows the dialog. Returns 1 when a request was confirmed, else 2. The request's source stays current
    /// as long as the dialog lives.
    int DoModal();
    /// The key of the view request that was chosen last.
    int requestKey() const { return m_requestKey; }

    void accept() override;
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void OnInitDialog();
    void setUpActions();
    void setUpTree();
    void setTexts();
    void show(KorTreeHandle entry);
    void select(KorDSMDatabaseItem* item);
    void choose(KorDSMDatabaseItem* item);
    void updateStates();
    void filter();
    KorDSMDatabaseItem* selectedItem() const;
    KorDSMDatabaseItem* chosenRequest() const;

    void act(int action);
    void makeNew();
    void rename();
    void remove();
    std::optional<std::vector<RowRef>> agreesToRemove(const KorDSMDatabaseItem& request);
    void readAgain(SourceId source, std::int32_t key);
    bool store();

    int m_requestKey;
    bool m_requestMode = false;
    const SourceId m_before; // the source that was current
    const std::size_t m_stepsBefore;

    KorDSMDataStructure m_structure; // of this dialog alone: the editor's sections are not touched
    KorDsmSectionItem m_root;
    KorImageListPtr m_images;
    KorDSMSectionTree m_tree;
    RightSide m_rightSide;
    KorDSMItemSource m_source;
    WindowTurn m_turn;
    MemoryDlg m_memory{"DlgViewRequest"};
    KorButtonGroup& m_buttons;
    QLineEdit& m_filter;
    QLabel& m_chosen;
    std::array<QAction*, 3> m_actions{};
};
