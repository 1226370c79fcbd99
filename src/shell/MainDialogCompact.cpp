#include "controls/KorQt.h"
#include "data/check/OrphanedParts.h"
#include "operations/KorOdbcMan.h"
#include "services/Prompts.h"
#include "shell/KorDSMMainDialog.h"

#include <QMenu>
#include <QMessageBox>

#include <filesystem>

// The command of a source that removes the parts whose record does not exist.

namespace {

constexpr int kCompact = 480;
constexpr int kNothing = 481;   // ""%s" has no parts without an owner ..."
constexpr int kOnePart = 482;   // "In "%s" there is one part ..."
constexpr int kManyParts = 483; // "In "%s" there are %s parts ..."

bool isSource(const KorDSMDatabaseItem& item) {
    return item.m_Type == KorDSMDefines::kDatabaseContent || item.m_Type == KorDSMDefines::kAddInContent;
}

KorString question(std::size_t parts, const KorString& file) {
    return parts == 1 ? KorString::format(Prompts::dsm(kOnePart), {file})
                      : KorString::format(Prompts::dsm(kManyParts),
                                          {file, KorString::number(static_cast<std::int64_t>(parts))});
}

} // namespace

void KorDSMMainDialog::addCompactCommand(QMenu& menu, const KorDSMDatabaseItem& item) {
    const SourceId id = KorDSMItemSource::sourceOf(&item);
    if (!isSource(item) || !StyleDatabases::current().isEditable(id))
        return;
    menu.addSeparator();
    menu.addAction(toQt(Prompts::dsm(kCompact)), this, [this, id] { compact(id); });
}

void KorDSMMainDialog::compact(SourceId id) {
    finishCurrentPage();
    StyleSource& source = *StyleDatabases::current().source(id);
    if (const StoreResult whole = source.complete(); !whole)
        return refuse(KorString(whole.error));
    const KorString file(std::filesystem::path(source.store().name()).filename().string());
    const std::size_t parts = orphanedParts(source).size();
    const QString caption = toQt(Prompts::dsm(kCompact)).remove(u'…').trimmed();
    if (parts == 0) {
        QMessageBox::information(this, caption, toQt(KorString::format(Prompts::dsm(kNothing), {file})));
        return;
    }
    if (QMessageBox::question(this, caption, toQt(question(parts, file))) != QMessageBox::Yes)
        return;
    const KorDSNRequest request(id.dsn, id.index);
    if (KorOdbcCompactDetailsTables::startCompactProcess(id.dsn, 0,
                                                         KorOdbcCompactDetailsTables::kUnusedParts) <= 0)
        return refuse({});
    setModified(true);
}
