// The table of element types.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

#include "elements/contract/types.h"
#include "model.h"
#include "run/layout.h"
#include "run/stops.h"

namespace tidearc::test {
namespace {

TEST(TypeTable, AnyNumberOutside2To28IsATruss) {
  for (const int ITYPE : {1, 0, -1, 29, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(element_type(ITYPE).ITYPE, 1) << ITYPE;
  }
  for (int ITYPE = 1; ITYPE <= 28; ++ITYPE) EXPECT_EQ(element_type(ITYPE).ITYPE, ITYPE);
}

struct Row {
  int ITYPE, NDOF, LFIX, LTAN, LAUX, LEI;
};
// The counts that other programs rely on. Type 6 has none of its own, types 22 and 23 no fixed number of freedoms.
constexpr Row rows[] = {
    {1, 6, 314, 42, 2, 358},      {2, 12, 668, 156, 2, 826},    {3, 12, 530, 156, 2, 688},
    {4, 12, 1010, 156, 2, 1168},  {5, 12, 184, 12, 2, 198},     {7, 12, 296, 2, 2, 300},
    {8, 6, 308, 42, 2, 352},      {9, 6, 384, 42, 2, 428},      {10, 6, 92, 18, 2, 112},
    {11, 6, 62, 0, 0, 62},        {13, 12, 1214, 2, 156, 1372}, {14, 12, 1116, 156, 2, 1274},
    {15, 6, 124, 2, 2, 128},      {16, 6, 232, 2, 2, 236},      {17, 6, 234, 2, 2, 238},
    {18, 12, 3524, 288, 2, 3814}, {19, 12, 3800, 288, 2, 4090}, {20, 24, 118, 2, 2, 122},
    {21, 12, 1130, 156, 4, 1290}, {22, 0, 2892, 2, 2, 2896},    {23, 0, 326, 44, 2, 372},
    {24, 6, 118, 42, 2, 162},     {25, 6, 13906, 2, 2, 13910},  {26, 6, 454, 42, 2, 498},
    {27, 12, 1326, 156, 2, 1484}, {28, 24, 682, 488, 2, 1172},
};

TEST(TypeTable, EveryRowHasItsCounts) {
  for (const Row& row : rows) {
    const ElementType& type = element_type(row.ITYPE);
    EXPECT_EQ(type.NDOF, row.NDOF) << row.ITYPE;
    EXPECT_EQ(type.LFIX, row.LFIX) << row.ITYPE;
    EXPECT_EQ(type.LTAN, row.LTAN) << row.ITYPE;
    EXPECT_EQ(type.LAUX, row.LAUX) << row.ITYPE;
    EXPECT_EQ(type.LFIX + type.LTAN + type.LAUX, row.LEI) << row.ITYPE;
  }
}

TEST(TypeTable, LineTypesEnterTwoNodesIntoTheGraphOfRenumbering) {
  for (const int type : {1, 2, 3, 4, 8, 10, 11, 12, 13, 14, 15, 18, 19, 21})
    EXPECT_EQ(element_type(type).graph_nodes, 2) << type;
  for (const int type : {5, 9}) EXPECT_EQ(element_type(type).graph_nodes, 1) << type;
  EXPECT_EQ(element_type(6).graph_nodes, 8);
  for (const int type : {7, 16, 17, 20, 22, 23, 24, 25, 26, 27, 28})
    EXPECT_EQ(element_type(type).graph_nodes, 0) << type;
}

TEST(TypeTable, EveryBuiltOrComingTypeHasTheTitleOfItsGroupEcho) {
  const std::pair<int, const char*> titles[] = {{1, "THREE DIMENSIONAL TRUSS ELEMENTS"},
                                                {2, "3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS"},
                                                {3, "LINEAR BEAM ELEMENT"},
                                                {4, "INELASTIC BEAM-COLUMN ELEMENTS - PARALLEL"},
                                                {5, "THREE DIMENSIONAL GAP-FRICTION ELEMENTS"},
                                                {7, "LINEAR BEAM WAVE ELEMENT"},
                                                {8, "MARSHALL STRUT ELEMENTS"},
                                                {9, "TRUL NEAR FIELD SOIL-PILE INTERACTION ELEMENTS"},
                                                {10, "THREE DIMENSIONAL CABLE ELEMENTS"},
                                                {11, "SHIM ELEMENTS"},
                                                {13, "INELASTIC BM-COL WITH TWO GAUSSES STATION ELEMENTS"},
                                                {14, "INELASTIC BEAM-COLUMN ELEMENTS"},
                                                {15, "ANCHOR-SPRING"},
                                                {16, "JOINT STIFFNESS"},
                                                {17, "JOINT DAMPER"},
                                                {18, "3D FIBER BEAM COLUMN ELEMENT"},
                                                {19, "3D FIBER HINGE BEAM COLUMN ELEMENT"},
                                                {20, "DECK INUNDATION ELEMENT"},
                                                {21, "INELASTIC BEAM-COLUMN ELEMENTS - PARALLEL"},
                                                {22, "THREE DIMENSIONAL STIFFNESS ELEMENTS"},
                                                {23, "THREE DIMENSIONAL SLIP-SLIDE ELEMENTS"},
                                                {24, "LARGE-BODY WAVE ELEMENT"},
                                                {25, "DIFFRACTION-BASED WAVE ELEMENT"},
                                                {26, "LUMPED NODE ELEMENT"},
                                                {27, "3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS AND VIV"},
                                                {28, "PLATE BENDING ELEMENTS"}};
  for (const auto& [ITYPE, title] : titles) EXPECT_STREQ(element_type(ITYPE).title, title) << ITYPE;
}

TEST(TypeTable, TheVariableTypeHasNoCountsOfItsOwn) {
  const ElementType& type = element_type(6);
  for (const int count : {type.NDOF, type.LFIX, type.LTAN, type.LAUX}) EXPECT_EQ(count, 0);
}

TEST(TypeTable, ShimsHaveNoTail) { EXPECT_EQ(element_type(11).LTAN + element_type(11).LAUX, 0); }

TEST(TypeTable, GroupsOfType0And29RunAsTrusses) {
  for (const int ITYPE : {0, 29, -7}) {
    TrussGroupText text;
    text.ITYPE = ITYPE;
    text.elements = ElementText{}.card();
    Model model(bar_nodes(), text.cards());
    model.build();
    model.set_displacement(1, 1, 0.01);
    determine_states();
    EXPECT_NEAR(model.resisting_force(1, 1), 1.0, 1e-13) << ITYPE;
    EXPECT_NE(model.report().find("THREE DIMENSIONAL TRUSS ELEMENTS"), std::string::npos);
  }
}

TEST(TypeTable, TypesThatAreNotBuiltStopAtTheCard) {
  for (const int ITYPE : {4, 9, 28}) {
    Model model(bar_nodes(), format("3I5", ITYPE, 1, 1) + "\n");
    EXPECT_EQ(stop_of([&] { ELDATA(); }), status_fatal);
    EXPECT_NE(model.report().find(format("' **ERROR! ELEMENT TYPE',I3,' IS NOT AVAILABLE.'", ITYPE)),
              std::string::npos);
    EXPECT_NE(model.errors().find("line 1"), std::string::npos);
  }
}

TEST(TypeTable, Type12HasItsOwnText) {
  Model model(bar_nodes(), format("3I5", 12, 1, 1) + "\n");
  EXPECT_EQ(stop_of([&] { ELDATA(); }), status_fatal);
  EXPECT_NE(model.report().find(" **ERROR! ELEMENT TYPE 1 IS NOT AVAILABLE."), std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
