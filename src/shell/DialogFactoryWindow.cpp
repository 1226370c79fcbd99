#include "model/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "shell/DataFolder.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/ModuleResources.h"

// The operations of KorDSMDialogFactory that open a window.

namespace {

// The module's resources are current for the duration of a call.
class ModuleResourcesInUse {
public:
    ModuleResourcesInUse() : m_previous(KorResources::folder()) {
        ModuleResources::setUp(KorDSMDialogFactory::moduleHandle);
    }
    ~ModuleResourcesInUse() { KorResources::setFolder(m_previous); }
    ModuleResourcesInUse(const ModuleResourcesInUse&) = delete;
    ModuleResourcesInUse& operator=(const ModuleResourcesInUse&) = delete;

private:
    std::filesystem::path m_previous;
};

} // namespace

KorDSMDialogFactory::KorDSMDialogFactory(CWnd* parent) {
    const ModuleResourcesInUse resources;
    m_pDialog = new KorDSMMainDialog(parent);
}

KorDSMDialogFactory::~KorDSMDialogFactory() {
    delete m_pDialog;
}

namespace {

// A host that brings no databases of its own gets those of the user's data folder.
void openDatabases() {
    const bool hostBringsData = !KOSettings::getInstance().dataFolder().empty();
    if (hostBringsData || !StyleDatabases::current().sources().empty())
        return;
    DataFolder folder(DataFolder::locate({}));
    folder.open();
    for (const KorString& problem : folder.problems())
        KorHostReport::add(problem);
}

} // namespace

int KorDSMDialogFactory::DoModal() {
    const ModuleResourcesInUse resources;
    openDatabases();
    m_Loader.loadDataStructure(getDSMDataStructure());
    m_pDialog->OnInitDialog();
    return m_pDialog->exec() == QDialog::Accepted ? 1 : 2;
}

int KorDSMDialogFactory::Create(CWnd* parent) {
    const ModuleResourcesInUse resources;
    m_pDialog->setParent(parent, m_pDialog->windowFlags());
    return m_pDialog->OnInitDialog();
}

CWnd* KorDSMDialogFactory::window() const {
    return m_pDialog;
}

int KorDSMDialogFactory::openRequestDialog() {
    return -1;
}
