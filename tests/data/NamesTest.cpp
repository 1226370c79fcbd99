#include "StyleFixture.h"

#include "data/FreeName.h"
#include "data/exchange/MasterNumbers.h"

#include <random>

namespace {

class Random {
public:
    explicit Random(unsigned seed) : m_random(seed) {}
    int upTo(int highest) { return std::uniform_int_distribution<>(1, highest)(m_random); }

private:
    std::mt19937 m_random;
};

// The lowest key of the rows of this name, found by looking at all of them.
std::int32_t lowestKey(const StyleTable& table, const KorString& name) {
    for (int i = 0; i < table.rows().size(); ++i)
        if (table.rows().at(i).name == name)
            return table.rows().at(i).key;
    return 0;
}

class NamesTest : public StyleFixture {};

TEST_F(NamesTest, NamesAreFoundAndFreeOnesNumberedWhateverCameAndWent) {
    StyleTable& table = databases.source(kUser)->table(kTableViewRequest);
    const Column& nameColumn = *table.schema().column(1);
    Random random(9);
    const auto someName = [&] {
        const int number = random.upTo(9) - 1;
        return number == 0 ? KorString("Front") : numberedName("Front", number);
    };
    for (int step = 0; step < 4000; ++step) {
        const std::int32_t key = random.upTo(30);
        StructDetViewRequest view;
        view.key = key;
        view.name = someName();
        if (!table.find(KorOdbcKey(key)))
            table.insert(view);
        else if (random.upTo(2) == 1)
            table.setCell(KorOdbcKey(key), nameColumn, view.name);
        else
            table.remove(KorOdbcKey(key));

        const KorString name = someName();
        const StructRecord* found = table.find(name);
        ASSERT_EQ(found ? found->key : 0, lowestKey(table, name)) << "step " << step;
        int number = 1;
        while (lowestKey(table, numberedName("Front", number)))
            ++number;
        ASSERT_EQ(table.numberedFreeName("Front"), numberedName("Front", number)) << "step " << step;
    }
}

TEST_F(NamesTest, EachMasterGetsTheFirstFreeNumberOfItsFamily) {
    constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
    std::set<std::pair<std::int32_t, std::int32_t>> taken;
    for (const int number : {2, 3, 7, kHighest}) {
        add<StructDetailMaster>(kUser, numberedName("other", number), {{}, 1, number});
        taken.insert({1, number});
    }
    StructDetailMaster own{{}, 1, 5};
    own.key = add<StructDetailMaster>(kUser, "own", own);
    EXPECT_EQ(freeMasterNumber(*databases.source(kUser), own), 5) << "its own number is free for it";
    taken.insert({1, 5});
    MasterNumbers numbers(*databases.source(kUser));
    Random random(9);
    for (int i = 0; i < 300; ++i) {
        const StructDetailMaster master{{}, random.upTo(2), random.upTo(40)};
        std::int32_t expected = master.number;
        while (taken.contains({master.detailKey, expected}))
            ++expected;
        ASSERT_EQ(numbers.take(master), expected);
        taken.insert({master.detailKey, expected});
    }
    EXPECT_FALSE(taken.contains({1, numbers.take({{}, 1, kHighest})})) << "counted on from 1";
}

} // namespace
