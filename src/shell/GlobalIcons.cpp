#include "shell/GlobalIcons.h"

#include "controls/KorPictures.h"
#include "model/KorDSMDefines.h"
#include "services/KordoBitmaps.h"

QIcon broughtIcon(const KorString& file) {
    return KorPictures::fromFile(QString::fromStdString(KordoBitmaps::pictureFile(file).string()));
}

void appendGlobalIcons(KorImageList& images) {
    KorDSMDefines::loadGlobalIcons();
    for (const KorDSMDefines::Icon& icon : KorDSMDefines::m_GlobalIcons)
        images.append(icon.file.isEmpty() ? KorPictures::icon(icon.resource) : broughtIcon(icon.file));
}
