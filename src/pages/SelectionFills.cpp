#include "pages/SelectionFills.h"

#include "controls/KorPictures.h"
#include "controls/VELComboTree.h"
#include "controls/VELComboTreeBuilder.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMDefines.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "operations/KorDetStructureUtilities.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "pages/QualifierHints.h"
#include "pages/ValuePictures.h"
#include "services/Prompts.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace {

using Utilities = KorDetStructureUtilities;

constexpr int kWithoutCategory = 33728;

/// The numbers of pictures in the list of a tree: that of the kind for records without one of their own.
class Pictures {
public:
    Pictures(KorImageList& images, int ofKind) : m_images(images), m_ofKind(ofKind) {}

    template <typename R>
    int of(const R& record) {
        const QIcon picture = ValuePictures::ofRow(*findTable(tableOf<R>), record);
        if (picture.isNull())
            return m_ofKind;
        const auto [known, isNew] = m_known.try_emplace(picture.cacheKey());
        if (isNew)
            known->second = m_images.append(picture);
        return known->second;
    }

private:
    KorImageList& m_images;
    int m_ofKind;
    std::map<qint64, int> m_known;
};

/// One kind of selection tree.
struct FillRow {
    SelectionFills::eFill what;
    int prompt;    // says what is being read
    int groupIcon; // numbers in the global icon table
    int recordIcon;
    void (*collect)(VELComboTreeBuilder& tree, const FillRow& row, Pictures& pictures);
};

template <typename R>
void sortBy(KorArray<R>& records, int (*compare)(const R&, const R&)) {
    std::sort(records.begin(), records.end(),
              [compare](const R& a, const R& b) { return compare(a, b) < 0; });
}

void addBranch(VELComboTreeBuilder& tree, const FillRow& row, const KorString& group,
               const std::vector<KorString>& names) {
    tree.addGroup(group, row.groupIcon);
    for (const KorString& name : names)
        tree.addEntry(SelectionFills::path(group, name), row.recordIcon);
}

/// A family whose records each know the one group that they are filed in.
template <typename Group, typename Record, int (*Groups)(KorArray<Group>&),
          int (*Records)(const KorOdbcKey&, KorArray<Record>&),
          int (*CompareGroups)(const Group&, const Group&),
          int (*CompareRecords)(const Record&, const Record&)>
void collectGrouped(VELComboTreeBuilder& tree, const FillRow& row, Pictures& pictures) {
    KorArray<Group> groups;
    Groups(groups);
    sortBy(groups, CompareGroups);
    for (const Group& group : groups) {
        KorArray<Record> records;
        Records(KorOdbcKey(group.key), records);
        sortBy(records, CompareRecords);
        tree.addGroup(group.name, row.groupIcon);
        for (const Record& record : records)
            tree.addEntry(SelectionFills::path(group.name, record.name), pictures.of(record));
    }
}

/// Point selections stand below the qualifier set that they use, and that below its group.
void collectPointSelections(VELComboTreeBuilder& tree, const FillRow& row, Pictures& pictures) {
    KorArray<KorString> names;
    KorOdbcGUI::getDetViewDimPointSelectionList(names);
    for (const KorString& name : names) {
        StructDetViewDimPointSelection selection;
        StructDetObjQualifierSet set;
        StructDetObjQualifierSetGroup group;
        if (KorOdbcGUI::getDetViewDimPointSelection(name, selection) != 1)
            continue;
        if (KorOdbcGUI::getDetObjQualifierSet(KorOdbcKey(selection.qualifierSetKey), set) != 1 ||
            KorOdbcGUI::getDetObjQualifierSetGroup(KorOdbcKey(set.groupKey), group) != 1) {
            tree.addEntry(name, pictures.of(selection));
            continue;
        }
        const KorString branch = SelectionFills::path(group.name, set.name);
        tree.addGroup(group.name, row.groupIcon);
        tree.addGroup(branch, row.groupIcon);
        tree.addEntry(SelectionFills::path(branch, name), pictures.of(selection));
    }
}

/// View requests can be filed in several categories, or in none.
void collectViewRequests(VELComboTreeBuilder& tree, const FillRow& row, Pictures&) {
    KorArray<StructDetBaseCategory> categories;
    KorArray<StructDetViewRequestCategory> filings;
    KorArray<StructDetViewRequest> requests;
    KorOdbcGUI::getDetBaseCategoriesTable(categories);
    KorODBCDetStyle::getDetViewRequestCategoriesTable(filings);
    KorODBCDetStyle::getDetViewRequestTable(requests);
    sortBy(categories, &Utilities::compareDetBaseCategories);
    sortBy(requests, &Utilities::compareViewRequests);

    std::map<std::int32_t, std::vector<KorString>> namesIn;
    for (const StructDetBaseCategory& category : categories)
        namesIn[category.key];
    std::unordered_multimap<std::int32_t, std::int32_t> categoriesOf;
    for (const StructDetViewRequestCategory& filing : filings)
        if (namesIn.contains(filing.categoryKey))
            categoriesOf.emplace(filing.viewRequestKey, filing.categoryKey);
    std::vector<KorString> unfiled;
    for (const StructDetViewRequest& request : requests) {
        const auto [first, last] = categoriesOf.equal_range(request.key);
        for (auto it = first; it != last; ++it)
            namesIn[it->second].push_back(request.name);
        if (first == last)
            unfiled.push_back(request.name);
    }
    for (const StructDetBaseCategory& category : categories)
        addBranch(tree, row, category.name, namesIn[category.key]);
    if (!unfiled.empty())
        addBranch(tree, row, Prompts::ups(kWithoutCategory), unfiled);
}

constexpr FillRow kRows[] = {
    {SelectionFills::kQualifierSets, 33607, 0, 14,
     &collectGrouped<StructDetObjQualifierSetGroup, StructDetObjQualifierSet,
                     &KorOdbcGUI::getDetObjQualifierSetGroupTable,
                     &KorODBCDetStyle::getDetObjQualifierSetByGroup, &Utilities::compareGroupsQS,
                     &Utilities::compareQualifiers>},
    {SelectionFills::kAnnotationStrategies, 33608, 0, 10,
     &collectGrouped<StructDetObjAnnotationGroup, StructDetObjAnnotationStrategy,
                     &KorOdbcGUI::getDetObjAnnotationGroupList,
                     &KorODBCDetStyle::getDetObjAnnotationStrategyByGroup, &Utilities::compareGroupsAS,
                     &Utilities::compareAnnotations>},
    {SelectionFills::kDimRequests, 33609, 0, 11,
     &collectGrouped<StructDetViewDimRequestLinearGroup, StructDetViewDimRequestLinear,
                     &KorOdbcGUI::getDetViewDimRequestLinearGroupList,
                     &KorODBCDetViewDimRequestLinear::getDetViewDimRequestLinearByGroup,
                     &Utilities::compareGroupsDimRequest, &Utilities::compareDimRequests>},
    {SelectionFills::kPointSelections, 33533, 0, 19, &collectPointSelections},
    {SelectionFills::kViewRequests, 33534, 13, 22, &collectViewRequests},
};

void sendProgress(DsmProgress::eState state, int percent, const KorString& text) {
    DsmProgress message;
    message.state = state;
    message.percent = percent;
    message.text = text;
    KorDSMMainWindow::sendMessage(message);
}

KorImageListPtr globalImages() {
    if (KorDSMDefines::m_GlobalIcons.isEmpty())
        KorDSMDefines::loadGlobalIcons();
    auto images = std::make_shared<KorImageList>();
    for (const KorDSMDefines::Icon& icon : KorDSMDefines::m_GlobalIcons)
        images->append(icon.resource ? KorPictures::icon(icon.resource) : QIcon());
    return images;
}

// What a thumbnail of an entry shows.
KorThumbnails::Subject viewOf(KorTreeHandle entry) {
    const StructRecord* view =
        entry && entry->selectable ? CurrentRows::find(kTableViewRequest, entry->text) : nullptr;
    const SourceId source = CurrentRows::source();
    return view ? KorThumbnails::Subject{source.dsn, source.index, kTableViewRequest, view->key}
                : KorThumbnails::Subject();
}

void build(const FillRow& row, VELComboTree& combo, KorImageList& images) {
    const KorDSMBusy busy;
    VELComboTreeBuilder tree;
    const KorString text = Prompts::ups(row.prompt);
    tree.installHandlers([](int) { sendProgress(DsmProgress::kStart, 0, {}); },
                         [&](int percent) { sendProgress(DsmProgress::kStep, percent, text); },
                         [] { sendProgress(DsmProgress::kDone, 100, {}); });
    Pictures pictures(images, row.recordIcon);
    row.collect(tree, row, pictures);
    tree.build(combo);
}

} // namespace

void SelectionFills::fill(eFill what, VELComboTree& combo) {
    const FillRow& row = *std::ranges::find(kRows, what, &FillRow::what);
    const KorImageListPtr images = globalImages();
    combo.setImageList(images);
    if (what == kViewRequests)
        combo.setThumbnails(&viewOf);
    if (what == kQualifierSets)
        combo.setHint(&QualifierHints::sentenceOf);
    combo.fillWhenNeeded([&row, images](VELComboTree& opened) { build(row, opened, *images); },
                         row.recordIcon);
}

KorString SelectionFills::path(const KorString& group, const KorString& name) {
    return KorString::format("%s%s%s", {group, VELComboTree::GetPathDelimiter(), name});
}

KorString SelectionFills::nameOf(const KorString& path) {
    const auto at = path.view().rfind(VELComboTree::GetPathDelimiter().view());
    return at == std::string_view::npos ? path : KorString(path.view().substr(at + 1));
}

KorString SelectionFills::viewRequestPath(const StructDetViewRequest& request) {
    KorArray<StructDetViewRequestCategory> filings;
    KorODBCDetStyle::getDetViewRequestCategories(KorOdbcKey(request.key), filings);
    for (const StructDetViewRequestCategory& filing : filings) {
        StructDetBaseCategory category;
        if (KorOdbcGUI::getDetBaseCategory(KorOdbcKey(filing.categoryKey), category) == 1)
            return path(category.name, request.name);
    }
    return path(Prompts::ups(kWithoutCategory), request.name);
}
