#include "model/KorDSMBusy.h"
#include "model/KorDSMMessages.h"
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

TEST(Busy, APostedMessageReachesTheWindowThatPostedItWhileThatIsThere) {
    struct Window : KorMessageTarget {
        Window() { KorDSMMainWindow::add(this); }
        ~Window() override { KorDSMMainWindow::remove(this); }
        void onMessage(const KorMessage&) override { ++heard; }
        int heard = 0;
    };
    std::vector<std::function<void()>> posted;
    KorHostPost::setPost([&](std::function<void()> call) { posted.push_back(std::move(call)); });
    Window first;
    KorDSMMainWindow::postMessage(DsmSelectionChanged());
    std::optional<Window> second;
    second.emplace();
    KorDSMMainWindow::postMessage(DsmSelectionChanged());
    posted[0]();
    EXPECT_EQ(first.heard, 1) << "another editor was opened meanwhile";
    EXPECT_EQ(second->heard, 0);
    second.emplace(); // in the place of the one that posted
    posted[1]();
    EXPECT_EQ(second->heard + first.heard, 1) << "none of these is meant";
    KorHostPost::setPost({});
}
