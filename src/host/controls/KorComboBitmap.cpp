#include "controls/KorComboBitmap.h"

#include "controls/KorPictures.h"
#include "controls/KorQt.h"

#include <QSignalBlocker>

namespace {

constexpr int kHeight = 32;

} // namespace

KorComboBitmap::KorComboBitmap(QWidget* parent) : KorComboBox(parent) {
    setIconSize(QSize(16, 16));
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT valueSelected(selectedValue()); });
}

void KorComboBitmap::addBitmap(int pictureId, const KorString& text, int value) {
    QSize size = KorPictures::bitmapSize(pictureId);
    if (size.height() > kHeight)
        size.scale(QSize(4 * kHeight, kHeight), Qt::KeepAspectRatio);
    setIconSize(iconSize().expandedTo(size));
    addItem(KorPictures::bitmap(pictureId), toQt(text), value);
}

void KorComboBitmap::selectValue(int value) {
    const QSignalBlocker quiet(this);
    setCurrentIndex(findData(value));
}

int KorComboBitmap::selectedValue(int none) const {
    return currentIndex() < 0 ? none : currentData().toInt();
}
