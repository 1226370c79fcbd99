#include "model/KorDSMBusy.h"
#include "services/KorHostPost.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

TEST(Busy, WhatIsAskedForMeanwhileIsDoneOnceTheLastHolderHasEnded) {
    std::vector<std::function<void()>> posted;
    KorHostPost::setPost([&](std::function<void()> call) { posted.push_back(std::move(call)); });
    std::string done;
    std::optional<KorDSMBusy> again;
    KorDSMBusy::whenFree([&] { done += '0'; });
    {
        const KorDSMBusy outer;
        {
            const KorDSMBusy inner;
            KorDSMBusy::whenFree([&] {
                done += '1';
                again.emplace();
            });
        }
        EXPECT_TRUE(KorDSMBusy::isBusy());
        KorDSMBusy::whenFree([&] { done += '2'; });
        EXPECT_TRUE(posted.empty());
    }
    EXPECT_EQ(done, "0") << "whoever ends is not entered by what waited";
    ASSERT_EQ(posted.size(), 1U);
    posted[0]();
    EXPECT_EQ(done, "01");
    again.reset();
    ASSERT_EQ(posted.size(), 2U);
    posted[1]();
    EXPECT_EQ(done, "012");
    EXPECT_FALSE(KorDSMBusy::isBusy());
    KorHostPost::setPost({});
}
