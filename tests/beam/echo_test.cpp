// The echo of beam groups, line by line: headings, values under them, and the fields that no analysis uses yet.
#include <gtest/gtest.h>

#include "elements/beam/linear_cards.h"
#include "group_deck.h"

namespace tidearc::test {
namespace {

/// A type 3 group with a value of its own in every column of its property cards.
LinearGroup linear_with_all_columns() {
  LinearGroup group;
  group.E = 2.1e5;
  group.poisson = 0.3;
  group.weight = 77.5;
  group.mass = 7.85;
  group.fluid_weight = 10.25;
  group.fluid_mass = 1.025;
  group.pressure = 3.5;
  group.sections =
      "    1    7       0.5      0.02      0.03      0.46    0.0017   0.00087.0008 .015     0.016\n"
      "      0.51       0.7       2.0       0.6      0.05    9      1.25      0.52\n"
      "       0.1       0.2       0.3       0.4    5    6\n";
  group.section_count = 1;
  group.offset({0.5, 0.25, -1.5, 0.125, 2.5, -3.5});
  return group;
}
/// The same of type 2 or 27.
LargeGroup large_with_all_columns(int type) {
  LargeGroup group;
  group.ITYPE = type;
  group.viv = "\n\n\n";
  group.NSUB = 1;
  group.KFEM = 1;
  group.KPOST = 3;
  group.E = 2.1e5;
  group.poisson = 0.3;
  group.weight = 77.5;
  group.mass = 7.85;
  group.fluid_weight = 10.25;
  group.fluid_mass = 1.025;
  group.pressure = 3.5;
  group.alpha = 1.2e-5;
  group.sections = type == 27 ? "    1           0.03      0.02      0.46    0.0008   0.00087    0.0017\n"
                                "      0.51       0.7       2.0       0.6      0.05    9      1.25      0.52\n"
                              : "    1           0.03      0.02      0.46    0.0008   0.00087    0.0017      0.51\n"
                                "       0.7       2.0       0.6      0.05      1.25    9      0.52       0.3\n";
  group.sections += "       0.1       0.2       0.3       0.4    5    6\n";
  group.section_count = 1;
  if (type == 2) group.offset({0.5, 0.25, -1.5, 0.125, 2.5, -3.5});
  return group;
}

const std::vector<std::string> morison_echo = {"     COEFFICIENTS FOR USE OF EXTENDED MORISON EQUATION",
                                               "",
                                               " SEC.",
                                               "  NO.         CTV         CTD         CAM         CAD    ICA    JCA",
                                               "",
                                               "    1  1.0000E-01  2.0000E-01  3.0000E-01  4.0000E-01      5      6"};
const std::vector<std::string> offset_echo = {
    "     END ECCENTRICITY TYPES",
    "",
    "  TYPE          I-END          -                   J-END          -",
    "   NO.         X           Y           Z           X           Y           Z",
    "",
    "     1  5.0000E-01  2.5000E-01 -1.5000E+00  1.2500E-01  2.5000E+00 -3.5000E+00"};

void expect_echo(const std::string& report, const std::vector<std::string>& lines) {
  expect_lines(lines_from(report, lines[0], lines.size()), lines);
}

TEST(LinearEcho, TellsTheCountsOfTheGroup) {
  LinearGroup group = linear_with_all_columns();
  group.KFEM = 1;
  expect_echo(run_group(with_elements(group)).report,
              {"     NUMBER OF DEGREES OF FREEDOM PER ELEMENT ....... =   12",
               "     LENGTH OF ELEMENT INFORMATION .................. =  688", "", "",
               "     NUMBER OF DIFFERENT MATERIAL TYPES ............. =    1",
               "     NUMBER OF DIFFERENT SECTION TYPES .............. =    1",
               "     NUMBER OF GAUSS WAVE INTEGRATION POINTS ........ =    2",
               "     FLAG FOR THE INDUCED FIXED END MOMENTS ......... =    1",
               "     NUMBER OF END-ECCENTRICITY TYPES ............... =    1",
               "     MEMBER AXES DEFAULT TO SACS CONVENTIONS", "", "", "     MATERIAL PROPERTIES"});
}

TEST(LinearEcho, TellsThePropertiesInTheirColumns) {
  const std::string report = run_group(with_elements(linear_with_all_columns())).report;
  expect_echo(report,
              {" MAT.     YOUNGS  POISSON  SELF WEIGHT        MASS  INTERNAL FLUID  INTERNAL FLUID  INTERNAL FLUID",
               "  NO.    MODULUS    RATIO      DENSITY     DENSITY  WEIGHT DENSITY    MASS DENSITY        PRESSURE", "",
               "    1  2.100E+05  3.00E-01   7.750E+01   7.850E+00       1.025E+01       1.025E+00       3.500E+00"});
  expect_echo(report,
              {" SEC.     OUTSIDE        WALL                    INT.     TORSION     INERTIA     INERTIA  SHEAR AREA"
               "  SHEAR AREA",
               "  NO.        DIAM       THIC.        AREA        DIAM     INERTIA      AXIS-3      AXIS-2      AXIS-2"
               "      AXIS-3",
               "",
               "    1  5.0000E-01  2.0000E-02  3.0000E-02  4.6000E-01  1.7000E-03  8.7000E-04  8.0000E-04  1.5000E-02"
               "  1.6000E-02"});
  expect_echo(report, {" SEC.        WAVE                                           LONG.          MG       Buoy_",
                       "  NO.        DIAM          CD          CM         CKM          CD     Wt/Leng        Diam", "",
                       "    1  5.1000E-01  7.0000E-01  2.0000E+00  6.0000E-01  5.0000E-02  1.2500E+00  5.2000E-01"});
  expect_echo(report, morison_echo);
  expect_echo(report, offset_echo);
}

TEST(LinearEcho, TellsTheElementsInTheirColumns) {
  LinearGroup group = linear_with_all_columns();
  const std::string further = "        12        34" + ten(1) + ten(2) + ten(3) + ten(4) + ten(5) + ten(6) + ten(7) +
                              ten(8) + ten(9) + ten(10) + ten(11) + ten(12) + "\n" + std::string(20, ' ') + ten(0.1) +
                              ten(0.2) + ten(0.3) + ten(0.4) + ten(0.5) + ten(0.6) + ten(0.7) + ten(0.8) + ten(0.9) +
                              ten(1.5) + ten(1.6) + ten(1.7) + "\n";
  group.element({.I = 1,
                 .J = 2,
                 .DIFF = 1,
                 .K = 5,
                 .MAT = 1,
                 .SEC = 1,
                 .HIST = 3,
                 .GEOM = 1,
                 .WAVE = 4,
                 .BUOY = 2,
                 .axial = 12.5,
                 .ECC = 1,
                 .INIT = 2,
                 .HI = 11,
                 .HJ = 101,
                 .further = further});
  group.element({.I = 2, .J = 3, .CAT = 7});
  const std::string report = run_group(group.text()).report;
  const std::vector<std::string> found = lines_from(report, " KEY   ELEM", 13);
  // Master and slave bring a warning, before the element's line.
  expect_lines(
      {found[0], found[1], found[2]},
      {" KEY   ELEM  NODE-I  NODE-J  DIFF       K  MAT.  SEC.  HIST  GEOM  WAVE  BUOY  INITIAL AXIAL   ECC   CAT  INIT"
       "  I-END  J-END       LENGTH",
       "        NO.                                NO.   NO.  CODE  CODE  GAUS  CODE          FORCE  TYPE   NO.  CODE"
       "  HINGE  HINGE     OF NODES",
       ""});
  expect_echo(
      report,
      {"          1       1       2     1       5     1     1     3     1     4     2     1.2500E+01     1     0     2"
       "     11    101   2.0000E+00",
       "           INITIAL FORCES         MASTER   SLAVE  NODE    MOMENTS(22)    MOMENTS(33)       TORSIONS          "
       "AXIAL"
       "      SHEAR(22)      SHEAR(33)",
       "                                      12      34     I    1.00000E+00    3.00000E+00    5.00000E+00    "
       "7.00000E+00"
       "    9.00000E+00    1.10000E+01",
       "                                                     J    2.00000E+00    4.00000E+00    6.00000E+00    "
       "8.00000E+00"
       "    1.00000E+01    1.20000E+01",
       "           INITIAL DISPLACEMENTS                  NODE  ROTATIONS(22)  ROTATIONS(33)       TORSIONS      AXIAL "
       "DEF"
       "  SHEAR DEF(22)  SHEAR DEF(33)",
       "                                                     I    1.00000E-01    3.00000E-01    5.00000E-01    "
       "7.00000E-01"
       "    9.00000E-01    1.60000E+00",
       "                                                     J    2.00000E-01    4.00000E-01    6.00000E-01    "
       "8.00000E-01"
       "    1.50000E+00    1.70000E+00",
       "          2       2       3     0       0     1     1     0     0     0     0     0.0000E+00     0     7     0"
       "      0      0   2.0000E+00",
       "", " ERROR MESSAGES", "", "     KEY     MESSAGE                          ERROR", "",
       "             ELEMENT DATA INPUT DIRECTLY      NONE", "     *       ELEMENT DATA GENERATED           NONE",
       "     **      ELEMENT CARD OUT OF SEQUENCE     FATAL"});
}

TEST(LargeEcho, TellsTheCountsOfTheGroup) {
  LargeGroup group = large_with_all_columns(2);
  group.KDEF = "STRUD";
  expect_echo(
      run_group(with_elements(group)).report,
      {"     LENGTH OF ELEMENT INFORMATION .................. =  826", "", "",
       "     NUMBER OF DIFFERENT MATERIAL TYPES ............. =    1",
       "     NUMBER OF DIFFERENT SECTION TYPES .............. =    1",
       "     NUMBER OF SUB-DIVISIONS FOR WAVE FORCE ......... =    1",
       "     FLAG FOR THE INDUCED FIXED END MOMENTS ......... =    1", "     MEMBER AXES DEFAULT TO STRUDL CONVENTIONS",
       "     NUMBER OF END-ECCENTRICITY TYPES ............... =    1",
       "     POST RESULT FLAG (=0 EFFECTIVE FORCE) .......... =    3"});
}

TEST(LargeEcho, TellsThePropertiesInTheirColumns) {
  for (const int type : {2, 27}) {
    const bool two = type == 2;
    const std::string report = run_group(with_elements(large_with_all_columns(type))).report;
    const auto only2 = [two](const std::string& words) { return two ? words : std::string(); };
    expect_echo(
        report,
        {" MAT.     YOUNGS POISSON   SELF WEIGHT        MASS  INTERNAL FLUID  INTERNAL FLUID  INTERNAL FLUID" +
             only2("   THEMAL COEFF."),
         "  NO.    MODULUS RATIO         DENSITY     DENSITY  WEIGHT DENSITY    MASS DENSITY        PRESSURE", "",
         "    1  2.100E+05  3.00E-01   7.750E+01   7.850E+00       1.025E+01       1.025E+00       3.500E+00" +
             only2("       1.200E-05")});
    expect_echo(report, {" SEC.        AREA  WALL THIC.   INT. DIAM         I-Y         I-Z           J   WAVE DIAM" +
                             only2("  Angle(rad)"),
                         "  NO.", "",
                         "    1  3.0000E-02  2.0000E-02  4.6000E-01  8.0000E-04  8.7000E-04  1.7000E-03  5.1000E-01" +
                             only2("  3.0000E-01")});
    expect_echo(report, {" SEC.          CD          CM         CKM    LONG. CD  MG Wt/Leng   Buoy_Diam", "  NO.", "",
                         "    1  7.0000E-01  2.0000E+00  6.0000E-01  5.0000E-02  1.2500E+00  5.2000E-01"});
    expect_echo(report, morison_echo);
    if (two) expect_echo(report, offset_echo);
  }
}

TEST(LargeEcho, TellsTheElementsInTheirColumns) {
  LargeGroup group = large_with_all_columns(2);
  const std::string forces = ten(1) + ten(2) + ten(3) + ten(4) + ten(5) + ten(6) + "\n";
  const std::string deformations = ten(0.1) + ten(0.2) + ten(0.3) + ten(0.4) + ten(0.5) + ten(0.6) + "\n";
  group.element({.I = 1,
                 .J = 2,
                 .DIFF = 1,
                 .K = 5,
                 .MAT = 1,
                 .SEC = 1,
                 .OUT = 3,
                 .KGI = 1,
                 .KGE = 1,
                 .SD = 3,
                 .WAVE = 4,
                 .BUOY = 2,
                 .axial = 12.5,
                 .ECC = 1,
                 .INIT = 3,
                 .further = forces + deformations});
  group.element({.I = 2, .J = 3, .CAT = 7});
  const std::string report = run_group(group.text()).report;
  expect_echo(
      report,
      {"     ELEMENT DATA", "",
       " KEY   ELEM  NODE-I  NODE-J  DIFF       K  MAT.  SEC.   OUT   KGI   KGE  S.D.  WAVE BUOY.  INITIAL AXIAL   ECC"
       "   CAT  INIT       LENGTH",
       "        NO.                                NO.   NO.  CODE              CODE GAUSS  CODE          FORCE  TYPE"
       "   NO.  CODE     OF NODES",
       "",
       "          1       1       2     1       5     1     1     3     1     1     3     4     2     1.2500E+01     1"
       "     0     3   2.0000E+00",
       "           INITIAL MOMENTS AND FORCES         M22-I         M22-J         M33-I         M33-J      TORQUE-I"
       "     AXIAL TEN",
       "                                        1.00000E+00   2.00000E+00   3.00000E+00   4.00000E+00   5.00000E+00"
       "   6.00000E+00",
       "           INITIAL DEFORMATIONS               M22-I         M22-J         M33-I         M33-J      TORQUE-I"
       "     AXIAL TEN",
       "                                        1.00000E-01   2.00000E-01   3.00000E-01   4.00000E-01   5.00000E-01"
       "   6.00000E-01",
       "          2       2       3     0       0     1     1     0     0     0     2     0     0     0.0000E+00     0"
       "     7     0   2.0000E+00"});
}

void expect_water(const BeamWater& w) {
  const double found[] = {w.wave_diameter, w.CD,  w.CM,  w.CKM, w.longitudinal_CD, w.growth_weight, w.buoyant_diameter,
                          w.CTV,           w.CTD, w.CAM, w.CAD};
  const double expected[] = {0.51, 0.7, 2.0, 0.6, 0.05, 1.25, 0.52, 0.1, 0.2, 0.3, 0.4};
  for (std::size_t i = 0; i < std::size(found); ++i) EXPECT_EQ(found[i], expected[i]) << i;
  EXPECT_EQ(w.ICA, 5);
  EXPECT_EQ(w.JCA, 6);
}
void expect_material(const BeamMaterial& m) {
  const double found[] = {m.EMOD, m.poisson, m.weight, m.mass, m.fluid_weight, m.fluid_mass, m.pressure};
  const double expected[] = {2.1e5, 0.3, 77.5, 7.85, 10.25, 1.025, 3.5};
  for (std::size_t i = 0; i < std::size(found); ++i) EXPECT_EQ(found[i], expected[i]) << i;
}

TEST(PropertyCards, OfTheLinearBeamFillTheGroupsTables) {
  EXPECT_EQ(run_kept(with_elements(linear_with_all_columns())).status, 0);
  expect_material(linear_materials()[0]);
  const LinearSection& s = linear_sections(1)[0];
  const double found[] = {s.outside_diameter, s.thickness, s.area, s.inside_diameter, s.J, s.I3, s.I2, s.AS2, s.AS3};
  const double expected[] = {0.5, 0.02, 0.03, 0.46, 0.0017, 0.00087, 0.0008, 0.015, 0.016};
  for (std::size_t i = 0; i < std::size(found); ++i) EXPECT_EQ(found[i], expected[i]) << i;
  expect_water(s.water);
  EXPECT_EQ(linear_record(1).NGAUSS, 2);
}

TEST(PropertyCards, OfTheLargeBeamsStandInTheirRecords) {
  for (const int type : {2, 27}) {
    EXPECT_EQ(run_kept(with_elements(large_with_all_columns(type))).status, 0);
    const LargeBeam beam = type == 2 ? large_record(1) : vortex_record(1).beam;
    expect_material(beam.material);
    EXPECT_EQ(beam.PNU, 0.3);
    EXPECT_EQ(beam.ALPHA, type == 2 ? 1.2e-5 : 0.0);
    const LargeSection& s = beam.section;
    const double found[] = {s.area, s.thickness, s.inside_diameter, s.IY, s.IZ, s.J, s.angle};
    const double expected[] = {0.03, 0.02, 0.46, 0.0008, 0.00087, 0.0017, type == 2 ? 0.3 : 0.0};
    for (std::size_t i = 0; i < std::size(found); ++i) EXPECT_EQ(found[i], expected[i]) << i;
    expect_water(s.water);
    EXPECT_EQ(beam.NSUB, 1);
    EXPECT_EQ(beam.KFEM, 1);
    EXPECT_EQ(beam.KPOST, 3);
  }
}

}  // namespace
}  // namespace tidearc::test
