#include "session/KorDSMPreviewSubject.h"

#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "drawing/DrawingSubject.h"
#include "model/KorDSMFamilies.h"

KorDSMPreviewSubject KorDSMPreviewSubject::of(const KorDSMDatabaseItem* item) {
    KorDSMPreviewSubject subject;
    StyleSource* source = StyleDatabases::current().here();
    if (!source || !item || !item->record() || KorDSMDefines::isGroupType(item->type())) {
        subject.why = translated("Select a style, or something that styles use.").toStdString();
        return subject;
    }
    subject.source = source->id();
    subject.row = {item->tableType(), item->recordKey()};
    const KorDSMDatabaseItem* above = item->ancestor(KorDSMDefines::kDetailStyle);
    const std::int32_t preferred = above && above->record() ? above->recordKey() : 0;
    const DrawingSubject drawn = DrawingSubject::of(*source, subject.row, preferred);
    subject.style = drawn.style;
    subject.isBelowStyle = preferred != 0 && drawn.style == preferred;
    subject.why = drawn.why;
    return subject;
}
