#include "shell/DeletionQuestion.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMRecordState.h"
#include "session/KorDSMValueText.h"

#include <QCheckBox>
#include <QMessageBox>

std::optional<std::vector<RowRef>> askToDelete(QMessageBox& box, SourceId source,
                                               const std::vector<RowRef>& rows, QStringList notes) {
    constexpr int kDeleteToo = 1414; // "Delete these %s, too"
    const std::vector<RowRef> left = KorDSMRecordState::leftUnused(source, rows);
    QCheckBox* too = nullptr;
    if (!left.empty()) {
        notes << toQt(KorDSMRecordState::leftUnusedText(source, left));
        const auto count = static_cast<std::int64_t>(left.size());
        too = new QCheckBox(
            toQt(KorString::format(Prompts::counted(kDeleteToo, count), {KorString::number(count)})));
        box.setCheckBox(too); // the box owns it
    }
    box.setInformativeText(notes.join(u'\n'));
    if (box.exec() != QMessageBox::Yes)
        return std::nullopt;
    return too && too->isChecked() ? left : std::vector<RowRef>();
}

std::optional<std::vector<RowRef>> askToDelete(QWidget& window,
                                               const std::vector<KorDSMDatabaseItem*>& items) {
    constexpr int kDeleteMany = 495; // "Do you want to delete these %s definitions?"
    constexpr int kViewsLeave = 497; // "%s views are listed in it and stay; only the listing goes."
    const auto count = static_cast<std::int64_t>(items.size());
    int views = 0;
    QStringList names;
    std::vector<RowRef> rows;
    for (const KorDSMDatabaseItem* item : items) {
        names << toQt(KorDSMValueText::shortName(item->getDisplayName()));
        views += KorDSMItemCommands::viewsListedIn(*item);
        rows.push_back({item->tableType(), item->recordKey()});
    }
    QMessageBox box(QMessageBox::Information, toQt(Prompts::ups(19960)), {},
                    QMessageBox::Yes | QMessageBox::No, &window);
    box.setTextFormat(Qt::PlainText);
    box.setText(count == 1 ? toQt(KorString::format(Prompts::ups(19961), {fromQt(names.first())}))
                           : toQt(KorString::format(Prompts::dsm(kDeleteMany), {KorString::number(count)})));
    if (count > 1)
        box.setDetailedText(names.join(u'\n'));
    QStringList notes;
    if (views > 0)
        notes << toQt(KorString::format(Prompts::counted(kViewsLeave, views), {KorString::number(views)}));
    return askToDelete(box, KorDSMItemSource::sourceOf(items.front()), rows, notes);
}
