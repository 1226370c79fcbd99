#include "session/KorDSMCompaction.h"

#include "data/StyleDatabases.h"
#include "data/check/OrphanedParts.h"
#include "operations/KorDSNManager.h"
#include "operations/KorOdbcMan.h"
#include "services/Prompts.h"
#include "session/KorDSMItemSource.h"

#include <filesystem>

namespace {

constexpr int kNothing = 481; // ""%s" has no parts without an owner ..."
constexpr int kParts = 483;   // "In "%s" there are %s parts ..."

KorString sentenceOf(std::int64_t parts, const KorString& file) {
    return KorString::format(parts == 0 ? Prompts::dsm(kNothing) : Prompts::counted(kParts, parts),
                             {file, KorString::number(parts)});
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
    return Plan{parts, sentenceOf(static_cast<std::int64_t>(parts),
                                  std::filesystem::path(source.store().name()).filename().string())};
}

bool KorDSMCompaction::run(SourceId source) {
    const KorDSNRequest request(source.dsn, source.index);
    return KorOdbcCompactDetailsTables::startCompactProcess(source.dsn, 0,
                                                            KorOdbcCompactDetailsTables::kUnusedParts) > 0;
}
