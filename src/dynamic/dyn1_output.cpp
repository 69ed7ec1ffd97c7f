// An analysis with variable steps on the progress file: legend, column heads, lines, and how the macro ended.
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "dynamic/dyn1.h"
#include "dynamic/step.h"
#include "run/layout.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

constexpr std::array<std::string_view, 5> line_type_texts{
    "END OF STEP, RETAIN SAME DELTA-T",
    "END OF STEP, INCREASE DELTA-T",
    "END OF SUBSTEP, MIDSTEP ERROR WITHIN ALLOWABLE TOLERANCE",
    "END OF SUBSTEP, MIDSTEP ERROR EXCEEDS TOLERANCE, STEP TO BE REPEATED",
    "BEGINNING OF SUBSTEP, SUBSTEP COUNTER EXCEEDS MAXIMUM NUMBER OF ALLOWABLE SUBSTEPS, STEP TO BE REPEATED",
};

void write_line_types(int unit) {
  for (std::size_t i = 0; i < line_type_texts.size(); ++i)
    put_text(unit, format("5X,I1,' - '", static_cast<int>(i + 1)) + std::string(line_type_texts[i]) + '\n');
}

/// A head and the column in which it ends.
struct Head {
  std::string_view text;
  std::size_t last;
};

void write_heads(std::span<const Head> heads) {
  std::string line;
  for (const Head& head : heads) {
    line.resize(head.last, ' ');
    line.replace(head.last - head.text.size(), head.text.size(), head.text);
  }
  put_text(UNIT_PROGRESS, line + '\n');
}

constexpr std::array<Head, 19> numbers{{{"(1)", 3},
                                        {"(2)", 8},
                                        {"(3)", 11},
                                        {"(4)", 16},
                                        {"(5)", 21},
                                        {"(6)", 31},
                                        {"(7)", 39},
                                        {"(8)", 48},
                                        {"(9)", 57},
                                        {"(10)", 66},
                                        {"(11)", 75},
                                        {"(12)", 85},
                                        {"(13)", 94},
                                        {"(14)", 103},
                                        {"(15)", 112},
                                        {"(16)", 121},
                                        {"(17)", 128},
                                        {"(18)", 133},
                                        {"(19)", 138}}};
constexpr std::array<Head, 20> names{{{"T", 1},         {"STEP", 8},      {"SB", 11},       {"LOAD", 16},
                                      {"STIF", 21},     {"CURRENT", 31},  {"DELTA-T", 39},  {"APPLIED", 48},
                                      {"UNBALANC", 57}, {"MIDSTEP", 66},  {"MAX.", 75},     {"UNBALANCE", 85},
                                      {"EXTERNAL", 94}, {"KINETIC", 103}, {"ELASTIC", 112}, {"VISCOUS", 121},
                                      {"ULT", 128},     {"NODE", 133},    {"D", 135},       {"MAX.", 144}}};
constexpr std::array<Head, 11> second_names{{{"STEP", 16},
                                             {"TIME", 31},
                                             {"LOAD", 48},
                                             {"LOAD", 57},
                                             {"ERROR", 66},
                                             {"DISPL.", 75},
                                             {"ENERGY", 85},
                                             {"PLASTIC", 112},
                                             {"DAMPING", 121},
                                             {"LEVEL", 128},
                                             {"VEL.", 144}}};

/// What the macro ends with on the report, between two lines that are always the same.
std::string_view box_text(Dyn1End end) {
  if (end == Dyn1End::displacement) return "MAX. DISPL. EXCEEDS ALLOWABLE VALUE";
  if (end == Dyn1End::step_size) return "STEP SIZE SMALLER THAN ALLOWABLE VALUE";
  return "UNBALANCE FORCE EXCEEDS TOLERANCE";
}

}  // namespace

void write_dyn1_legend() {
  const Dyn1Cards& c = dyn1.cards;
  const bool choosing = chooses_steps(c.KSOL);
  put_text(units.NDOUT, "\n LINE TYPE DESCRIPTION\n");
  write_line_types(units.NDOUT);
  const int unit = UNIT_PROGRESS;
  write(unit, "/,5X,'DYN1 MACRO OUTPUT INFORMATION:'");
  write(unit, "5X,'(1) - LINE TYPE'");
  write_line_types(unit);
  write(unit, "5X,'(2) - CURRENT STEP NUMBER (MAX=',I7,')'", c.limits.NSMAX);
  write(unit, "5X,'(3) - CURRENT SUBSTEP NUMBER (MAX=',I2,')'", c.NSUBMX);
  write(unit, "5X,'(4) - LOAD STEP (SEQUENCE) NUMBER (SAVED TO POSTPROCESSOR)'");
  write(unit, "5X,'(5) - TOTAL NUMBER OF STIFFNESS REFORMULATIONS'");
  write(unit, "5X,'(6) - CURRENT ANALYSIS TIME (MAX=',G11.4,')'", c.limits.TMAX);
  write(unit, "5X,'(7) - CURRENT TIME INTERVAL, (LIMIT=',E8.3,')'", choosing ? c.rules.DTMAX : integration.DT);
  write(unit, "5X,'(8) - NORM OF APPLIED LOAD'");
  write(unit, "5X,'(9) - NORM OF OUT-OF-BALANCE LOAD'");
  write(unit, "5X,'(10)- NORM OF MIDSTEP ERROR (MAX=',G8.3,')'", choosing ? c.rules.ERRUP : 0.0);
  write(unit, "5X,'(11)- MAXIMUM ALLOWABLE DISPLACEMENT (LIMIT=',G8.3,')'", c.DISMAX);
  write(unit, "5X,'(17)- LOAD LEVEL FOR ULT'");
  write(unit, "5X,'(18)- NAME OF NODE WITH MAXIMUM VELOCITY'");
  write(unit, "5X,'(19)- DIRECTION CODE FOR THE NODE'");
  write(unit, "5X,'(20)- THE VALUE OF MAXIMUM VELOCITY'");
  put_text(unit, "\n");
  write_heads(numbers);
  write_heads(names);
  write_heads(second_names);
}

void write_dyn1_line(LineType type) {
  const Energies& energy = dynamics.energy;
  write(UNIT_PROGRESS, "I1,I7,I3,I5,I5,1X,F9.4,1X,F7.4,4(1X,E8.3),1X,E9.3,4(1X,E8.2),1X,F6.3,I5,I2,1X,E8.3",
        static_cast<int>(type), dynamics.NS, dyn1.NSUB, response.NLSTEP, solver.NSTUPD, response.TIME, integration.DT,
        dynamics.APPLIED, response.RNORM, dyn1.ERR, dyn1.peak.displacement, energy.unbalance(), energy.external,
        energy.kinetic, energy.elastic, energy.viscous, dynamics.ULTLVL, dyn1.peak.node, dyn1.peak.direction,
        dyn1.peak.velocity);
  flush_formatted(UNIT_PROGRESS);  // whoever follows the run sees each step
  dyn1.last_line = type;
}

void write_dyn1_box(Dyn1End end) {
  write(units.NDOUT,
        "/,' ****  EXECUTION TERMINATED                   ****',/,' **** ',A40,'****',/,"
        "' ****  PROCEED WITH NEXT PROBLEM (IF ANY)     ****'",
        box_text(end));
}

void write_dyn1_end(Dyn1End end) {
  const int n = dynamics.NDYN1;
  const int unit = UNIT_PROGRESS;
  switch (end) {
    case Dyn1End::not_executing:
      write(unit, "5X,'DYN1 MACRO NUMBER ',I2,' TERMINATED:','FATAL ERRORS FOUND BEFORE THIS MACRO'", n);
      break;
    case Dyn1End::bad_cards:
      write(unit, "5X,'DYN1 MACRO NUMBER ',I2,' TERMINATED:',' FATAL ERRORS ENCOUNTERED IN INPUT CARDS'", n);
      break;
    case Dyn1End::unbalance:
      write(unit, "5X,'DYN1 MACRO NUMBER ',I2,' TERMINATED:',' EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE'", n);
      break;
    case Dyn1End::steps:
      write(unit, "5X,'DYN1 MACRO NUMBER ',I2,' COMPLETED:',' MAXIMUM NUMBER OF STEPS REACHED'", n);
      break;
    case Dyn1End::time:
      write(unit, "5X,'DYN1 MACRO NUMBER ',I2,' COMPLETED:',' MAXIMUM ANALYSIS TIME REACHED'", n);
      break;
    case Dyn1End::level:
      write(unit, "5X,'DYN1 MACRO NUMBER ',I2,' COMPLETED:',' MAXIMUM ULT LOAD LEVEL REACHED'", n);
      break;
    case Dyn1End::displacement:
      write(unit, "5X,'DYN1 MACRO NUMBER ',I2,' COMPLETED:',' EXCEEDING MAXIMUM DISPLACEMENT LIMIT'", n);
      break;
    case Dyn1End::step_size:
      write(unit, "5X,'DYN1 MACRO NUMBER ',I2,' TERMINATED:',' STEP SIZE BELOW MINIMUM ALLOWABLE'", n);
      break;
  }
}

}  // namespace tidearc
