#include "StyleFixture.h"

#include "operations/KorDatabaseAccess.h"
#include "operations/KorDetStructureUtilities.h"
#include "operations/KorDetailTableDependencies.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "operations/KorOdbcGUI.h"
#include "operations/KorScales.h"

namespace {

/// Operations that nothing here calls, used as a host would.
class HostOperations : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        databases.setCurrentSource(kUser);
    }
    template <typename R>
    static KorArray<KorString> namesOf(const KorArray<R>& rows) {
        KorArray<KorString> names;
        for (const R& row : rows)
            names.append(row.name);
        return names;
    }
};

using Names = KorArray<KorString>;

} // namespace

TEST_F(HostOperations, AGroupIsSavedUnderItsKeyOrANewOneAndReadInEachWay) {
    using Groups = KorODBCDetObjQualifierSetGroup;
    StructDetObjQualifierSetGroup profiles;
    profiles.name = "Profiles";
    ASSERT_EQ(Groups::save(profiles), 1);
    StructDetObjQualifierSetGroup plates = profiles;
    plates.key = 0;
    plates.name = "Plates";
    ASSERT_EQ(Groups::save(plates), 1);
    ASSERT_NE(plates.key, profiles.key);
    profiles.name = "Sections";
    ASSERT_EQ(Groups::save(profiles), 1);

    StructDetObjQualifierSetGroup read;
    ASSERT_EQ(Groups::get(KorOdbcKey(profiles.key), read), 1);
    EXPECT_EQ(read.name, "Sections");
    ASSERT_EQ(Groups::get(KorString("Plates"), read), 1);
    EXPECT_EQ(read.key, plates.key);
    EXPECT_NE(Groups::get(KorString("Profiles"), read), 1);
    KorArray<StructDetObjQualifierSetGroup> groups;
    Names names;
    EXPECT_EQ(Groups::getRunNames(names), 2);
    EXPECT_EQ(names, (Names{"Sections", "Plates"}));
    EXPECT_EQ(Groups::getList(groups), 2);
    EXPECT_EQ(namesOf(groups), names);
    EXPECT_EQ(Groups::getTable(groups), 2);

    profiles.name = "Plates";
    EXPECT_LT(Groups::save(profiles), 1) << "taken";
    EXPECT_EQ(row<StructDetObjQualifierSetGroup>(kUser, profiles.key)->name, "Sections");
}

TEST_F(HostOperations, WhatIsAskedForOneByOneIsFoundByNameAndByKey) {
    addStyle(kUser, "Column", 3);
    const auto* view = row<StructDetViewRequest>(kUser, "Column front");
    ASSERT_EQ(KorOdbcMan::setAttribute(kTableViewRequest, KorOdbcKey(view->key),
                                       findTable(kTableViewRequest)->column("callout_title_template")->number,
                                       KorString("{view}"), 0),
              1);
    KorString title;
    int used = -1;
    EXPECT_EQ(KorOdbcGUI::getDetViewCalloutTitleTemplate("Column front", title), 1);
    EXPECT_EQ(title, "{view}");
    EXPECT_EQ(KorOdbcGUI::getDetViewUsedForCutsAndCallouts("Column front", used), 1);
    EXPECT_EQ(used, view->usedForCutsAndCallouts ? 1 : 0);
    EXPECT_NE(KorOdbcGUI::getDetViewUsedForCutsAndCallouts("Column", used), 1);

    StructDetVwDimGeomRestrictions restriction;
    restriction.bitmapKey = row<StructBitmap>(kUser, "column")->key;
    int picture = 0;
    EXPECT_EQ(KorOdbcGUI::getGeomRestrictionBitmapId(add(kUser, "Parallel", restriction), picture), 1);
    EXPECT_EQ(picture, 201);

    KorArray<StructDetObjQualifierWithRole> qualifiers;
    const KorOdbcKey beams(row<StructDetObjQualifierSet>(kUser, "Beams")->key);
    EXPECT_EQ(KorOdbcGUI::getDetObjQualifiersWithRole(beams, qualifiers), 1);
    EXPECT_EQ(namesOf(qualifiers), Names{"Section is I"});
}

TEST_F(HostOperations, WhatOnlyHostsReadIsReadByKeyByNameAndInTheOrderOfTheTable) {
    StructBeamPositionCalculation position;
    const KorOdbcKey top(add(kUser, "Top flange", position));
    EXPECT_EQ(KorODBCBeamPositionCalculation::getBeamPositionCalculation(top, position), 1);
    EXPECT_EQ(position.name, "Top flange");
    EXPECT_NE(KorODBCBeamPositionCalculation::getBeamPositionCalculationByRunname("Axis", position), 1);
    StructDetailProcessScaleOverride scale;
    const KorOdbcKey finer(add(kUser, "Finer", scale));
    EXPECT_EQ(KorODBCDetailProcessScaleOverride::getDetailProcessScaleOverrideByKey(finer, scale), 1);
    EXPECT_EQ(KorODBCDetailProcessScaleOverride::getDetailProcessScaleOverrideByName("Finer", scale), 1);
    EXPECT_EQ(scale.key, finer.getKey());
    StructDetObjQualifierFilter filter;
    const std::int32_t bolts = add(kUser, "M20", filter);
    EXPECT_EQ(KorOdbcGUI::getDetObjQualifierFilterByRunName("M20", filter), 1);
    EXPECT_EQ(filter.key, bolts);

    add(kUser, "Vertical", StructDetGeometricRestrictions{});
    add(kUser, "Parallel", StructDetGeometricRestrictions{});
    Names names;
    KorArray<StructDetGeometricRestrictions> restrictions;
    KorODBCDetGeometricRestrictions::getDetGeometricRestrictionList(names);
    KorODBCDetGeometricRestrictions::getDetGeometricRestrictionTable(restrictions);
    EXPECT_EQ(names, (Names{"Vertical", "Parallel"}));
    EXPECT_EQ(namesOf(restrictions), names);
    add(kUser, "Ordinate", StructDetRequestType{});
    add(kUser, "Linear", StructDetRequestType{});
    KorArray<StructDetRequestType> types;
    KorOdbcGUI::getDetRequestTypeTable(types);
    EXPECT_EQ(namesOf(types), (Names{"Ordinate", "Linear"}));
    EXPECT_GT(KorDetStructureUtilities::compareDetRequestTypes(types[0], types[1]), 0);
}

TEST_F(HostOperations, ARowIsAppendedFoundInUseAndDeletedWithItsParts) {
    addStyle(kUser, "Column", 3);
    const auto* beams = row<StructDetObjQualifierSet>(kUser, "Beams");
    EXPECT_TRUE(KorOdbcGUI::findQualifierSet(KorOdbcKey(beams->key)));
    EXPECT_FALSE(KorOdbcGUI::findDimensionRequest(4711) || KorOdbcGUI::findAnnotationStrategy(4711));
    KorOdbcMan::currentRecord<StructDetObjQualifierSet>() = *beams;
    KorOdbcMan::currentRecord<StructDetObjQualifierSet>().name = "Beams again";
    ASSERT_EQ(KorOdbcMan::appendNewRecord(kTableQualifierSet, 1, KorOdbcMan::kThisRow), 1);
    const KorOdbcKey copy = KorOdbcMan::getRecordKey(kTableQualifierSet);
    EXPECT_EQ(copy.getKey(), row<StructDetObjQualifierSet>(kUser, "Beams again")->key);
    KorArray<StructDetObjQualifierWithRole> parts;
    ASSERT_EQ(KorOdbcGUI::getDetObjQualifiersWithRole(copy, parts), 1);
    EXPECT_FALSE(KorOdbcGUI::findQualifierSet(copy));
    ASSERT_EQ(KorOdbcMan::deleteRecord(kTableQualifierSet, copy, KorOdbcMan::kThisRow), 1);
    EXPECT_NE(KorOdbcGUI::getDetObjQualifiersWithRole(copy, parts), 1);
    EXPECT_NE(KorOdbcMan::deleteRecord(kTableQualifierSet, copy, KorOdbcMan::kThisRow), 1);
}

TEST_F(HostOperations, ModelRolesOfOneNameAreOneRoleInAllSources) {
    StructModelRole role;
    role.role = 8;
    add(kStandard, "Rail", role);
    add(kUser, "Rail", role);
    role.role = 3;
    add(kUser, "Beam", role);
    int number = 0;
    KorString name;
    Names names;
    EXPECT_EQ(StructModelRoleMarshal::getKeyByRunNameAllSources("Rail", number), 1);
    EXPECT_EQ(number, 8);
    EXPECT_EQ(StructModelRoleMarshal::getRunNameByKeyAllSources(3, name), 1);
    EXPECT_EQ(name, "Beam");
    EXPECT_NE(StructModelRoleMarshal::getRunNameByKeyAllSources(4, name), 1);
    EXPECT_EQ(StructModelRoleMarshal::getOrderedRunNameListAllSources(names), 2);
    EXPECT_EQ(names, (Names{"Beam", "Rail"}));
}

TEST_F(HostOperations, WhatAStyleDependsOnIsGoneThroughRowByRow) {
    const std::int32_t style = addStyle(kUser, "Column", 3);
    KorDetailTableDependencies dependencies;
    ASSERT_EQ(dependencies.GetDependenciesByDetailKey(KorOdbcKey(style)), 1);
    EXPECT_EQ(dependencies.currentRow(), (RowRef{kTableDetailStyle, style}));
    const int last = static_cast<int>(dependencies.rows().size()) - 1;
    ASSERT_EQ(dependencies.SetRowNr(last), 1);
    EXPECT_EQ(dependencies.currentRow(), dependencies.rows().back());
    EXPECT_EQ(dependencies.SetRowNr(last + 1), 0);
    EXPECT_EQ(dependencies.currentRow(), dependencies.rows().back());
    EXPECT_EQ(dependencies.GetDependenciesByDetailKey(KorOdbcKey(style + 1)), 0);
}

TEST_F(HostOperations, AFileIsOpenedByAConnectionStringAndDetached) {
    const SourceId exchange = SourceId::exchange();
    ASSERT_EQ(SqliteStore::create(file("other.dsdb")).error, "");
    const KorString path = file("other.dsdb");
    const auto connect = [&](const KorString& words) {
        return KorDatabaseAccess::setConnectionString(exchange.dsn, exchange.index, words);
    };
    EXPECT_EQ(connect(KorString("Driver=any; DBQ = ") + path + ";ReadOnly=1").error, "");
    EXPECT_TRUE(databases.source(exchange));
    EXPECT_FALSE(KorODBCDetailStyleExports::isDatabaseOlderThan5_1(exchange.dsn));
    EXPECT_EQ(KorDatabaseAccess::detachDatabase(exchange.dsn, exchange.index), 1);
    EXPECT_FALSE(databases.source(exchange));
    EXPECT_EQ(KorDatabaseAccess::detachDatabase(exchange.dsn, exchange.index), 0);
    EXPECT_NE(connect("Driver=any").error, "");
}
