#include "picture/PicturePage.h"

#include "base/Translation.h"

KorString schematicOf(const Drawing& drawing, const KorString& trial) {
    const KorString schematic =
        KorString::format(translated("Schematic, of the sample part \"%s\"; not the host's drawing"),
                          {translated(drawing.part)});
    return trial.isEmpty() ? schematic : trial + " " + schematic;
}

PicturePage pageOf(const Drawing& drawing, const KorString& trial) {
    constexpr double kMargin = 5; // mm around the drawing
    PicturePage page;
    page.title = drawing.style + ", " + translated(drawing.part).toStdString();
    for (const Primitive* primitive : drawing.all())
        page.primitives.push_back(*primitive);
    page.box = drawing.box();
    if (page.box.isEmpty())
        page.box.add(Vec2{});
    Primitive note;
    note.kind = Primitive::kText;
    note.purpose = Primitive::kTitle;
    note.text = schematicOf(drawing, trial).toStdString();
    note.style = {"Arial", 2.5, 8};
    note.points = {page.box.low - Vec2{0, 6}};
    page.box.add(note.box());
    page.primitives.push_back(std::move(note));
    page.box.low = page.box.low - Vec2{kMargin, kMargin};
    page.box.high = page.box.high + Vec2{kMargin, kMargin};
    return page;
}
