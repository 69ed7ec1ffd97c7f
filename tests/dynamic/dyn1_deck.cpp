#include "dyn1_deck.h"

#include <cmath>
#include <cstdio>
#include <exception>
#include <optional>

#include "dynamic/dyn1.h"
#include "dynamic/dynamic.h"
#include "elements/contract/event_scan.h"
#include "elements/contract/state_log.h"
#include "elements/contract/walk.h"
#include "roof/datain.h"
#include "roof/startup.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "scratch.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "static/segment.h"
#include "truss_deck.h"

namespace tidearc::test {

namespace {

template <class... Values>
std::string fields(const char* pattern, Values... values) {
  char text[512];
  std::snprintf(text, sizeof text, pattern, values...);
  return text;
}

std::string five(double value) { return fields("%5.4g", value); }

std::vector<double> copy_of(int vector) {
  const Reals values = pool.reals(vector, sizes.NEQ);
  return {values.begin(), values.end()};
}

/// The records as they stand, without the words of the stiffness pass, which belong to no state.
std::vector<char> copy_of_records() {
  std::vector<char> copy;
  for_each_element(Pass::reading, [&](const ElementType& type, Word* record, int) {
    std::vector<Word> words_of_record(record, record + group.LFIX);
    put_stiffness_words(type, {0, 0}, words_of_record.data());
    const char* bytes = reinterpret_cast<const char*>(words_of_record.data());
    copy.insert(copy.end(), bytes, bytes + words_of_record.size() * sizeof(Word));
  });
  return copy;
}

Snapshot snapshot() {
  Snapshot s;
  s.TIME = response.TIME;
  s.DT = integration.DT;
  s.UB = response.RNORM;
  s.ERR = dyn1.ERR;
  s.level = dynamics.ULTLVL;
  s.EFAC = event_found.EFAC;
  s.U = copy_of(arrays.U);
  s.VEL = copy_of(arrays.VEL);
  s.ACC = copy_of(arrays.ACC);
  s.R = copy_of(arrays.R);
  s.energy = dynamics.energy;
  s.records = copy_of_records();
  s.logged = state_log.committed;
  s.runmod = run.RUNMOD;
  return s;
}

bool run_next_macro(const std::string& card) {
  void (*macro)() = card.rfind("STAT", 0) == 0 ? STAT : card.rfind("DYN1", 0) == 0 ? DYN1 : DYN2;
  if (card.rfind("NONE", 0) == 0) return false;
  macro();
  return true;
}

std::vector<Dyn1Line> lines_on(const std::string& progress) {
  std::vector<Dyn1Line> lines;
  for (const std::string& text : lines_of(progress)) {
    if (text.size() != 144 || text[0] < '1' || text[0] > '5') continue;
    const auto at = [&](std::size_t last, std::size_t width) { return text.substr(last - width, width); };
    const auto real = [&](std::size_t last, std::size_t width) {
      try {
        return std::stod(at(last, width));
      } catch (const std::exception&) {
        return -1.0E300;  // too wide for its field
      }
    };
    const auto whole = [&](std::size_t last, std::size_t width) {
      const double value = real(last, width);
      return std::abs(value) < 1.0E9 ? static_cast<int>(value) : -1;
    };
    if (real(31, 9) == -1.0E300) continue;
    lines.push_back({whole(1, 1),  whole(8, 7),  whole(11, 3), whole(16, 5),  whole(21, 5),  real(31, 9), real(39, 7),
                     real(48, 8),  real(57, 8),  real(66, 8),  real(75, 8),   real(85, 9),   real(94, 8), real(103, 8),
                     real(112, 8), real(121, 8), real(128, 6), whole(133, 5), whole(135, 2), real(144, 8)});
  }
  return lines;
}

}  // namespace

std::string dyn1_text(const Dyn1CardValues& c) {
  std::string t = "DYN1    VARIABLE STEPS\n";
  t += fields("%5d%5d", c.KSOL, c.KACC) + ten(c.DT) + ten(c.ALPHA) + ten(c.BETA) + ten(c.DMASS) +
       fields("%5d%5d%5d%5d%5d%5d\n", c.NINIT, c.KGROUND, c.NFORCE, c.NIMPOSED, c.KENVELOPE, 0);
  if (c.KSOL != 2)
    t += ten(c.DTMIN) + ten(c.DTMAX) + ten(c.REDF) + ten(c.INCF) + ten(c.ERRUP) + ten(c.ERRLO) +
         fields("%2d%3d", c.NBELOW, c.KMOMENT) + ten(c.PRECF) + five(c.PRECMX) + "\n";
  t += fields("%5d", c.NSMAX) + ten(c.TMAX) + ten(c.UBMAX) + ten(c.DISMAX) + ten(c.EVMAX) + fields("%5d", c.NSUBMX) +
       ten(c.VCUT) + fields("%5d", c.NTOP) + ten(c.UBUP) + ten(c.UBLO) + "\n";
  return t + c.outputs + "\n" + c.commands;
}

std::string iterated_macro(double DT, int NSTEP, const std::string& commands, double DMASS, int MAXIT) {
  Dyn2Cards cards;
  cards.DT = DT;
  cards.DMASS = DMASS;
  cards.NSTEP = NSTEP;
  cards.NFORCE = 1;
  cards.MAXIT = MAXIT;
  cards.KISTF = 1;
  cards.KISTA = MAXIT;
  cards.TOL = 1.0E-10;
  cards.commands = commands;
  return "DYN2    CONSTANT STEPS\n" + dyn2_text(cards);
}

void Dyn1Deck::bar(double stiffness, double mass, double ratio, double yield) {
  if (node_count_ == 0) {
    nodes_ += fields("%5d", ++node_count_) + ten(0.0) + ten(0.0) + ten(0.0) + "\n";
    fixes_ += fields("%5d    111111\n", node_count_);
    ++fix_count_;
  }
  ++node_count_;
  nodes_ += fields("%5d", node_count_) + ten(10.0 * (node_count_ - 1)) + ten(0.0) + ten(0.0) + "\n";
  fixes_ += fields("%5d    011111\n", node_count_);
  ++fix_count_;
  if (mass != 0.0) {
    masses_ += fields("%5d", node_count_) + ten(mass) + "\n";
    ++mass_count_;
  }
  const double area = stiffness / 100.0;
  ++bar_count_;
  materials_ += fields("%5d", bar_count_) + ten(1000.0) + ten(ratio) + ten(yield / area) + ten(yield / area) + "\n\n";
  sections_ += fields("%5d", bar_count_) + ten(area) + "\n\n";
  bars_ += fields("%5d%5d%5d%5d%5d\n", bar_count_, node_count_ - 1, node_count_, bar_count_, bar_count_);
}

void Dyn1Deck::fix_last() {
  fixes_ += fields("%5d    111111\n", node_count_);
  ++fix_count_;
}

void Dyn1Deck::prescribe(int node, double value) {
  ++prescribed_count_;
  prescribed_ += fields("%5d   SUPPORT\n%5d%5d", 1, node, 1) + ten(value) + "\n";
}

std::string Dyn1Deck::record(const std::vector<std::pair<double, double>>& points, const char* name) const {
  std::string t = "    1\n" + fields("%-60s%-20s\n", name, "(2F10.0)");
  t += fields("%5d%5d", static_cast<int>(points.size()), 0) + ten(0.0) + ten(1.0) + "\n";
  for (const auto& [time, value] : points) t += ten(time) + ten(value) + "\n";
  return t;
}

void Dyn1Deck::force_record(const std::vector<std::pair<double, double>>& points) {
  ++force_count_;
  forces_ += record(points, "A FORCE");
}

void Dyn1Deck::displacement_record(const std::vector<std::pair<double, double>>& points) {
  ++displacement_count_;
  displacements_ += record(points, "A DISPLACEMENT");
}

std::string Dyn1Deck::text() const {
  std::string t = " " + command + "   P4.314  TRUSSES IN A ROW\n\n\n" + storage + "\n";
  t += fields("%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d\n", node_count_, node_count_, 0, 0, 0, 0, fix_count_, 0,
              mass_count_, 1, 0, 0, energies);
  t += nodes_ + fixes_ + masses_;
  t += fields("%5d%5d%5d", 1, bar_count_, 1) + ten(BETAO) + ten(BETAT) + "     TRUSS\n";
  t += fields("%5d%5d%5d\n", bar_count_, bar_count_, 0) + materials_ + sections_ + bars_;
  t += fields("%5d%5d%5d%5d%5d%5d%5d%5d\n", 0, 0, 0, 0, 0, 0, 0, prescribed_count_) + prescribed_;
  t += fields("%5d%5d%5d%5d%5d%5d\n", 0, force_count_, displacement_count_, 20, 20, 500) + forces_ + displacements_;
  t += fields("%5d%5d%5d\n", -1, -1, -1);
  return t + macros_ + "NONE\n STOP\n";
}

Dyn1Deck bilinear_oscillator() {
  Dyn1Deck deck;
  deck.bar(100.0, 1.0, 0.1, 1.0);
  deck.force_record({{0.0, 1.5}, {100.0, 1.5}});
  return deck;
}

MacroRun run_macros(const std::string& deck) {
  Scratch scratch(deck);
  MacroRun result;
  const std::optional<int> stopped = stop_of([&] {
    start_process("4M");
    pool.allocate(run.MTOT);
    DATAIN();
    std::string card;
    while (next_line(units.NDIN, card) && run_next_macro(card)) result.behind.push_back(snapshot());
  });
  result.status = stopped.value_or(run.had_terminated_macro ? status_terminated : status_good);
  result.report = scratch.report();
  result.progress = scratch.contents("TAP53");
  result.levels = scratch.contents("TAP.ULTFAC");
  result.errors = scratch.errors();
  result.top = scratch.contents("TAP32");
  result.lines = lines_on(result.progress);
  return result;
}

MacroRun run_one(Dyn1Deck deck, const Dyn1CardValues& cards) {
  deck.macro(dyn1_text(cards));
  return run_macros(deck.text());
}

}  // namespace tidearc::test
