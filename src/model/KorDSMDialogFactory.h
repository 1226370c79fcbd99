#pragma once

#include "base/KorExport.h"
#include "model/KorDSMDataStructure.h"
#include "model/KorDSMSectionLoader.h"

#include <memory>

class QWidget;
/// A window of the host.
using CWnd = QWidget;

/// What a host can ask of its editors.
struct KorDSMEditorOptions {
    /// Whether the editor asks - keep, drop, go on editing - when it is left by Cancel, by its close button
    /// or by Use while changes are not stored. Otherwise Cancel drops them at once, and Use leaves them
    /// pending.
    bool asksBeforeLeaving = false;
    /// Whether changes that are not stored are written, as they are made, into a file beside the settings,
    /// and are offered again by the next editor when the process ends without storing or dropping them.
    /// Looked at when an editor opens.
    bool recoversChanges = false;
    /// Another folder for that file, of the host's own; it is made when it is needed. Empty: that of the
    /// settings.
    KorString recoveryFolder;
};

/// The host's way into the editor: opens the detail styles manager on the data structure of the session.
///
/// The operations that open a window need a QApplication, which the host brings. Everything runs on the
/// host's user-interface thread. One factory serves any number of openings, one after the other and one
/// beside the other; of several open editors the active one shows the data structure. A host that wants
/// editors with data of their own makes an `EditorSession` for them.
class DETAILSTYLES_API KorDSMDialogFactory {
public:
    /// Creates the main dialog for a parent window (may be null); it is not shown yet. The parent may be
    /// destroyed before the factory.
    explicit KorDSMDialogFactory(CWnd* parent);
    /// Two factories then share their dialogs, which live as long as one of the two.
    KorDSMDialogFactory(const KorDSMDialogFactory& other);
    KorDSMDialogFactory& operator=(const KorDSMDialogFactory& other);
    /// Destroys the dialogs that no other factory shares.
    virtual ~KorDSMDialogFactory();

    /// Loads what has to be loaded and runs the editor. Returns 1 when it was left by OK or Use, 2 when it
    /// was cancelled or could not open: another editor is in the middle of filling, storing or exchanging, or
    /// the parent was destroyed meanwhile.
    virtual int DoModal();
    /// Creates the editor without running it and without loading: it shows what the data structure holds.
    /// Returns non-zero on success, 0 while another editor is in the middle of filling, storing or
    /// exchanging. The window belongs to the factory; one that is not shown when the next editor is opened is
    /// destroyed then.
    int Create(CWnd* parent);
    /// The window that `DoModal` or `Create` opened last, else the one that the next of them will open; owned
    /// by the factory. That of `DoModal` is gone when it returns.
    CWnd* window() const;

    /// The one data structure of the current session, made on the first call and kept until the session ends.
    /// That of the process, where the host makes none, ends when the module is unloaded.
    static KorDSMDataStructure& getDSMDataStructure();

    /// Lets the user pick one view request of any source. The queue "REQUESTDIALOG" says by "RequestKey"
    /// which one is selected at first, and gets "RequestKey", "DSNForRequestKey" and "IdxForRequestKey" of
    /// the one that was chosen. Returns 1 when one was confirmed, otherwise -1 and the queue stays as it is:
    /// the user cancelled, or an editor is in the middle of filling, storing or exchanging.
    static int openRequestDialog();

    /// Creates the view request children of a detail style from the current source.
    static void loadDetailStylesDependencies(KorDsmDetailStyleItem* style);
    /// Load the records of an add-in into its groups. The caller selects the add-in's source first.
    static void expandAnnotationsAddInContent(KorDsmAnnotationsAddInItem* addIn);
    static void expandDimRequestsAddInContent(KorDsmDimRequestsAddInItem* addIn);
    static void expandQualifiersAddInContent(KorDsmQualifierSetsAddInItem* addIn);

    /// Instance of the module whose resources its dialogs use: the folder with its resources. Empty: where
    /// the module itself looks for them. The host's own resources are never touched.
    static KorString moduleHandle;

    /// What the host wants of the editors of the current session.
    static KorDSMEditorOptions& options();

private:
    class Dialogs;

    std::shared_ptr<Dialogs> m_pDialogs; // shared by copies
    KorDSMSectionLoader m_Loader;
};
