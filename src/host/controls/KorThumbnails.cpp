#include "controls/KorThumbnails.h"

#include "base/EditorSession.h"

#include <QPointer>

namespace {

struct Maker {
    QPointer<KorThumbnails> thumbnails;
};

} // namespace

KorThumbnails* KorThumbnails::current() {
    return EditorSession::currentPart<Maker>().thumbnails;
}

void KorThumbnails::setCurrent(KorThumbnails* thumbnails) {
    EditorSession::currentPart<Maker>().thumbnails = thumbnails;
}
