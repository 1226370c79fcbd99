#include "pages/ClippingLinetypes.h"

#include "base/KorAssert.h"
#include "base/LinetypeFile.h"
#include "controls/linetype/KorLinetypeCombo.h"
#include "dialogs/KorDSMDialogLoadLinetype.h"
#include "model/KorDSMMessages.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "operations/KorOdbcMan.h"
#include "services/KOSettings.h"
#include "services/Prompts.h"
#include "session/KorDSMGuardedWrite.h"

namespace {

constexpr const char* kLinetypeFile = "VELHcadIso.lin";
constexpr const char* kNoLine = "A,-12.7";

bool isSameName(const KorString& a, const KorString& b) {
    return a.lowered() == b.lowered();
}

// Names of line types are compared without regard to case, run names with it.
bool findLinetype(const KorString& name, StructLinetypes& record) {
    KorArray<KorString> names;
    KorOdbcGUI::getLinetypesList(names);
    for (const KorString& known : names)
        if (isSameName(known, name))
            return KorOdbcGUI::getLinetypes(known, record) == 1;
    return false;
}

bool appendLinetype(const KorString& name, const KorString& filePath, int lineTypeId) {
    StructLinetypes& record = KorOdbcMan::m_structLinetypes;
    record = {};
    record.setRunBezeichnung(name);
    record.filePath = filePath;
    record.lineTypeId = lineTypeId;
    return KorDSMGuardedWrite::appendCurrentRecord(kTableLinetypes).isStored();
}

} // namespace

void ClippingLinetypes::setControl(KorLinetypeCombo* combo) {
    m_combo = combo;
    m_combo->setDefaultProperties();
}

void ClippingLinetypes::fill() {
    m_supportPath = KOSettings::getInstance().getPathData() + "\\Shared\\Support";
    m_loadEntry = KorString("\u00A0") + Prompts::ups(22511);
    m_defaultEntry = KorString(" ") + Prompts::ups(14101);
    m_loadedNames.clear();
    m_combo->RemoveAll();
    m_combo->initializeList();
    KorArray<KorString> names;
    KorOdbcGUI::getLinetypesList(names);
    for (const KorString& name : names) {
        m_loadedNames.insert(name.lowered());
        StructLinetypes record;
        if (KorOdbcGUI::getLinetypes(name, record) == 1 && record.lineTypeId == 0 && record.key >= 0)
            load(name, record.filePath);
        if (!m_combo->contains(name))
            m_combo->DefineLinetype(name, {});
    }
    m_combo->DefineLinetype(m_loadEntry, kNoLine);
    m_combo->DefineLinetype(m_defaultEntry, kNoLine);
}

void ClippingLinetypes::load(const KorString& name, const KorString& filePath) {
    const auto [folder, file] = LinetypeFile::split(filePath);
    m_combo->SetSupportPath(folder.isEmpty() ? m_supportPath : folder);
    m_combo->SetLinetypeFile(file);
    m_combo->LoadLinetype(name);
}

void ClippingLinetypes::select(int key) {
    StructLinetypes record;
    if (key == kDefaultKey)
        m_combo->SelectItem(m_defaultEntry);
    else if (KorODBCDetStyle::getLinetypes(KorOdbcKey(key), record) == 1)
        m_combo->SelectItem(record.name);
    else
        m_combo->setCurrentIndex(-1);
}

std::optional<int> ClippingLinetypes::keyOfChoice(const KorString& chosen, QWidget* window) {
    if (isSameName(chosen, m_defaultEntry))
        return kDefaultKey;
    KorString name = chosen;
    if (isSameName(chosen, m_loadEntry)) {
        const auto picked = pickFromFile(window);
        if (!picked)
            return std::nullopt;
        name = *picked;
    }
    StructLinetypes record;
    if (!findLinetype(name, record) && !(appendHostLinetype(name) && findLinetype(name, record)))
        return std::nullopt;
    return record.key;
}

std::optional<KorString> ClippingLinetypes::pickFromFile(QWidget* window) {
    KorDSMDialogLoadLinetype dialog(window);
    dialog.setDirectory(m_supportPath);
    dialog.setDefaultDirectory(m_supportPath);
    dialog.setFileName(kLinetypeFile);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    const KorString name = dialog.selectedLinetype();
    if (!accepted || name.isEmpty() || m_loadedNames.contains(name.lowered()))
        return std::nullopt;
    load(name, dialog.fileReference());
    m_combo->SelectItem(name);
    if (!appendLinetype(name, dialog.fileReference(), 0))
        return std::nullopt;
    m_loadedNames.insert(name.lowered());
    return name.lowered();
}

bool ClippingLinetypes::appendHostLinetype(const KorString& name) {
    // Without a number it comes from a file, and belongs to a record that has been taken back meanwhile.
    const int lineTypeId = m_combo->getLineTypeByName(name);
    if (lineTypeId == 0)
        return false;
    m_combo->SetSupportPath({});
    m_combo->SetLinetypeFile({});
    m_combo->SelectItem(name);
    if (!appendLinetype(name, {}, lineTypeId))
        return false;
    m_loadedNames.insert(name.lowered());
    return true;
}
