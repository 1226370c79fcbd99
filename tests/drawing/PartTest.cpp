#include "drawing/DrawingFixture.h"

#include "drawing/PartStatement.h"

namespace {

// What reading a part of these lines says; nothing where it is read.
std::string whyWrong(const std::string& lines) {
    const TempFolder folder;
    writeBytes(folder.path() / "x.part", lines);
    return SampleParts::readFile(folder.path() / "x.part").error;
}

const std::string kHead = "part Test\n";

} // namespace

TEST(PartTest, SampleFilesAreReadAndReachBeyondASheet) {
    const std::vector<std::string> names = SampleParts::names(partsFolder());
    EXPECT_GE(names.size(), 8u);
    double longest = 0;
    std::set<eObjectType> types;
    for (const std::string& name : names) {
        const Result<SamplePart> part = SampleParts::read(partsFolder(), name);
        ASSERT_EQ(part.error, "") << name;
        EXPECT_FALSE(part.value.categories.empty()) << name;
        longest = std::max(longest, part.value.main()->box.high.x);
        for (const PartObject& object : part.value.objects)
            types.insert(object.type);
    }
    EXPECT_EQ(types.size(), 12u); // there is an object of each kind
    EXPECT_GE(longest, 20000);
}

TEST(PartTest, AWrongFileIsNamedWithItsLine) {
    const std::pair<std::string, std::string> cases[] = {
        {"beem B1 from=0,0,0\n",
         "Line 2 of the sample part \"x.part\" is wrong: \"beem\" is not known here, or lacks something."},
        {"\nprofile B1 family=I section=400,180,8,13 from=0,0,0 to=0,0,0\n",
         "Line 3 of the sample part \"x.part\" is wrong: \"from\" and \"to\" must be two different points."},
        {"profile B1 family=I section=400,180 from=0,0,0 to=9,0,0\n", "The section does not fit the family."},
        {"profile B1 family=I section=400,180,8,13 from=0,0,0 to=9,0,0 colour=3\n",
         "\"colour\" is not known here."},
        {"profile B1 family=FL section=40,8 from=0,0,0 to=9,x,0\n",
         "\"to\" must be a point such as 100,0,-25."},
        {"profile B1 family=FL section=40,8 from=0,0,0 to=9e9,0,0\n",
         "\"to\" must be a point such as 100,0,-25."},
        {"plate p role=\"main size=1,1\n", "A quotation mark is missing."},
        {"plate p role=boss size=1,1 thickness=2\n", "\"boss\" is no role that an object can have."},
        {"plate p size=100,100 thickness=0\n", "\"thickness\" must be given and be above 0."},
        {"plate p size=100,100 thickness=9 repeat=3\n",
         "\"repeat\" is 1 to 500, with a \"step\" other than 0."},
        {"plate p size=100,100 thickness=9\nhole h in=p diameter=20 at=500,0,0 axis=y\n",
         "Line 3 of the sample part \"x.part\" is wrong: The hole hits no face of what it is in."},
        {"cut c in=q end=start side=top length=10 depth=5\n", "There is no profile of this name to be cut."},
        {"# nothing\n", "The part has no name or no objects."},
    };
    for (const auto& [lines, expected] : cases)
        EXPECT_NE(whyWrong(kHead + lines).find(expected), std::string::npos) << whyWrong(kHead + lines);
    EXPECT_EQ(whyWrong(kHead + "plate p size=100,100 thickness=9 # well\n"), "");
}

TEST(PartTest, WhatThePartSaysOfItselfIsComputedFromItsGeometry) {
    const TempFolder folder;
    writeBytes(folder.path() / "x.part",
               kHead + "profile B1 family=FL section=100,10 from=0,0,0 to=3000,0,4000\n"
                       "hole h in=B1 diameter=20 at=300,0,400 axis=y rows=2 pitch=30,0,40\n");
    const Result<SamplePart> part = SampleParts::readFile(folder.path() / "x.part");
    ASSERT_EQ(part.error, "");
    const PartObject& flat = part.value.objects[0];
    EXPECT_DOUBLE_EQ(*flat.properties.at("length").number, 5000);
    EXPECT_NEAR(*flat.properties.at("inclination").number, 53.13, 0.01);
    EXPECT_EQ(flat.values.at("weight"), "39.3"); // 100 x 10 x 5000 mm of steel
    EXPECT_EQ(part.value.objects[1].values.at("quantity"), "2");
    EXPECT_EQ(flat.solid.edges.size(), 12u);
}
