#include "frame_deck.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <stdexcept>

#include "model/nodes.h"
#include "run/layout.h"
#include "run/workpool.h"
#include "solve/arrays.h"

namespace tidearc::test {

namespace {

std::string line(const std::string& text) { return text + "\n"; }
std::string ints(const std::vector<int>& values) {
  std::string text;
  for (const int value : values) text += format("I5", value);
  return text;
}
std::string reals(const std::vector<double>& values) {
  std::string text;
  for (const double value : values) text += ten(value);
  return text;
}
std::string five(double value) {
  std::string text = ten(value);
  text.erase(0, text.find_first_not_of(' '));
  text = std::string(text.size() < 5 ? 5 - text.size() : 0, ' ') + text.substr(0, 5);
  if (std::stod(text) != value) throw std::runtime_error(text + " is not what five columns should hold");
  return text;
}
std::string header(int type, int count, int first, double BETAO, double BETAT, const std::string& title) {
  return line(ints({type, count, first}) + reals({BETAO, BETAT}) + "     " + title);
}
std::string padded(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}
/// The cards of general drag and lift, and the coefficients of the extended equation before them.
std::string morison_cards(const WaterCards& w) {
  std::string text = line(w.ICA == 0 ? "" : std::string(40, ' ') + ints({w.ICA, w.JCA}));
  for (std::size_t i = 0; i < w.general.size(); i += 8) {
    text += line(reals({w.general.begin() + static_cast<std::ptrdiff_t>(i),
                        w.general.begin() + static_cast<std::ptrdiff_t>(std::min(i + 8, w.general.size()))}));
  }
  return text;
}
std::string offset_card(int number, const std::array<double, 6>& e) {
  return line(ints({number}) + "     " + reals({e[0], e[1], e[2], e[3], e[4], e[5]}));
}

}  // namespace

void LinearGroup::section(const Section& s) {
  sections += line(ints({++section_count, 0}) + reals({s.OD, s.t, s.A, s.ID, s.J, s.I3}) + five(s.I2) + five(s.AS2) +
                   ten(s.AS3));
  const WaterCards& w = s.water;
  sections += line(reals({w.D, w.CD, w.CM, w.CKM, w.CDS}) + "     " + reals({s.growth, w.Db})) + morison_cards(w);
}
void LinearGroup::offset(const std::array<double, 6>& e) { offsets += offset_card(++offset_count, e); }
void LinearGroup::element(Element e) {
  if (e.number == 0) e.number = last + 1;
  last = e.number;
  elements += line(ints({e.number, e.I, e.J, e.DIFF, e.K, e.MAT, e.SEC, e.HIST, e.GEOM, e.WAVE, e.BUOY}) +
                   ten(e.axial) + format("I2,I3,I2,2I4", e.ECC, e.CAT, e.INIT, e.HI, e.HJ)) +
              e.further;
}
std::string LinearGroup::text() const {
  std::string t = header(ITYPE, last, NFIRST, BETAO, BETAT, title);
  t += line(ints({NMAT, section_count, NGAUSS, KFEM, offset_count}) + KDEF);
  for (int m = 1; m <= NMAT; ++m)
    t += line(ints({m}) + "     " + reals({E, poisson, weight, mass, fluid_weight, fluid_mass, pressure}));
  return t + sections + offsets + elements;
}

void LargeGroup::section(const Section& s) {
  ++section_count;
  const WaterCards& w = s.water;
  if (ITYPE == 27) {
    sections += line(ints({section_count}) + "     " + reals({s.A, s.t, s.ID, s.IY, s.IZ, s.J}));
    sections += line(reals({w.D, w.CD, w.CM, w.CKM, w.CDS}) + "     " + reals({s.growth, w.Db}));
  } else {
    sections += line(ints({section_count}) + "     " + reals({s.A, s.t, s.ID, s.IY, s.IZ, s.J, w.D}));
    sections += line(reals({w.CD, w.CM, w.CKM, w.CDS, s.growth}) + "     " + reals({w.Db, s.angle}));
  }
  sections += morison_cards(w);
}
void LargeGroup::offset(const std::array<double, 6>& e) { offsets += offset_card(++offset_count, e); }
void LargeGroup::element(Element e) {
  if (e.number == 0) e.number = last + 1;
  last = e.number;
  elements += line(ints({e.number, e.I, e.J, e.DIFF, e.K, e.MAT, e.SEC, e.OUT, e.KGI, e.KGE, e.SD, e.WAVE, e.BUOY}) +
                   ten(e.axial) + ints({e.ECC, e.CAT, e.INIT})) +
              e.further;
}
std::string LargeGroup::text() const {
  std::string t = header(ITYPE, last, NFIRST, BETAO, BETAT, title);
  t += line(ints({1, section_count, NSUB, KFEM}) + padded(KDEF, 5) + ints({ITYPE == 27 ? kviv : offset_count, KPOST}));
  t += ITYPE == 27 ? viv : "";
  if (ITYPE == 27) {
    t += line(ints({1}) + "     " + reals({E, poisson})) +
         line(reals({weight, mass, fluid_weight, fluid_mass, pressure}));
  } else {
    t += line(ints({1}) + "     " + reals({E, poisson, weight})) +
         line(reals({mass, fluid_weight, fluid_mass, pressure, alpha}));
  }
  return t + sections + offsets + elements;
}

int FrameDeck::node(double x, double y, double z) {
  nodes_ += line(ints({++node_count_}) + reals({x, y, z}));
  return node_count_;
}
void FrameDeck::fix(int node, const std::string& codes) {
  ++fix_count_;
  fixes_ += line(ints({node}) + "    " + codes);
}
void FrameDeck::group(const std::string& text) {
  ++group_count_;
  groups_ += text;
}
void FrameDeck::load(int node, const Load& load) {
  patterns_.emplace_back();
  more_load(node, load);
}
void FrameDeck::more_load(int node, const Load& load) {
  patterns_.back().push_back(line(ints({node}) + reals({load.begin(), load.end()})));
}
void FrameDeck::temperature(int first, int last, double value) {
  ++temperature_count_;
  temperatures_ += line(ints({1}) + "HEAT") + line(ints({first, last, 1}) + ten(value));
}
void FrameDeck::pressure(int node, double value) {
  ++temperature_count_;
  temperatures_ += line(ints({1}) + "PRESS") + line(ints({node, node, 1}) + reals({0.0, value}));
}
void FrameDeck::turn(int node, const std::array<double, 3>& a, const std::array<double, 3>& b) {
  systems_ += line(ints({1}) + reals({a.begin(), a.end()}) + "     " + ints({2}) + reals({b.begin(), b.end()}));
  assignments_ += line(ints({node, ++system_count_}));
}
void FrameDeck::self_weight(const std::string& direction, double gravity) {
  gravity_ = line("   " + padded(direction, 2) + "     " + reals({0.0, 0.0, 0.0}) + ints({0, 0}) + ten(gravity));
}
void FrameDeck::water(const WaterCard& card) {
  const auto& U = card.current;
  current_ = U[0] != 0.0 || U[1] != 0.0;
  buoyancy_ = card.KBUOY != 0;
  gravity_ = line("   -Z     " + reals({card.level, card.weight, card.mass}) + ints({card.KBUOY, current_ ? 1 : 0}) +
                  ten(9.81));
  if (!current_) return;
  const double speed = std::hypot(U[0], U[1]);
  gravity_ +=
      line(ints({2, 1})) + line(reals({0.0, U[0], U[1], 0.0, speed})) + line(reals({1000.0, U[0], U[1], 0.0, speed}));
}
void FrameDeck::stat(const std::vector<SegmentCards>& segments) {
  macros_ += "STAT    STATIC ANALYSIS\n" + line(ints({static_cast<int>(segments.size())}) + "   SEGMENTS");
  for (const SegmentCards& segment : segments) macros_ += segment_text(segment);
}

std::string FrameDeck::text() const {
  const int weight = gravity_.empty() ? 0 : 1;
  std::string t = " STAR   P4.314  A FRAME\n\n\n" + storage + "\n";
  t += line(
      ints({node_count_, node_count_, 0, 0, system_count_, system_count_, fix_count_, 0, 0, group_count_, weight}));
  t += gravity_ + nodes_ + systems_ + assignments_ + fixes_ + groups_;
  t += line(ints(
      {static_cast<int>(patterns_.size()), 0, temperature_count_, 0, weight, buoyancy_ ? 1 : 0, current_ ? 1 : 0}));
  for (const auto& pattern : patterns_) {
    t += line(ints({static_cast<int>(pattern.size())}) + "PATTERN");
    for (const std::string& command : pattern) t += command;
  }
  t += temperatures_ + "\n" + line(ints({-1, -1, -1}));
  return t + macros_ + "NONE\n STOP\n";
}

SegmentCards one_step(double tolerance) {
  SegmentCards cards;
  cards.TOLU = tolerance;
  return cards;
}
SegmentCards steps_of(int steps, double tolerance, int iterations) {
  SegmentCards cards;
  cards.STEP0 = 1.0 / steps;
  cards.NSTEPS = steps;
  cards.MAXIT = iterations;
  cards.TOLU = tolerance;
  cards.KPRINT = 1;
  return cards;
}

FrameDeck unloaded_row_with_held_nodes(const std::string& group) {
  FrameDeck deck;
  for (const double x : {0.0, 2.0, 4.0}) deck.node(x, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "111111");
  deck.fix(3, "111110");
  deck.group(group);
  deck.load(3, {0, 0, 0, 0, 0, 0});
  deck.stat({one_step()});
  return deck;
}

double moved(int node, int component) { return equation_vector(arrays.U)(equation_of(node, component)); }

namespace {
template <class Record>
Record record_at(int running, int LEI) {
  Record record;
  std::memcpy(&record, pool.words(storage.KEDAT + (LEI + 1) * (running - 1), LEI), sizeof(record));
  return record;
}
}  // namespace

LinearBeamRecord linear_record(int running) { return record_at<LinearBeamRecord>(running, 688); }
WaveBeamRecord wave_beam_record(int running) { return record_at<WaveBeamRecord>(running, 300); }
LargeBeam large_record(int running) { return record_at<LargeBeamRecord>(running, 826).beam; }
VortexBeamRecord vortex_record(int running) { return record_at<VortexBeamRecord>(running, 1484); }

}  // namespace tidearc::test
