#include "drawing/DrawingSubject.h"

#include "base/Translation.h"
#include "data/StyleSource.h"
#include "records/StyleRecords.h"
#include "records/TableDeclarations.h"

#include <algorithm>
#include <set>

namespace {

// What uses a row, over any number of steps: the styles, and the views on the way there.
class Upwards {
public:
    explicit Upwards(StyleSource& source) : m_source(source) {}

    void follow(const RowRef& row) {
        std::vector<RowRef> left = {row};
        while (!left.empty()) {
            const RowRef next = left.back();
            left.pop_back();
            const StructRecord* record = m_source.table(next.table).find(KorOdbcKey(next.key));
            if (!record || !m_seen.insert(next).second)
                continue;
            for (const Column& column : findTable(next.table)->columns)
                if (column.role == eReferenceRole::kPartOf && column.isReference())
                    left.push_back({column.target, column.integerIn(record)});
            for (const Referrer& referrer : m_source.referrersOf(next.table, KorOdbcKey(next.key)))
                if (referrer.column->role == eReferenceRole::kUses)
                    left.push_back({referrer.table->type, referrer.key});
        }
    }
    bool met(eTableType table, std::int32_t key) const { return m_seen.contains({table, key}); }
    std::int32_t style(std::int32_t preferred) const {
        if (met(kTableDetailStyle, preferred))
            return preferred;
        const auto first = m_seen.lower_bound({kTableDetailStyle, 1});
        return first != m_seen.end() && first->table == kTableDetailStyle ? first->key : 0;
    }

private:
    StyleSource& m_source;
    std::set<RowRef> m_seen;
};

} // namespace

DrawingSubject DrawingSubject::of(StyleSource& source, const RowRef& row, std::int32_t preferredStyle) {
    Upwards users(source);
    users.follow(row);
    DrawingSubject subject;
    subject.style = users.style(preferredStyle);
    const auto* style = static_cast<const StructDetailStyle*>(
        source.table(kTableDetailStyle).find(KorOdbcKey(subject.style)));
    if (!style) {
        subject.style = 0;
        const TableSchema* table = findTable(row.table);
        const StructRecord* record = table ? source.table(row.table).find(KorOdbcKey(row.key)) : nullptr;
        subject.why =
            record ? KorString::format(
                         translated("No detail style uses the %s \"%s\", so nothing is drawn with it."),
                         {table->rowName(), record->name})
                         .toStdString()
                   : translated("There is nothing to be drawn.").toStdString();
        return subject;
    }
    for (int i = 0; i < style->getLengthItems(); ++i)
        if (users.met(kTableViewRequest, style->getViewRequestAt(i)))
            subject.views.push_back(style->getViewRequestAt(i));
    if (!subject.views.empty())
        subject.view = subject.views.front();
    return subject;
}
