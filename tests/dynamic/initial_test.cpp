// Initial conditions of a dynamic macro.
#include "command_model.h"

namespace tidearc::test {
namespace {

std::string card(int component, const std::string& velocity, const std::string& acceleration,
                 const std::vector<int>& nodes) {
  std::string text = right(std::to_string(component), 5) + right(velocity, 10) + right(acceleration, 10);
  for (const int node : nodes) text += right(std::to_string(node), 5);
  return text + "\n";
}

const std::string heading_rows =
    "\n **************************************\n INITIAL CONDITION GENERATION COMMANDS\n"
    " **************************************\n";

/// Two nodes that move along X and Y alone, with displacements, velocities and accelerations from before.
class InitialModel : public CommandModel {
 public:
  explicit InitialModel(const std::string& cards) : CommandModel(2, {}, cards) {
    fix(1, {3, 4, 5, 6});
    fix(2, {3, 4, 5, 6});
    ready();
    for (int e = 1; e <= sizes.NEQ; ++e) {
      equation_vector(arrays.U)(e) = 0.1 * e;
      equation_vector(arrays.VEL)(e) = e;
      equation_vector(arrays.ACC)(e) = 10.0 * e;
      equation_vector(arrays.DSTEP)(e) = 100.0 * e;
    }
  }
  static double velocity(int node, int component) { return equation_vector(arrays.VEL)(equation_of(node, component)); }
  static double acceleration(int node, int component) {
    return equation_vector(arrays.ACC)(equation_of(node, component));
  }
};

TEST(InitialConditions, NegativeCountClearsMotionAndKeepsDisplacements) {
  for (const int count : {-1, -7}) {
    InitialModel model("");
    read_initial_conditions(count);
    EXPECT_TRUE(model.report().starts_with(heading_rows + "\n (NONE)  ZERO INITIAL VEL AND ACC CONDITIONS\n"))
        << model.report();
    for (int e = 1; e <= sizes.NEQ; ++e) {
      EXPECT_EQ(equation_vector(arrays.VEL)(e), 0.0);
      EXPECT_EQ(equation_vector(arrays.ACC)(e), 0.0);
      EXPECT_EQ(equation_vector(arrays.DSTEP)(e), 0.0);
      EXPECT_EQ(equation_vector(arrays.U)(e), 0.1 * e);
    }
  }
}

TEST(InitialConditions, CountOfZeroKeepsAll) {
  InitialModel model("");
  read_initial_conditions(0);
  EXPECT_TRUE(model.report().starts_with(heading_rows + "\n (NONE)  INITIAL CONDITIONS OF CURRENT RESULTS SEQ.NO."))
      << model.report();
  EXPECT_EQ(InitialModel::velocity(1, 2), 2.0);
  EXPECT_EQ(InitialModel::acceleration(2, 1), 30.0);
}

TEST(InitialConditions, TableHasAllEquations) {
  for (const int count : {-1, 0, 1}) {
    InitialModel model(card(1, "1.0", "2.0", {1}));
    read_initial_conditions(count);
    const std::string motion = count == 0    ? "       0.10000E+01       0.10000E+02\n"
                               : count == -1 ? "       0.00000E+00       0.00000E+00\n"
                                             : "       0.10000E+01       0.20000E+01\n";
    EXPECT_TRUE(
        model.reports("1\n INITIAL CONDITIONS FOR DYNAMIC ANALYSIS\n\n"
                      "   EQUATION         DISPLACEMENT          VELOCITY      ACCELERATION\n\n"
                      "          1          0.10000E+00" +
                      motion))
        << model.report();
    EXPECT_TRUE(has_line(model.report().substr(0, model.report().size()),
                         count == 0 ? "          4          0.40000E+00       0.40000E+01       0.40000E+02"
                                    : "          4          0.40000E+00       0.00000E+00       0.00000E+00"));
    EXPECT_FALSE(model.reports("\n          5   "));
  }
}

TEST(InitialConditions, CardsSetWhatTheyNameAndClearTheRest) {
  InitialModel model(card(1, "1.5", "-2.5", {1, 2}) + card(2, "0.0", "3.0", {2}));
  read_initial_conditions(2);
  EXPECT_TRUE(model.report().starts_with(heading_rows +
                                         "\n     INITIAL VEL AND ACC CONDITIONS INPUT THRU CARDS\n\n"
                                         "     DIRECTION       VELOCITY       ACCELRN   LIST OF NODES\n\n"
                                         "         X        0.15000E+01   -0.25000E+01     1     2\n"
                                         "         Y        0.00000E+00    0.30000E+01     2\n"))
      << model.report();
  EXPECT_EQ(InitialModel::velocity(1, 1), 1.5);
  EXPECT_EQ(InitialModel::velocity(2, 1), 1.5);
  EXPECT_EQ(InitialModel::acceleration(2, 1), -2.5);
  EXPECT_EQ(InitialModel::acceleration(2, 2), 3.0);
  EXPECT_EQ(InitialModel::velocity(1, 2), 0.0);
  EXPECT_EQ(InitialModel::acceleration(1, 2), 0.0);
  EXPECT_EQ(equation_vector(arrays.DSTEP)(1), 0.0);
  EXPECT_EQ(equation_vector(arrays.U)(4), 0.4);
}

TEST(InitialConditions, LaterCardOverwrites) {
  InitialModel model(card(1, "1.5", "-2.5", {1, 2}) + card(1, "4.0", "0.0", {2}));
  read_initial_conditions(2);
  EXPECT_EQ(InitialModel::velocity(1, 1), 1.5);
  EXPECT_EQ(InitialModel::velocity(2, 1), 4.0);
  EXPECT_EQ(InitialModel::acceleration(2, 1), 0.0);
}

TEST(InitialConditions, ConstrainedComponentsAreSkipped) {
  InitialModel model(card(3, "1.5", "-2.5", {1, 2}));
  read_initial_conditions(1);
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(equation_vector(arrays.VEL)(NEQ1()), 0.0) << "the sink stays zero";
}

TEST(InitialConditions, TakeElevenNodesUpToTheFirstEntryBelowOne) {
  CommandModel model(
      12, {}, card(1, "1.0", "0.0", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}) + card(2, "1.0", "0.0", {1, -1, 3}));
  model.ready();
  read_initial_conditions(2);
  EXPECT_EQ(equation_vector(arrays.VEL)(equation_of(11, 1)), 1.0);
  EXPECT_EQ(equation_vector(arrays.VEL)(equation_of(12, 1)), 0.0) << "columns behind 80 are not read";
  EXPECT_EQ(equation_vector(arrays.VEL)(equation_of(1, 2)), 1.0);
  EXPECT_EQ(equation_vector(arrays.VEL)(equation_of(3, 2)), 0.0);
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(InitialConditions, WrongComponentIsMarked) {
  for (const int component : {-1, 0, 7}) {
    InitialModel model(card(component, "1.5", "-2.5", {1}));
    read_initial_conditions(1);
    EXPECT_TRUE(
        model.reports("        **        0.15000E+01   -0.25000E+01     1\n\n\n ERROR MESSAGES - NONFATAL DATA "
                      "ERRORS\n"))
        << model.report();
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_TRUE(run.had_data_error);
    EXPECT_TRUE(model.complains("columns 1-5: there is no component"));
    EXPECT_TRUE(model.reports(" INITIAL CONDITIONS FOR DYNAMIC ANALYSIS\n"));
  }
}

TEST(InitialConditions, WrongNodeIsADataError) {
  InitialModel model(card(1, "1.5", "-2.5", {1, 3, 2}));
  read_initial_conditions(1);
  EXPECT_TRUE(model.reports(" ***** DATA ERROR *****      NODE     3  OUT OF RANGE, ENTERING CHEC MODE\n"));
  EXPECT_TRUE(model.complains("columns 31-35: ")) << model.scratch.errors();
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(InitialModel::velocity(2, 1), 1.5) << "the others stand";
}

TEST(InitialConditions, InADataCheckAreReadAndEchoedAndSetNothing) {
  InitialModel model(card(1, "1.5", "-2.5", {1}) + card(9, "1.5", "-2.5", {3}) + "next\n");
  run.RUNMOD = 1;
  read_initial_conditions(2);
  EXPECT_TRUE(model.reports("         X        0.15000E+01   -0.25000E+01     1\n"));
  EXPECT_TRUE(model.reports("        **        0.15000E+01   -0.25000E+01     3\n"));
  EXPECT_EQ(InitialModel::velocity(1, 1), 1.0);
  EXPECT_FALSE(model.reports("INITIAL CONDITIONS FOR DYNAMIC ANALYSIS"));
  std::string line;
  EXPECT_TRUE(next_line(units.NDIN, line));
  EXPECT_EQ(line, "next");
}

TEST(InitialConditions, AreInTheNodesOwnAxes) {
  CommandModel model(1, {}, card(2, "1.0", "0.0", {1}));
  model.turn(1, {{{0.0, 1.0, 0.0}, {-1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}}});
  model.ready();
  read_initial_conditions(1);
  EXPECT_EQ(equation_vector(arrays.VEL)(equation_of(1, 2)), 1.0);
}

TEST(InitialConditions, MissingCardIsAFailureOfTheDeck) {
  InitialModel model("");
  EXPECT_EQ(stop_of([] { read_initial_conditions(1); }), status_io);
}

}  // namespace
}  // namespace tidearc::test
