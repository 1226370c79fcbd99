#include "session/KorDSMReload.h"

#include "model/KorDSMSectionLoader.h"

using namespace KorDSMDefines;

void reloadDataStructure(KorDSMDataStructure& structure) {
    const eViewSections section = structure.getSelectedSection();
    const SourceId target{structure.getTargetDatabase(section), structure.getTargetAddIn(section)};
    std::array<KorArray<KorString>, kNumberOfSections> paths;
    for (int i = 0; i < kNumberOfSections; ++i)
        paths[static_cast<std::size_t>(i)] = structure.getSelectedPath(static_cast<eViewSections>(i));
    structure.setUpdateStatus(KorDSMDataStructure::kReloadRequested);
    KorDSMSectionLoader().loadDataStructure(structure);
    structure.setSelectedSection(section);
    structure.setTargetDatabase(section, target.dsn);
    structure.setTargetAddIn(section, target.index);
    for (int i = 0; i < kNumberOfSections; ++i)
        structure.getSelectedPath(static_cast<eViewSections>(i)) = paths[static_cast<std::size_t>(i)];
}
