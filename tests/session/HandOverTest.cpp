#include "SampleSession.h"

#include "operations/KorOdbcGUI.h"
#include "services/KorExchangeUtilities.h"
#include "session/KorDSMHandOver.h"

namespace {

/// What a used style leaves in the queue, in one line: number by number, or "-" for none.
class HandOver : public SampleSession {
protected:
    HandOver() {
        installAddIns({"bridges", "cranes"}, "UPDATE detail_master SET detail_key = 41, number = 17");
    }

    KorExchangeQueue& queue() {
        int status = 0;
        return KorExchangeUtilities::getNamedQueue(KorDSMHandOver::kQueue, status, 0);
    }
    std::string used(const KorDSMDatabaseItem& item) {
        const SourceId source = KorDSMItemSource::sourceOf(&item);
        const KorDSNRequest request(source.dsn, source.index);
        const bool isStyle = KorDSMHandOver::put(&item);
        EXPECT_EQ(queue().has("RESULT1"), isStyle);
        std::string line;
        for (const char* name : {"RESULT1", "RESULT2", "RESULT4"})
            line += (queue().has(name) ? std::to_string(queue().getInt(name)) : "-") + " ";
        return line + (queue().has("RESULT3") ? queue().getString("RESULT3").toStdString() : "-");
    }
    /// The pair of numbers by which drawings know a style, as the database file has them.
    std::string numbersOf(SourceId id, const KorString& name) {
        StructDetailMaster master;
        const KorDSNRequest request(id.dsn, id.index);
        EXPECT_EQ(
            KorOdbcGUI::getDetailMaster(static_cast<long>(row<StructDetailStyle>(id, name)->key), master), 1);
        return std::to_string(master.detailKey) + " " + std::to_string(master.number);
    }
};

} // namespace

TEST_F(HandOver, TheFourResultsSayWhichStyleOfWhichSourceIsUsed) {
    const SourceId cranes = SourceId::addIn(1);
    const KorString user = "HB post 1:15";
    const KorString standard =
        databases.source(SourceId::standard())->table(kTableDetailStyle).rows().at(0).name;
    EXPECT_EQ(used(item<StructDetailStyle>(SourceId::standard(), standard)),
              numbersOf(SourceId::standard(), standard) + " - Standard");
    KorDSMDatabaseItem& crane = item<StructDetailStyle>(cranes, user);
    EXPECT_EQ(used(crane), "41 17 1 Made for cranes");
    EXPECT_EQ(used(*expand(crane)[0]), "41 17 1 Made for cranes") << "a view in the style";
    EXPECT_EQ(used(item<StructDetailStyle>(SourceId::user(), user)),
              numbersOf(SourceId::user(), user) + " - User")
        << "nothing of the add-in stays behind";
    EXPECT_EQ(used(*crane.parent()), "- - - -") << "a category";
}
