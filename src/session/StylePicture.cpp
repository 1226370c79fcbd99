#include "session/StylePicture.h"

#include "base/Translation.h"
#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "data/check/StillMissing.h"
#include "drawing/Governed.h"
#include "drawing/SampleParts.h"
#include "drawing/StyleDrawing.h"
#include "drawing/WhyNothing.h"
#include "session/KorDSMSampleParts.h"
#include "session/StyleSheet.h"

namespace {

// What the style and all that it uses lack before drawings can be made with them.
void noteMissing(StyleSource& source, std::int32_t style, Drawing& drawing) {
    for (const RowRef row : closureOf(source, {kTableDetailStyle, style}))
        for (const StillMissing& missing : stillMissing(source, row)) {
            const KorString lack = KorString::format(
                translated("The %s \"%s\" is not ready for drawings yet: it has no %s."),
                {findTable(row.table)->rowName(), source.table(row.table).find(KorOdbcKey(row.key))->name,
                 wordFor(missing)});
            const KorString whole = wholeSentence(source, row);
            drawing.notes.push_back((whole.isEmpty() ? lack : lack + " " + whole).toStdString());
        }
}

} // namespace

Result<StylePicture> pictureOf(const StylePictureWish& wish) {
    StyleSource& source = *StyleDatabases::current().source(wish.source);
    const Result<SamplePart> part = SampleParts::read(
        wish.parts,
        wish.part.empty() ? KorDSMSampleParts(wish.parts).suiting(source, wish.style) : wish.part);
    if (!part)
        return Result<>::failure(part.error);
    const DrawingRequest request = {wish.style, wish.view, wish.support, {}};
    StylePicture picture;
    picture.drawing = drawStyle(source, part.value, request);
    noteMissing(source, wish.style, picture.drawing);
    Governed::Places marked;
    if (wish.governing) {
        marked = Governed(picture.drawing).by(source, *wish.governing, wish.column);
        if (marked.empty())
            picture.drawing.notes.push_back(
                WhyNothing::sentenceFor(source, *wish.governing, wish.column, part.value, request));
    }
    picture.page = pageOf(picture.drawing);
    picture.page.highlighted = marked;
    if (wish.onSheet)
        picture.page = StyleSheet::pageOf(picture.page, picture.drawing, wish.source, wish.style);
    return picture;
}
