#include "shell/DeletionQuestion.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMRecordState.h"

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
