#pragma once

#include "base/KorString.h"

#include <QByteArrayView>
#include <QString>

/// The one place where texts cross between the windows and everything below them.
inline QString toQt(const KorString& text) {
    return QString::fromUtf8(text.view().data(), static_cast<qsizetype>(text.size()));
}

inline KorString fromQt(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return KorString(std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
}
