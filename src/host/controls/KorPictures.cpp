#include "controls/KorPictures.h"

#include "base/EditorSession.h"
#include "controls/KorQt.h"

#include <QFile>
#include <QHash>
#include <QSet>
#include <QSvgRenderer>

namespace {

struct Shelf {
    QString base;
    std::function<void(const KorString&)> missing;
    std::function<KorString(int)> descriptions;
    QHash<QString, QIcon> icons;
    QSet<QString> reported;
};

Shelf& shelf() {
    return EditorSession::currentPart<Shelf>();
}

/// The full file name of a picture, or an empty text (and a report, the first time) when there is none.
QString find(const QString& path) {
    Shelf& s = shelf();
    QString file = s.base + u'/' + path;
    if (QFile::exists(file))
        return file;
    if (!s.reported.contains(path)) {
        s.reported.insert(path);
        if (s.missing)
            s.missing(fromQt(path));
    }
    return {};
}

QIcon load(const QString& path) {
    Shelf& s = shelf();
    if (const auto known = s.icons.constFind(path); known != s.icons.constEnd())
        return *known;
    const QString file = find(path);
    return *s.icons.insert(path, file.isEmpty() ? QIcon() : KorPictures::fromFile(file));
}

QString bitmapPath(int number) {
    return QStringLiteral("bitmaps/%1.svg").arg(number);
}

} // namespace

void KorPictures::setBase(const KorString& base) {
    Shelf& s = shelf();
    s.base = toQt(base);
    s.icons.clear();
    s.reported.clear();
}

void KorPictures::setMissingSink(std::function<void(const KorString&)> sink) {
    shelf().missing = std::move(sink);
}

void KorPictures::setDescriptions(std::function<KorString(int)> describe) {
    shelf().descriptions = std::move(describe);
}

KorString KorPictures::description(int number) {
    return shelf().descriptions ? shelf().descriptions(number) : KorString();
}

QIcon KorPictures::fromFile(const QString& file) {
    QIcon icon(file);
    // On a selected row the style would tint the picture until nothing of it can be seen.
    icon.addFile(file, QSize(), QIcon::Selected);
    return icon;
}

QIcon KorPictures::icon(int number) {
    return namedIcon(KorString::number(number));
}

QIcon KorPictures::namedIcon(const KorString& name) {
    return load(QStringLiteral("icons/%1.svg").arg(toQt(name)));
}

QIcon KorPictures::bitmap(int number) {
    return load(bitmapPath(number));
}

QIcon KorPictures::buttonBitmap(int number, int checkedNumber, int disabledNumber) {
    QIcon icon = bitmap(number);
    const auto add = [&icon](int other, QIcon::Mode mode, QIcon::State state) {
        const QString file = other ? find(bitmapPath(other)) : QString();
        if (!file.isEmpty())
            icon.addFile(file, QSize(), mode, state);
    };
    add(checkedNumber, QIcon::Normal, QIcon::On);
    add(disabledNumber, QIcon::Disabled, QIcon::Off);
    return icon;
}

QSize KorPictures::bitmapSize(int number) {
    const QString file = find(bitmapPath(number));
    return file.isEmpty() ? QSize() : QSvgRenderer(file).defaultSize();
}
