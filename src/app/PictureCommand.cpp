#include "app/Commands.h"
#include "app/Console.h"
#include "app/DidYouMean.h"
#include "app/OutputFile.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "app/TypedValue.h"
#include "base/Translation.h"
#include "records/StyleRecords.h"
#include "services/KorResources.h"
#include "services/KorTextFile.h"
#include "session/DataFolder.h"
#include "session/StylePicture.h"
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
    std::vector<KorString> names;
    for (int i = 0; i < record.getLengthItems(); ++i)
        if (const StructRecord* view =
                source.table(kTableViewRequest).find(KorOdbcKey(record.getViewRequestAt(i)))) {
            if (view->name == KorString(name))
                return view->key;
            names.push_back(view->name);
        }
    return Result<>::failure(
        KorString::format(translated("The detail style \"%s\" has no view \"%s\"."), {record.name, name}) +
        didYouMean(KorString(name), names));
}

// The cell that is to be highlighted goes into the wish; fails where there is none of these names.
Result<> highlight(const DrawingOptions& options, StylePictureWish& wish) {
    if (options.highlight.size() != 3)
        return {};
    const FoundRow found = RowChoice::find(
        {options.highlight[0], options.highlight[1], SourceChoice::nameOf(wish.source).toStdString()});
    if (!found)
        return Result<>::failure(found.error);
    const TableSchema& table = *found.value.table;
    const Result<const Column*> column =
        TypedValue::findColumn(table, TypedValue::columnsOf(table), options.highlight[2]);
    if (!column)
        return Result<>::failure(column.error);
    wish.governing = found.value.ref();
    wish.column = column.value->number;
    return {};
}

void report(const StylePicture& picture, const DrawingOptions& options) {
    const Drawing& drawing = picture.drawing;
    if (!options.json) {
        for (const std::string& note : drawing.notes)
            Console::complain(note);
        Console::sayStored(KorString::format(translated("\"%s\" of the part \"%s\" was drawn into \"%s\"."),
                                             {drawing.style, translated(drawing.part), options.file}));
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
                               {"highlighted", static_cast<qint64>(picture.page.highlighted.size())},
                               {"notes", notes}});
}

} // namespace

int pictureCommand(DataFolder& folder, const DrawingOptions& options) {
    const std::filesystem::path target = options.file;
    if (!DrawingFile::isKnown(target))
        return failed(KorString::format(
            translated(
                "\"%s\" was not drawn: a picture is a file with a name that ends in .svg, .png or .pdf."),
            {options.file}));
    if (const KorString hindrance = OutputFile::hindranceOfPicture(options.file, options.overwrite);
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
    StylePictureWish wish;
    wish.source = row.source;
    wish.style = row.key;
    wish.view = view.value;
    wish.parts = KorResources::folder() / "parts";
    wish.part = options.part;
    wish.support = folder.path() / "Shared" / "Support";
    wish.onSheet = options.sheet;
    if (const Result<> marked = highlight(options, wish); !marked)
        return failed(marked.error);
    const Result<StylePicture> picture = pictureOf(wish);
    if (!picture)
        return failed(picture.error);
    const Result<> written = KorTextFile::replace(
        std::filesystem::absolute(target), DrawingFile::bytes(target, picture.value.page), options.overwrite);
    if (!written)
        return failed(written.error);
    report(picture.value, options);
    return complainOfReading() || lost ? kExitFailed : kExitDone;
}
