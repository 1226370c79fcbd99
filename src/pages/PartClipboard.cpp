#include "pages/PartClipboard.h"

#include "controls/KorQt.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace {

QString formatOf(const KorDSMPartList& list) {
    return QStringLiteral("application/x-detail-style-rows.") + QString::fromStdString(list.table().name);
}

const QMimeData* held() {
    return QGuiApplication::clipboard()->mimeData();
}

} // namespace

void PartClipboard::put(const KorDSMPartList& list, const KorDSMPartList::Keys& rows) {
    const QString text = toQt(list.textOf(rows));
    auto* data = new QMimeData;
    data->setData(formatOf(list), text.toUtf8());
    data->setText(text);
    QGuiApplication::clipboard()->setMimeData(data);
}

bool PartClipboard::holds(const KorDSMPartList& list) {
    return held() && held()->hasFormat(formatOf(list));
}

KorString PartClipboard::take(const KorDSMPartList& list) {
    return holds(list) ? fromQt(QString::fromUtf8(held()->data(formatOf(list)))) : KorString();
}
