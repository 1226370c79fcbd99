#include "pages/PartClipboard.h"

#include "controls/KorQt.h"
#include "session/KorDSMCopiedRows.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace {

QString formatOf(const KorDSMEditedList& list) {
    return QStringLiteral("application/x-detail-style-rows.") +
           QString::fromStdString(findTable(list.recordTable())->name);
}

const QMimeData* held() {
    return QGuiApplication::clipboard()->mimeData();
}

} // namespace

KorString PartClipboard::put(const KorDSMEditedList& list, const KorDSMEditedList::Keys& rows) {
    std::vector<RowRef> records;
    for (const std::int32_t key : rows)
        records.push_back(list.record(key));
    const Result<KorString> copied = KorDSMCopiedRows::textOf(list.source(), records);
    if (!copied)
        return KorString(copied.error);
    auto* data = new QMimeData;
    data->setData(formatOf(list), QByteArray::fromStdString(copied.value.toStdString()));
    data->setText(toQt(list.textOf(rows)));
    QGuiApplication::clipboard()->setMimeData(data);
    return {};
}

bool PartClipboard::holds(const KorDSMEditedList& list) {
    return held() && held()->hasFormat(formatOf(list));
}

std::unique_ptr<KorDSMCopiedRows> PartClipboard::take(const KorDSMEditedList& list) {
    return holds(list) ? KorDSMCopiedRows::read(KorString(held()->data(formatOf(list)).toStdString()),
                                                list.recordTable())
                       : nullptr;
}
