#include "base/EditorSession.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string g_gone; // the parts that have ended, by their letters

template <char Letter>
struct Part {
    ~Part() { g_gone += Letter; }
    int value = 0;
};
using First = Part<'f'>;

// Needs another part to be made, and writes there when it goes.
struct Second {
    Second() { EditorSession::currentPart<First>().value = 1; }
    ~Second() {
        ++EditorSession::currentPart<First>().value;
        g_gone += std::to_string(EditorSession::currentPart<First>().value);
    }
};

int& value() {
    return EditorSession::currentPart<First>().value;
}

} // namespace

TEST(Session, KeepsItsPartsApartFromThoseOfOthers) {
    EditorSession outer;
    value() = 7;
    {
        EditorSession inner;
        EXPECT_EQ(value(), 0);
        value() = 8;
        {
            const EditorSession::Use use(outer);
            EXPECT_EQ(value(), 7);
        }
        EXPECT_EQ(value(), 8);
    }
    EXPECT_EQ(value(), 7);
    EXPECT_EQ(&EditorSession::current(), &outer);
}

TEST(Session, EndsThePartThatWasMadeLastBeforeThoseThatItNeeds) {
    auto session = std::make_unique<EditorSession>();
    EditorSession::currentPart<Second>();
    const EditorSession beside; // a part that goes finds those of its own session all the same
    value() = 100;
    g_gone.clear();
    session.reset();
    EXPECT_EQ(g_gone, "2f");
    EXPECT_EQ(&EditorSession::current(), &beside);
    EXPECT_EQ(value(), 100);
}

TEST(Session, MakesCallsForLaterInItselfOrNotAtAll) {
    auto session = std::make_unique<EditorSession>();
    int calls = 0;
    const auto call = session->forLater([&] { calls += ++value(); });
    const auto end = session->forLater([&] { session.reset(); });
    EditorSession beside;
    call();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(value(), 0);
    end(); // ends it from within
    EXPECT_EQ(&EditorSession::current(), &beside);
    call();
    EXPECT_EQ(calls, 1);
}
