#include "model/KorDSMBusy.h"
#include "model/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "session/DataFolder.h"
#include "session/KorDSMRequestQueue.h"
#include "shell/DataFolderPlace.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMViewRequestDialog.h"
#include "shell/ModuleResources.h"

#include <QPointer>

#include <vector>

// The operations of KorDSMDialogFactory that open a window.

/// The windows of a factory and its copies.
class KorDSMDialogFactory::Dialogs {
public:
    explicit Dialogs(CWnd* parent) : m_parent(parent) {}
    ~Dialogs() {
        for (const QPointer<KorDSMMainDialog>& dialog : m_dialogs)
            delete dialog.data();
    }
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;

    /// The last one made; one is made when there is none.
    KorDSMMainDialog& last() {
        std::erase_if(m_dialogs, [](const auto& dialog) { return dialog.isNull(); });
        if (m_dialogs.empty())
            m_dialogs.emplace_back(new KorDSMMainDialog(m_parent));
        return *m_dialogs.back();
    }
    /// One that has not been opened yet. Those that are closed are destroyed.
    KorDSMMainDialog& fresh() {
        for (const QPointer<KorDSMMainDialog>& dialog : m_dialogs)
            if (dialog && dialog->isSetUp() && !dialog->isVisible())
                delete dialog.data();
        if (last().isSetUp())
            m_dialogs.emplace_back(new KorDSMMainDialog(m_parent));
        return last();
    }

private:
    QPointer<CWnd> m_parent;
    std::vector<QPointer<KorDSMMainDialog>> m_dialogs;
};

KorDSMDialogFactory::KorDSMDialogFactory(CWnd* parent) : m_pDialogs(std::make_shared<Dialogs>(parent)) {
    ModuleResources::setUp(moduleHandle);
    m_pDialogs->last();
}

KorDSMDialogFactory::KorDSMDialogFactory(const KorDSMDialogFactory& other) = default;
KorDSMDialogFactory& KorDSMDialogFactory::operator=(const KorDSMDialogFactory& other) = default;
KorDSMDialogFactory::~KorDSMDialogFactory() = default;

namespace {

// A host that brings no databases of its own gets those of the user's data folder.
void openDatabases() {
    const bool hostBringsData = !KOSettings::getInstance().dataFolder().empty();
    if (hostBringsData || DataFolder::isAnyOpen())
        return;
    DataFolder folder(locateDataFolder({}));
    folder.open();
    for (const KorString& problem : folder.problems())
        KorHostReport::add(problem);
}

} // namespace

int KorDSMDialogFactory::DoModal() {
    constexpr int kCancelled = 2;
    if (KorDSMBusy::isBusy())
        return kCancelled;
    ModuleResources::setUp(moduleHandle);
    // The host may end the factory, or the parent with the window, while the editor runs.
    const std::shared_ptr<Dialogs> dialogs = m_pDialogs;
    const QPointer<KorDSMMainDialog> dialog = &dialogs->fresh();
    openDatabases();
    WindowTurn::releaseDataStructure();
    m_Loader.loadDataStructure(getDSMDataStructure());
    if (!dialog)
        return kCancelled;
    dialog->OnInitDialog();
    const int result = dialog->exec() == QDialog::Accepted ? 1 : kCancelled;
    delete dialog.data();
    return result;
}

int KorDSMDialogFactory::Create(CWnd* parent) {
    if (KorDSMBusy::isBusy())
        return 0;
    ModuleResources::setUp(moduleHandle);
    KorDSMMainDialog& dialog = m_pDialogs->fresh();
    dialog.setParent(parent, dialog.windowFlags());
    return dialog.OnInitDialog();
}

CWnd* KorDSMDialogFactory::window() const {
    return &m_pDialogs->last();
}

int KorDSMDialogFactory::openRequestDialog() {
    constexpr int kNotConfirmed = -1;
    if (KorDSMBusy::isBusy())
        return kNotConfirmed;
    ModuleResources::setUp(moduleHandle);
    openDatabases();
    KorDSMViewRequestDialog dialog(KorDSMRequestQueue::wantedKey(), nullptr);
    dialog.setRequestMode(true);
    if (dialog.DoModal() != 1)
        return kNotConfirmed;
    KorDSMRequestQueue::put(dialog.requestKey());
    return 1;
}
