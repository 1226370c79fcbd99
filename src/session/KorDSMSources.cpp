#include "session/KorDSMSources.h"

#include "base/KorAssert.h"
#include "services/Prompts.h"
#include "session/KorDSMItemPath.h"

using namespace KorDSMDefines;

namespace {

// The first database is the maker's, the second one the user's.
KorString nameOf(const KorDsmSectionItem& section, const KorDSMDatabaseItem& database) {
    return Prompts::ups(&database == section.children()[0] ? 21021 : 21022);
}

} // namespace

int KorDSMSources::imageOf(const KorDSMDatabaseItem& item) {
    const auto* addIn = dynamic_cast<const KorDsmAddInContentItem*>(&item);
    return addIn && addIn->imageIndex() >= 0 ? addIn->imageIndex() : item.icon();
}

std::vector<KorDSMSources::Entry> KorDSMSources::entriesOf(KorDsmSectionItem& section,
                                                           const KorString& delimiter) {
    std::vector<Entry> entries;
    const auto addGroups = [&](KorDSMDatabaseItem& addIn, const KorString& parentPath) {
        for (KorDSMDatabaseItem* group : addIn.children())
            if (isGroupType(group->type()))
                entries.push_back(
                    {KorString::format("%s%s%s", {parentPath, delimiter, group->getDisplayName()}),
                     group->icon(), group});
    };
    for (KorDSMDatabaseItem* database : section.children()) {
        const KorString path = nameOf(section, *database);
        entries.push_back({path, database->icon(), database});
        if (database->children().length() < 2) {
            if (!database->children().isEmpty())
                addGroups(*database->children()[0], path);
            continue;
        }
        for (KorDSMDatabaseItem* child : database->children()) {
            const KorString addInPath =
                KorString::format("%s%s%s", {path, delimiter, child->getDisplayName()});
            entries.push_back({addInPath, imageOf(*child), child});
            addGroups(*child, addInPath);
        }
    }
    return entries;
}

KorString KorDSMSources::pathOf(const KorDsmSectionItem& section, const KorDSMDatabaseItem* node,
                                const KorString& delimiter) {
    KorString path;
    for (const KorDSMDatabaseItem* step = node; step && step->parent(); step = step->parent()) {
        const bool isOnlyContent = step->type() == kAddInContent && step->parent()->children().length() == 1;
        if (isOnlyContent)
            continue;
        const KorString name =
            step->type() == kDatabaseContent ? nameOf(section, *step) : step->getDisplayName();
        path = path.isEmpty() ? name : KorString::format("%s%s%s", {name, delimiter, path});
    }
    return path;
}

KorDsmAddInContentItem* KorDSMSources::current(KorDSMDataStructure& structure, eViewSections section) {
    KorDsmSectionItem& node = *structure.getSection(section);
    KorDsmAddInContentItem* source = KorDSMItemPath::findAddIn(
        node, {structure.getTargetDatabase(section), structure.getTargetAddIn(section)});
    if (!source)
        source = KorDSMItemPath::findAddIn(node, SourceId::standard());
    // Nothing was loaded where the host opens the editor without loading.
    KorAssert::check(source != nullptr || node.children().isEmpty(), "pCurrentAddIn != NULL");
    return source;
}

const KorDSMDatabaseItem& KorDSMSources::rememberedGroup(const KorDSMDataStructure& structure,
                                                         eViewSections section,
                                                         KorDsmAddInContentItem& source) {
    const auto key = structure.getSelectedCategory(section);
    for (const KorDSMDatabaseItem* group : source.children())
        if (key != 0 && group->recordKey() == key && isGroupType(group->type()))
            return *group;
    return source;
}
