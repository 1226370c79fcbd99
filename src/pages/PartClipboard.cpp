#include "pages/PartClipboard.h"

#include "base/EditorSession.h"
#include "controls/KorQt.h"
#include "session/KorDSMCopiedRows.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHash>
#include <QMimeData>

namespace {

constexpr QLatin1String kFormats("application/x-detail-style-rows.");

QString formatOf(const KorDSMEditedList& list) {
    return kFormats + QString::fromStdString(findTable(list.recordTable())->name);
}

/// The rows that were on the clipboard last. On some desktops the clipboard is empty as soon as the program
/// is gone that copied: what the others saw there can be pasted all the same.
class LastRows : public QObject {
public:
    LastRows() {
        connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &LastRows::look);
        look();
    }

    /// Empty where the clipboard holds something else by now.
    QByteArray in(const QString& format) const {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        if (data && data->hasFormat(format))
            return data->data(format);
        return !data || data->formats().isEmpty() ? m_rows.value(format) : QByteArray();
    }

private:
    void look() {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        if (!data || data->formats().isEmpty())
            return;
        m_rows.clear();
        for (const QString& format : data->formats())
            if (format.startsWith(kFormats))
                m_rows[format] = data->data(format);
    }

    QHash<QString, QByteArray> m_rows; // by format
};

QByteArray held(const KorDSMEditedList& list) {
    return EditorSession::currentPart<LastRows>().in(formatOf(list));
}

} // namespace

void PartClipboard::watch() {
    EditorSession::currentPart<LastRows>();
}

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
    return !held(list).isEmpty();
}

std::unique_ptr<KorDSMCopiedRows> PartClipboard::take(const KorDSMEditedList& list) {
    const QByteArray rows = held(list);
    return rows.isEmpty() ? nullptr
                          : KorDSMCopiedRows::read(KorString(rows.toStdString()), list.recordTable());
}
