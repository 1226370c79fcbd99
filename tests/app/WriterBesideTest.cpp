#include "app/CommandHere.h"
#include "support/Mentions.h"

// Another program that stores a change of several tables before each reading of a command in turn: the
// command works on what was there before or on what was there afterwards, or is refused.

namespace {

// In the one state "Beam" has the view "Section", in the other one "Detail", and the one that it does not
// have does not exist.
constexpr const char* kChange =
    "PRAGMA synchronous = OFF; BEGIN IMMEDIATE; "
    "UPDATE detail_style SET description = 'changed', view_2 = 9 WHERE name = 'Beam'; "
    "DELETE FROM view_request WHERE name = 'Section'; "
    "INSERT INTO view_request (key, name, scale) VALUES (9, 'Detail', 0.25); "
    "COMMIT";

class WriterBesideTest : public CommandHereTest {
protected:
    void SetUp() override {
        CommandHereTest::SetUp();
        useUserAlone();
    }

    /// Runs the command with the writer, who changes the file `written`, before each reading. It says, or
    /// puts into the file `product`, what belongs to one of the states; or it is refused, says why, and
    /// `product` is as before.
    void sweep(const std::vector<std::string>& words, const std::string& written,
               const std::string& product = {}) {
        const auto resultOf = [&](const Outcome& outcome) {
            const auto file = outcome.files.find(product);
            return outcome.said + (file == outcome.files.end() ? std::string() : file->second);
        };
        const auto unchanged = before.find(product);
        const std::string nothing = unchanged == before.end() ? std::string() : unchanged->second;
        const std::string old = resultOf(runHere(words));
        const auto contents = before;
        OtherProgram(written).run(kChange);
        begin();
        const std::string changed = resultOf(runHere(words));
        before = contents;
        restore();
        ASSERT_NE(old, changed);

        int sawOld = 0;
        int sawChanged = 0;
        int didWrite = 0;
        for (int place = 1;; ++place) {
            OtherProgram other(written);
            const FaultVfs writer(place, [&] { didWrite += other.tries(kChange); });
            const Outcome outcome = runHere(words, &writer);
            const std::string result = resultOf(outcome);
            if (result == old || result == changed)
                ++(result == old ? sawOld : sawChanged);
            else
                EXPECT_TRUE(outcome.exitCode == 1 && outcome.complained.find(".dsdb") != std::string::npos &&
                            result == nothing)
                    << place << ' ' << outcome.exitCode << outcome.said << outcome.complained;
            if (!outcome.struck || HasFailure())
                break;
        }
        EXPECT_GT(didWrite, 3);
        EXPECT_GT(sawOld, 0);
        EXPECT_GT(sawChanged, 0);
    }
    std::string file(const char* name) const { return (folder() / name).string(); }
};

} // namespace

TEST_F(WriterBesideTest, AnExportHoldsOneState) {
    sweep({"export", "Beam", file("out.dsdb")}, user(), file("out.dsdb"));
}

TEST_F(WriterBesideTest, AnImportBringsOneState) {
    std::filesystem::copy(user(), file("in.dsdb"));
    sql("user.dsdb", "DELETE FROM detail_style; DELETE FROM detail_master; DELETE FROM view_request");
    begin();
    sweep({"import", file("in.dsdb")}, file("in.dsdb"), user());
}

TEST_F(WriterBesideTest, CheckListAndShowSpeakOfOneState) {
    sql("user.dsdb", "UPDATE view_request SET repr_map = 77 WHERE name = 'Section'");
    begin();
    sweep({"check"}, user());
    sweep({"list"}, user());
    sweep({"show", "detail-style", "Beam"}, user());
}

TEST_F(WriterBesideTest, WhatItStoredBeforeAChangeIsStoredIsKeptAndTold) {
    const std::string change = "UPDATE view_request SET scale = 1.0 / 25 WHERE name = 'Section'";
    OtherProgram(user()).run(change);
    const std::string theirs = bytesOf(user());
    restore();
    int refused = 0;
    for (int place = 1;; ++place) {
        OtherProgram other(user());
        const FaultVfs writer(place, [&] { other.tries(change); });
        const Outcome outcome = runHere({"set", "view-request", "Section", "scale", "1:75"}, &writer);
        if (outcome.exitCode != 0) {
            ++refused;
            EXPECT_EQ(outcome.exitCode, 1);
            EXPECT_TRUE(mentions(outcome.complained,
                                 "View request \"Section\", Scale: another program stored \"1:25\" "
                                 "meanwhile; \"1:75\" was not written."))
                << outcome.complained;
            EXPECT_EQ(outcome.files.at(user()), unmarked(theirs));
        }
        if (!outcome.struck || HasFailure())
            break;
    }
    EXPECT_GT(refused, 0);
}
