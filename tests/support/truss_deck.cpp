#include "truss_deck.h"

#include <cstdio>

namespace tidearc::test {

namespace {

template <class... Values>
std::string card(const char* pattern, Values... values) {
  char line[512];
  std::snprintf(line, sizeof line, pattern, values...);
  return std::string(line) + "\n";
}

}  // namespace

std::string ten(double value) {
  char field[64];
  for (int digits = 9; digits > 0; --digits) {
    const int n = std::snprintf(field, sizeof field, "%.*g", digits, value);
    std::string text(field, static_cast<std::size_t>(n));
    if (text.find_first_of(".e") == std::string::npos) text += '.';
    if (text.size() <= 10) return std::string(10 - text.size(), ' ') + text;
  }
  return "         *";
}

namespace {

std::string factor_cards(const std::vector<double>& factors) {
  std::string cards;
  for (std::size_t i = 0; i < factors.size(); ++i) {
    if (i > 0 && i % 8 == 0) cards += "\n";
    cards += ten(factors[i]);
  }
  return cards + "\n";
}

}  // namespace

std::string segment_text(const SegmentCards& s) {
  std::string t;
  t += card("%5d%5d%s%5d%5d%s%5d%5d%5d%5d%5d%5d%s", s.KSTEP, s.KNMS,
            (s.SEGVAL == 0.0 ? std::string(10, ' ') : ten(s.SEGVAL)).c_str(), s.NSVEC, s.KDIR, ten(s.STEP0).c_str(),
            s.NSTEPS, s.KEVENT, s.KITER, s.KIPAR, s.MAXIT, s.KTERM, ten(s.FQUIT).c_str());
  t += s.vectors;
  t += card("%5d%5d%5d%5d%5d%5d%5d%5d%5d%s%5d%5d%s%s", s.KSSTF, s.KISTF, s.KBFGS, s.KISTA, s.KPRINT, 0, s.KPOST, 0,
            s.KPOSTN, ten(s.ULTFAC).c_str(), s.MACPR, s.IROB, ten(s.ARCL).c_str(), ten(s.STEPSZI).c_str());
  t += card("%5d%5d%s%s%s%5d%s%s%s%5d", s.KUTYPE, s.KUMOM, ten(s.TOLU).c_str(), ten(s.TOLL).c_str(),
            ten(s.USCALE).c_str(), s.NLS, ten(s.SUP).c_str(), ten(s.SLOW).c_str(), ten(s.TOLS).c_str(), s.NTOP);
  if (s.KTERM == 0) t += s.card4 + "\n";
  t += factor_cards(s.factors);
  t += "\n";  // follower
  t += factor_cards(s.temperatures);
  t += "\n";  // pressure
  t += factor_cards(s.generated);
  t += factor_cards(s.pfactors);
  return t;
}

std::string vector_cards(int node, int component, double factor, double scale) {
  std::string cards = card("%5d", 1);
  cards.pop_back();
  cards += ten(scale) + "\n" + card("%5d%5d", node, component);
  cards.pop_back();
  return cards + ten(factor) + "\n";
}

int TrussDeck::node(double x, double y, double z) {
  nodes_ += card("%5d", ++node_count_);
  nodes_.pop_back();
  nodes_ += ten(x) + ten(y) + ten(z) + "\n";
  return node_count_;
}

void TrussDeck::fix(int node, const std::string& codes) {
  ++fix_count_;
  fixes_ += card("%5d    %s", node, codes.c_str());
}

int TrussDeck::material(double E, double ratio, double tension, double compression, double ductility,
                        const std::string& overshoot) {
  materials_ += card("%5d", ++material_count_);
  materials_.pop_back();
  materials_ += ten(E) + ten(ratio) + ten(tension) + ten(compression) + "\n";
  materials_ += std::string(40, ' ') + ten(ductility) + "     " + overshoot + "\n";
  return material_count_;
}

int TrussDeck::section(double area) {
  sections_ += card("%5d", ++section_count_);
  sections_.pop_back();
  sections_ += ten(area) + "\n\n";
  return section_count_;
}

void TrussDeck::bar(int i, int j, int material, int section, int geometry, int buckling, double force) {
  bars_ += card("%5d%5d%5d%5d%5d%s%5d%5d%5d", ++bar_count_, i, j, material, section, ten(force).c_str(), geometry, 0,
                buckling);
}

void TrussDeck::curve(const std::vector<double>& pairs) {
  for (const double value : pairs) bars_ += ten(value);
  bars_ += "\n";
}

void TrussDeck::pattern(int node, double fx, double fy, double fz, double mz) {
  ++pattern_count_;
  patterns_ += card("%5dPATTERN %d", 1, pattern_count_);
  patterns_ += card("%5d", node);
  patterns_.pop_back();
  patterns_ += ten(fx) + ten(fy) + ten(fz) + ten(0.0) + ten(0.0) + ten(mz) + "\n";
}

void TrussDeck::prescribe(int node, int component, double value) {
  ++prescribed_count_;
  prescribed_ += card("%5d   SUPPORT %d", 1, prescribed_count_);
  prescribed_ += card("%5d%5d", node, component);
  prescribed_.pop_back();
  prescribed_ += ten(value) + "\n";
}

void TrussDeck::stat(const std::vector<SegmentCards>& segments) {
  macros_ += "STAT    STATIC ANALYSIS\n";
  macros_ += card("%5d   SEGMENTS", static_cast<int>(segments.size()));
  for (const SegmentCards& segment : segments) macros_ += segment_text(segment);
}

void TrussDeck::macro(const std::string& text) { macros_ += text + "\n"; }

std::string TrussDeck::problem() const {
  std::string t = " " + command + "   " + title + "\n\n\n\n";
  t += card("%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d", node_count_, node_count_, 0, 0, 0, 0, fix_count_, 0, 0, 1, 0);
  t += nodes_ + fixes_;
  t += card("%5d%5d%5d%10s%10s     TRUSS", 1, bar_count_, 1, "", "");
  t += card("%5d%5d%5d", material_count_, section_count_, 0);
  t += materials_ + sections_ + bars_;
  t += card("%5d%5d%5d%5d%5d%5d%5d%5d", pattern_count_, 0, 0, 0, 0, 0, 0, prescribed_count_);
  t += patterns_ + prescribed_;
  t += "\n";                           // dynamic load control card
  t += card("%5d%5d%5d", -1, -1, -1);  // response output card: all nodes
  return t + macros_ + "NONE\n";
}

std::string TrussDeck::text() const { return problem() + " STOP\n"; }

TrussDeck bar_along_x(double ratio, double yield) {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "011111");
  deck.material(1000, ratio, yield, yield);
  deck.section(1);
  deck.bar(1, 2);
  return deck;
}

TrussDeck loaded_bar(double load, double ratio, double yield) {
  TrussDeck deck = bar_along_x(ratio, yield);
  deck.pattern(2, load, 0, 0);
  return deck;
}

TrussDeck two_bar_truss(double load, double x, double ratio, double yield) {
  TrussDeck deck;
  deck.node(-10, 0, 0);
  deck.node(x, 0, 0.5);
  deck.node(10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, x == 0.0 ? "110111" : "010111");
  deck.fix(3, "111111");
  deck.material(1000000, ratio, yield, yield);
  deck.section(1);
  deck.bar(1, 2, 1, 1, 1);
  deck.bar(2, 3, 1, 1, 1);
  deck.pattern(2, 0, 0, -load);
  return deck;
}

TrussDeck nodes_in_a_row(double end) {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.node(end, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "011111");
  deck.fix(3, "011111");
  return deck;
}

TrussDeck bars_in_a_row(double end, double second_area, double ratio, double yield) {
  TrussDeck deck = nodes_in_a_row(end);
  deck.material(1000, ratio, yield, yield);
  deck.section(1);
  deck.section(second_area);
  deck.bar(1, 2);
  deck.bar(2, 3, 1, 2);
  return deck;
}

}  // namespace tidearc::test
