#include "drawing/MapExplanation.h"

#include "base/Translation.h"
#include "data/text/TextFields.h"
#include "drawing/DrawingContext.h"
#include "records/OwnWords.h"

namespace {

// The word of the source for a number, as the list that users choose from has it.
template <typename R>
KorString wordFor(StyleRows& rows, std::int32_t R::*number, int value) {
    const auto all = rows.rows<R>([](const R&) { return true; });
    const auto found = std::ranges::find_if(all, [&](const R* row) { return row->*number == value; });
    return found == all.end() ? KorString::number(value) : OwnWords::nameOf(tableOf<R>, **found);
}

std::string wordsOf(const PropertyTest& test) {
    if (test.kind == PropertyTest::kRange)
        return KorString::format(translated("from %s to %s"),
                                 {TextFields::number(test.minimum), TextFields::number(test.maximum)})
            .toStdString();
    std::string words;
    for (const std::string& value : test.values)
        words += (words.empty() ? "" : ", ") + value;
    return words;
}

std::string ownValue(const PropertyTest& test, const PartObject& object) {
    const auto own = object.properties.find(test.property);
    return own == object.properties.end() ? std::string() : own->second.text;
}

KorString whyExcludes(const AskedQualifier& asked, const PartObject& object) {
    return asked.test.kind == PropertyTest::kPresent
               ? KorString::format(translated("It excludes what has \"%s\", and this has it."),
                                   {asked.propertyName})
               : KorString::format(translated("It excludes \"%s\" as \"%s\" (%s), and here it is %s."),
                                   {asked.propertyName, asked.filterName, wordsOf(asked.test),
                                    ownValue(asked.test, object)});
}

// Why a qualifier does not hold for an object, or why that is not known.
KorString whyFails(StyleRows& rows, const AskedQualifier& asked, const PartObject& object, eAnswer answer) {
    if (!asked.isKnown)
        return translated("One of its qualifiers refers to something that is not there.");
    if (answer == eAnswer::kUnknown)
        return KorString::format(
            translated("What the filter \"%s\" with the expression \"%s\" means is not known here."),
            {asked.filterName, asked.expression});
    if (asked.negate)
        return whyExcludes(asked, object);
    if (asked.type != static_cast<int>(object.type))
        return KorString::format(
            translated("It asks for \"%s\" (%s), but this is of the type \"%s\"."),
            {asked.propertyName, wordFor(rows, &StructDetModelType::modelType, asked.type),
             wordFor(rows, &StructDetModelType::modelType, static_cast<int>(object.type))});
    if (asked.roleNumber != 0 && asked.roleNumber != static_cast<int>(object.role))
        return KorString::format(translated("It asks for the role \"%s\", but this has the role \"%s\"."),
                                 {wordFor(rows, &StructModelRole::role, asked.roleNumber),
                                  wordFor(rows, &StructModelRole::role, static_cast<int>(object.role))});
    const std::string own = ownValue(asked.test, object);
    return own.empty()
               ? KorString::format(translated("It asks for \"%s\", which this does not have."),
                                   {asked.propertyName})
               : KorString::format(translated("It asks for \"%s\" to be \"%s\" (%s), but here it is %s."),
                                   {asked.propertyName, asked.filterName, wordsOf(asked.test), own});
}

// What made the answer of a set, and that in words.
struct Answered {
    eAnswer answer;
    std::int32_t culprit = 0;
    KorString why;
};

Answered answerOf(StyleRows& rows, const AskedSet& set, const PartObject& object) {
    if (set.saysNothing())
        return {eAnswer::kUnknown, 0,
                translated("It has no qualifier set, or an empty one, so nobody knows what it fits.")};
    Answered answered{ObjectMatch::picks(rows, set, object), 0, {}};
    if (answered.answer == eAnswer::kYes)
        return answered;
    for (const AskedQualifier& qualifier : set.qualifiers)
        if (answered.culprit == 0 && ObjectMatch::holds(rows, qualifier, object) == answered.answer) {
            answered.culprit = qualifier.key;
            answered.why = whyFails(rows, qualifier, object, answered.answer);
        }
    if (!set.all && set.qualifiers.size() > 1 && answered.answer == eAnswer::kNo) {
        answered.why =
            KorString::format(translated("None of its qualifiers holds. The first one: %s"), {answered.why});
    }
    return answered;
}

} // namespace

MapExplanation::MapExplanation(StyleSource& source, std::int32_t map, const SamplePart& part,
                               std::vector<int> objects, std::set<std::int32_t> entriesOff)
    : m_rows(source), m_map(map), m_part(part), m_objects(std::move(objects)), m_off(std::move(entriesOff)) {}

MapExplanation::Entries MapExplanation::entries() {
    return ObjectMatch::entriesOf(m_rows, m_map);
}

std::vector<EntryCount> MapExplanation::counts() {
    std::vector<EntryCount> counts;
    const Entries all = entries();
    std::vector<const AskedSet*> sets;
    for (const StructDetObjReprMapKey* entry : all) {
        sets.push_back(&AskedSet::of(m_rows, entry->qualifierSetKey));
        counts.push_back({entry->key, m_off.contains(entry->key), {}, {}, {}});
    }
    for (const int object : m_objects) {
        std::int32_t decided = 0;
        bool isUnknown = false;
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (counts[i].isOff)
                continue;
            const eAnswer answer =
                ObjectMatch::picks(m_rows, *sets[i], m_part.objects[static_cast<std::size_t>(object)]);
            if (answer == eAnswer::kYes && decided != 0)
                counts[i].takenBefore.push_back({object, decided});
            else if (answer != eAnswer::kNo && decided == 0 && !isUnknown)
                (answer == eAnswer::kYes ? counts[i].takes : counts[i].unknown).push_back(object);
            if (answer == eAnswer::kYes && !isUnknown && decided == 0)
                decided = all[i]->key;
            isUnknown = isUnknown || (answer == eAnswer::kUnknown && decided == 0);
        }
    }
    return counts;
}

std::vector<EntryReason> MapExplanation::reasonsFor(int index) {
    const PartObject& object = m_part.objects.at(static_cast<std::size_t>(index));
    std::vector<EntryReason> reasons;
    std::size_t decided = 0; // number of the entry that decides, or of the one that nobody knows of
    bool isUnknown = false;
    for (const StructDetObjReprMapKey* entry : entries()) {
        const AskedSet& set = AskedSet::of(m_rows, entry->qualifierSetKey);
        EntryReason reason{entry->key, EntryReason::kOff, 0, {}};
        const Answered answered = answerOf(m_rows, set, object);
        KorString words = translated("It is switched off on trial.");
        if (!m_off.contains(entry->key)) {
            words = answered.why;
            reason.culprit = answered.culprit;
            if (answered.answer == eAnswer::kNo) {
                reason.reason = EntryReason::kFails;
            } else if (decided != 0) {
                reason.reason = isUnknown ? EntryReason::kUnknown : EntryReason::kTakenBefore;
                reason.culprit = reasons[decided - 1].entry;
                words = KorString::format(
                    isUnknown
                        ? translated("Whether entry %d before it fits is not known, so this one decides "
                                     "nothing.")
                    : answered.answer == eAnswer::kUnknown
                        ? translated("Entry %d before it decides.")
                        : translated("It fits, but entry %d before it decides."),
                    {KorString::number(static_cast<std::int64_t>(decided))});
            } else {
                isUnknown = answered.answer == eAnswer::kUnknown;
                reason.reason = isUnknown ? EntryReason::kUnknown : EntryReason::kDecides;
                decided = reasons.size() + 1;
                if (!isUnknown)
                    words = translated("It decides.");
            }
        }
        reason.sentence = words.toStdString();
        reasons.push_back(std::move(reason));
    }
    return reasons;
}

std::vector<int> MapExplanation::objectsOf(StyleSource& source, std::int32_t style, const SamplePart& part) {
    StyleRows rows(source);
    const auto* record = rows.row<StructDetailStyle>(style);
    if (record && part.main()) {
        static const StructDetHcadSettings kPlain;
        Pens pens(rows, kPlain, {});
        SeenLines seen;
        DrawingContext context{rows, pens, *record, part, seen, {}, {}};
        selectObjects(context);
        return context.shown;
    }
    std::vector<int> all(part.objects.size());
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = static_cast<int>(i);
    return all;
}

std::vector<int> SetExplanation::picked(eAnswer answer) {
    std::vector<int> picked;
    for (std::size_t i = 0; i < m_part.objects.size(); ++i)
        if (ObjectMatch::picks(m_rows, m_set, m_part.objects[i]) == answer)
            picked.push_back(static_cast<int>(i));
    return picked;
}

std::vector<QualifierCount> SetExplanation::counts() {
    std::vector<QualifierCount> counts;
    for (const AskedQualifier& qualifier : AskedSet::of(m_rows, m_set).qualifiers) {
        QualifierCount& count = counts.emplace_back(QualifierCount{qualifier.key, {}, {}});
        for (std::size_t i = 0; i < m_part.objects.size(); ++i) {
            const eAnswer answer = ObjectMatch::holds(m_rows, qualifier, m_part.objects[i]);
            if (answer != eAnswer::kNo)
                (answer == eAnswer::kYes ? count.holds : count.unknown).push_back(static_cast<int>(i));
        }
    }
    return counts;
}
