#include "data/WriteRefusal.h"

#include "base/Translation.h"

namespace {

WriteResult refusal(WriteResult::eKind kind, const KorString& sentence) {
    return {kind, sentence.toStdString()};
}

KorString sentenceOf(const TableSchema& table, const Column& column, const CellValue& value,
                     eCellFault fault) {
    switch (fault) {
    case eCellFault::kNoName:
        return translated("The name must not be empty.");
    case eCellFault::kNameTaken:
        return KorString::format(translated("Another %s is named \"%s\"; choose another name."),
                                 {table.rowName(), std::get<KorString>(value)});
    default:
        return KorString::format(translated("Column \"%s\" cannot hold this value; enter another one."),
                                 {column.name});
    }
}

} // namespace

WriteResult WriteRefusal::notOpen() {
    return refusal(WriteResult::kFailed, translated("The database is not open; open it and try again."));
}

WriteResult WriteRefusal::noRow() {
    return refusal(WriteResult::kFailed,
                   translated("The definition no longer exists; reload the databases and try again."));
}

WriteResult WriteRefusal::noColumn() {
    return refusal(WriteResult::kFailed,
                   translated("There is no such column, so nothing was written; choose another one."));
}

WriteResult WriteRefusal::readOnly(const std::string& why) {
    return refusal(WriteResult::kReadOnlySource,
                   why.empty()
                       ? translated("The database may not be changed; choose the user's own database.")
                       : KorString(why));
}

WriteResult WriteRefusal::incomplete(Result<> reading) {
    return {WriteResult::kIncompleteSource, std::move(reading.error)};
}

WriteResult WriteRefusal::unfit(const TableSchema& table, const Column& column, const CellValue& value,
                                eCellFault fault) {
    return refusal(WriteResult::kFailed, sentenceOf(table, column, value, fault));
}

WriteResult WriteRefusal::full(std::string why) {
    return {WriteResult::kFailed, std::move(why)};
}
