#include "session/KorDSMCompaction.h"

#include "data/StyleDatabases.h"
#include "data/check/OrphanedParts.h"
#include "operations/KorDSNManager.h"
#include "operations/KorOdbcMan.h"
#include "services/Prompts.h"
#include "session/KorDSMItemSource.h"

#include <filesystem>

namespace {

constexpr int kNothing = 481;   // ""%s" has no parts without an owner ..."
constexpr int kOnePart = 482;   // "In "%s" there is one part ..."
constexpr int kManyParts = 483; // "In "%s" there are %s parts ..."

KorString sentenceOf(std::size_t parts, const KorString& file) {
    return parts > 1 ? KorString::format(Prompts::dsm(kManyParts),
                                         {file, KorString::number(static_cast<std::int64_t>(parts))})
                     : KorString::format(Prompts::dsm(parts == 0 ? kNothing : kOnePart), {file});
}

} // namespace

bool KorDSMCompaction::isFor(const KorDSMDatabaseItem& item) {
    const bool isSource =
        item.type() == KorDSMDefines::kDatabaseContent || item.type() == KorDSMDefines::kAddInContent;
    return isSource && StyleDatabases::current().isEditable(KorDSMItemSource::sourceOf(&item));
}

KorDSMCompaction::Plan KorDSMCompaction::plan(SourceId id) {
    Plan plan;
    StyleSource& source = *StyleDatabases::current().source(id);
    if (const StoreResult whole = source.complete(); !whole) {
        plan.refusal = KorString(whole.error);
        return plan;
    }
    plan.parts = orphanedParts(source).size();
    plan.sentence = sentenceOf(plan.parts, std::filesystem::path(source.store().name()).filename().string());
    return plan;
}

bool KorDSMCompaction::run(SourceId source) {
    const KorDSNRequest request(source.dsn, source.index);
    return KorOdbcCompactDetailsTables::startCompactProcess(source.dsn, 0,
                                                            KorOdbcCompactDetailsTables::kUnusedParts) > 0;
}
