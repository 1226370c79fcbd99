#include "model/KorDSMDefines.h"

#include "services/AddInManager.h"

namespace KorDSMDefines {

KorArray<Icon> m_GlobalIcons;

namespace {

// 0 stands for the two icons that come from the host.
constexpr int kResources[] = {1162, 393,  392,  381,  386,  1152, 383,  350,  394,  0,    1057, 1056, 1055,
                              1067, 1054, 1058, 1059, 1061, 1062, 1060, 1063, 1064, 1066, 1065, 0};

} // namespace

int iconResource(int index) {
    return kResources[index];
}

void loadGlobalIcons() {
    m_GlobalIcons.clear();
    for (const int resource : kResources)
        m_GlobalIcons.append({resource, {}});
    if (!KorAssert::check(m_GlobalIcons.length() == kLastIcon, "m_GlobalIcons.length() == kLastIcon"))
        return;
    m_GlobalIcons[kIconHost].file = "appicon.svg";
    m_GlobalIcons[kIconInstallation].file = AddInManager::getInstance().getCurrentInstalationFlag();
}

} // namespace KorDSMDefines
