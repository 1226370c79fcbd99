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

Result<KorDSMCompaction::Plan> KorDSMCompaction::plan(SourceId id) {
    StyleSource& source = *StyleDatabases::current().source(id);
    if (Result<> whole = source.complete(); !whole)
        return whole;
    const std::size_t parts = orphanedParts(source).size();
    return Plan{parts, sentenceOf(parts, std::filesystem::path(source.store().name()).filename().string())};
}

bool KorDSMCompaction::run(SourceId source) {
    const KorDSNRequest request(source.dsn, source.index);
    return KorOdbcCompactDetailsTables::startCompactProcess(source.dsn, 0,
                                                            KorOdbcCompactDetailsTables::kUnusedParts) > 0;
}
