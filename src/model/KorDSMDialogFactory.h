#pragma once

#include "base/KorExport.h"
#include "model/KorDSMDataStructure.h"
#include "model/KorDSMSectionLoader.h"

class QWidget;
/// A window of the host.
using CWnd = QWidget;

class KorDSMMainDialog;

/// The host's way into the editor: opens the detail styles manager on the process-wide data structure.
///
/// The operations that open a window need a QApplication, which the host brings. Everything runs on the
/// host's user-interface thread.
class DETAILSTYLES_API KorDSMDialogFactory {
public:
    /// Creates the main dialog for a parent window (may be null); it is not shown yet.
    explicit KorDSMDialogFactory(CWnd* parent);
    /// Two factories then share one dialog; only the last one alive may still show it.
    KorDSMDialogFactory(const KorDSMDialogFactory& other) = default;
    KorDSMDialogFactory& operator=(const KorDSMDialogFactory& other) = default;
    virtual ~KorDSMDialogFactory();

    /// Loads what has to be loaded and runs the editor. Returns 1 when it was left by OK or Use, 2 when it
    /// was cancelled.
    virtual int DoModal();
    /// Creates the editor without running it and without loading: it shows what the data structure holds.
    /// Returns non-zero on success. The window belongs to the factory.
    int Create(CWnd* parent);
    /// The dialog's window, or null before it is shown; owned by the factory.
    CWnd* window() const;

    /// The one data structure, made on the first call and kept until the module is unloaded.
    static KorDSMDataStructure& getDSMDataStructure();

    /// Lets the user pick one view request. Returns 1 when one was confirmed, otherwise -1.
    static int openRequestDialog();

    /// Creates the view request children of a detail style from the current source.
    static void loadDetailStylesDependencies(KorDsmDetailStyleItem* style);
    /// Load the records of an add-in into its groups. The caller selects the add-in's source first.
    static void expandAnnotationsAddInContent(KorDsmAnnotationsAddInItem* addIn);
    static void expandDimRequestsAddInContent(KorDsmDimRequestsAddInItem* addIn);
    static void expandQualifiersAddInContent(KorDsmQualifierSetsAddInItem* addIn);

    /// Instance of the module whose resources are current while a dialog of the module is shown: the folder
    /// with its resources. Empty: where the module itself looks for them.
    static KorString moduleHandle;

private:
    KorDSMMainDialog* m_pDialog = nullptr;
    KorDSMSectionLoader m_Loader;
};
