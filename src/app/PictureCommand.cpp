#include "app/Commands.h"
#include "app/Console.h"
#include "app/OutputFile.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "data/RowClosure.h"
#include "data/check/StillMissing.h"
#include "drawing/Governed.h"
#include "drawing/SampleParts.h"
#include "drawing/StyleDrawing.h"
#include "drawing/WhyNothing.h"
#include "records/StyleRecords.h"
#include "services/KorResources.h"
#include "services/KorTextFile.h"
#include "session/DataFolder.h"
#include "session/KorDSMSampleParts.h"
#include "session/StyleSheet.h"
#include "shell/DrawingFile.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

int failed(const KorString& sentence) {
    Console::complain(sentence);
    return kExitFailed;
}

// The name of the view that is wanted alone, as a key; 0 where all are.
Result<std::int32_t> viewOf(const RowChoice& style, const std::string& name) {
    if (name.empty())
        return 0;
    StyleSource& source = *StyleDatabases::current().source(style.source);
    const auto& record = static_cast<const StructDetailStyle&>(*style.record());
    const StructRecord* view = source.table(kTableViewRequest).find(KorString(name));
    for (int i = 0; view && i < record.getLengthItems(); ++i)
        if (record.getViewRequestAt(i) == view->key)
            return view->key;
    return Result<>::failure(
        KorString::format(translated("The detail style \"%s\" has no view \"%s\"."), {record.name, name}));
}

// The primitives of the drawing that a column of a record governs; where none, the drawing notes why.
Result<Governed::Places> highlighted(Drawing& drawing, const DrawingOptions& options, const RowChoice& style,
                                     const SamplePart& part, const DrawingRequest& request) {
    if (options.highlight.size() != 3)
        return Governed::Places();
    const FoundRow found = RowChoice::find(
        {options.highlight[0], options.highlight[1], SourceChoice::nameOf(style.source).toStdString()});
    if (!found)
        return Result<>::failure(found.error);
    const RowChoice& row = found.value;
    const Result<const Column*> column =
        TypedValue::findColumn(*row.table, TypedValue::columnsOf(*row.table), options.highlight[2]);
    if (!column)
        return Result<>::failure(column.error);
    const Governed::Places places = Governed(drawing).by(*StyleDatabases::current().source(style.source),
                                                         row.ref(), column.value->number);
    if (places.empty())
        drawing.notes.push_back(WhyNothing::sentenceFor(*StyleDatabases::current().source(style.source),
                                                        row.ref(), column.value->number, part, request));
    return places;
}

void report(const Drawing& drawing, std::size_t highlighted, const DrawingOptions& options) {
    if (!options.json) {
        for (const std::string& note : drawing.notes)
            Console::complain(note);
        Console::sayStored(KorString::format(translated("\"%s\" of the part \"%s\" was drawn into \"%s\"."),
                                             {drawing.style, drawing.part, options.file}));
        return;
    }
    QJsonArray views;
    for (const ViewPicture& view : drawing.views)
        views.append(QJsonObject{{"name", Console::text(view.name)},
                                 {"scale", view.scale},
                                 {"primitives", static_cast<qint64>(view.primitives.size())}});
    QJsonArray notes;
    for (const std::string& note : drawing.notes)
        notes.append(Console::text(note));
    Console::print(QJsonObject{{"style", Console::text(drawing.style)},
                               {"part", Console::text(drawing.part)},
                               {"file", Console::text(options.file)},
                               {"width", drawing.box().width()},
                               {"height", drawing.box().height()},
                               {"views", views},
                               {"highlighted", static_cast<qint64>(highlighted)},
                               {"notes", notes}});
}

// What the style and all that it uses lack before drawings can be made with them.
void noteMissing(StyleSource& source, std::int32_t style, Drawing& drawing) {
    for (const RowRef row : closureOf(source, {kTableDetailStyle, style}))
        for (const StillMissing& missing : stillMissing(source, row)) {
            const KorString lack = KorString::format(
                translated("The %s \"%s\" is not ready for drawings yet: it has no %s."),
                {findTable(row.table)->rowName(), source.table(row.table).find(KorOdbcKey(row.key))->name,
                 (missing.column ? findTable(missing.column->target) : missing.table)->rowName()});
            const KorString whole = wholeSentence(source, row);
            drawing.notes.push_back((whole.isEmpty() ? lack : lack + " " + whole).toStdString());
        }
}

} // namespace

int pictureCommand(DataFolder& folder, const DrawingOptions& options) {
    const std::filesystem::path target = options.file;
    if (!DrawingFile::isKnown(target))
        return failed(KorString::format(
            translated(
                "\"%s\" was not drawn: a picture is a file with a name that ends in .svg, .png or .pdf."),
            {options.file}));
    if (const KorString hindrance = OutputFile::hindrance(options.file, options.overwrite);
        !hindrance.isEmpty())
        return failed(hindrance);
    const FoundRow found = RowChoice::find(options.row);
    const bool lost = complainOfReading();
    if (found.tell() != kExitDone)
        return found.code;
    const RowChoice& row = found.value;
    const Result<std::int32_t> view = viewOf(row, options.view);
    if (!view)
        return failed(view.error);
    const std::filesystem::path parts = KorResources::folder() / "parts";
    StyleSource& source = *StyleDatabases::current().source(row.source);
    const Result<SamplePart> part = SampleParts::read(
        parts, options.part.empty() ? KorDSMSampleParts(parts).suiting(source, row.key) : options.part);
    if (!part)
        return failed(part.error);
    const DrawingRequest request = {row.key, view.value, folder.path() / "Shared" / "Support", {}};
    Drawing drawing = drawStyle(source, part.value, request);
    noteMissing(source, row.key, drawing);
    const Result<Governed::Places> places = highlighted(drawing, options, row, part.value, request);
    if (!places)
        return failed(places.error);
    PicturePage page = pageOf(drawing);
    page.highlighted = places.value;
    if (options.sheet)
        page = StyleSheet::pageOf(page, drawing, row.source, row.key);
    const Result<> written = KorTextFile::replace(std::filesystem::absolute(target),
                                                  DrawingFile::bytes(target, page), options.overwrite);
    if (!written)
        return failed(written.error);
    report(drawing, places.value.size(), options);
    return complainOfReading() || lost ? kExitFailed : kExitDone;
}
