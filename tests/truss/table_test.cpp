// The table of element types.
#include <gtest/gtest.h>

#include <limits>
#include <string>

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

TEST(TypeTable, LengthsOfRecordsAreThoseOfTheTypes) {
  // Number, degrees of freedom, record length.
  const int rows[][3] = {{1, 6, 358},    {2, 12, 826},  {3, 12, 688}, {4, 12, 1168},  {5, 12, 198},   {7, 12, 300},
                         {8, 6, 352},    {9, 6, 428},   {10, 6, 112}, {11, 6, 62},    {13, 12, 1372}, {14, 12, 1274},
                         {15, 6, 128},   {16, 6, 236},  {17, 6, 238}, {18, 12, 3814}, {19, 12, 4090}, {20, 24, 122},
                         {21, 12, 1290}, {22, 0, 2896}, {23, 0, 372}, {24, 6, 162},   {25, 6, 13910}, {26, 6, 498},
                         {27, 12, 1484}, {28, 24, 1172}};
  for (const auto& row : rows) {
    const ElementType& type = element_type(row[0]);
    EXPECT_EQ(type.NDOF, row[1]) << row[0];
    EXPECT_EQ(type.LFIX + type.LTAN + type.LAUX, row[2]) << row[0];
  }
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
  for (const int ITYPE : {2, 9, 28}) {
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
