// A small frame deck in the making, and the answers of its run with all their digits.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "elements/beam/record.h"
#include "elements/contract/group.h"
#include "elements/contract/walk.h"
#include "support/run_deck.h"
#include "support/truss_deck.h"

namespace tidearc::test {

/// What the water sees of a section.
struct WaterCards {
  double D = 0.0, CD = 0.0, CM = 0.0, CKM = 0.0, CDS = 0.0, Db = 0.0;
  int ICA = 0, JCA = 0;
  std::vector<double> general = {};  ///< cards of load code 7: inertia, twelve of drag, twelve of lift
};

/// Cards of a type 3 or type 7 group. Sections and elements are added one by one.
struct LinearGroup {
  int ITYPE = 3;
  double E = 1000.0, poisson = 0.25, weight = 0.0, mass = 0.0, fluid_weight = 0.0, fluid_mass = 0.0, pressure = 0.0;
  int NMAT = 1, NGAUSS = 2, KFEM = 0, NFIRST = 1;
  double BETAO = 0.0, BETAT = 0.0;
  std::string KDEF = "";
  std::string title = "FRAME";
  std::string sections = "", offsets = "", elements = "";
  int section_count = 0, offset_count = 0, element_count = 0, last = 0;

  struct Section {
    double OD = 0.0, t = 0.0, A = 0.0, ID = 0.0, J = 0.0, I3 = 0.0, I2 = 0.0, AS2 = 0.0, AS3 = 0.0, growth = 0.0;
    WaterCards water = {};
  };
  struct Element {
    int number = 0, I = 1, J = 2, DIFF = 0, K = 0, MAT = 0, SEC = 0, HIST = 0, GEOM = 0, WAVE = 0, BUOY = 0;
    double axial = 0.0;
    int ECC = 0, CAT = 0, INIT = 0, HI = 0, HJ = 0;
    std::string further = "";  ///< cards that follow
  };
  void section(const Section& s);
  void offset(const std::array<double, 6>& e);  ///< I-X, I-Y, I-Z, J-X, J-Y, J-Z
  void element(Element e);                      ///< a number of 0 is the next
  std::string text() const;
};

/// Cards of a type 2 or type 27 group.
struct LargeGroup {
  int ITYPE = 2;
  double E = 1000.0, poisson = 0.25, weight = 0.0, mass = 0.0, fluid_weight = 0.0, fluid_mass = 0.0, pressure = 0.0,
         alpha = 0.0;
  int NSUB = 1, KFEM = 0, kviv = 2, KPOST = 0, NFIRST = 1;
  double BETAO = 0.0, BETAT = 0.0;
  std::string KDEF = "";
  std::string title = "FRAME";
  std::string sections = "", offsets = "", elements = "", viv = "";
  int section_count = 0, offset_count = 0, element_count = 0, last = 0;

  struct Section {
    double A = 0.0, t = 0.0, ID = 0.0, IY = 0.0, IZ = 0.0, J = 0.0, growth = 0.0, angle = 0.0;
    WaterCards water = {};
  };
  struct Element {
    int number = 0, I = 1, J = 2, DIFF = 0, K = 0, MAT = 0, SEC = 0, OUT = 0, KGI = 0, KGE = 0, SD = 2, WAVE = 0,
        BUOY = 0;
    double axial = 0.0;
    int ECC = 0, CAT = 0, INIT = 0;
    std::string further = "";
  };
  void section(const Section& s);
  void offset(const std::array<double, 6>& e);
  void element(Element e);
  std::string text() const;
};

using Load = std::array<double, 6>;

/// Gravity and water card: water at `level`, uniform static current where `current` is not zero.
struct WaterCard {
  double level = 0.0, weight = 0.0, mass = 0.0;
  int KBUOY = 0;
  std::array<double, 3> current{};
};

class FrameDeck {
 public:
  std::string storage = "";  ///< storage card

  int node(double x, double y, double z);
  void fix(int node, const std::string& codes);
  void group(const std::string& text);
  /// A nodal pattern; further loads of the same pattern follow with more_load.
  void load(int node, const Load& load);
  void more_load(int node, const Load& load);
  void temperature(int first, int last, double value);
  void pressure(int node, double value);  ///< a pattern of its own, among those of temperature
  /// Gives a node local axes: X along a, Y in the plane of a and b.
  void turn(int node, const std::array<double, 3>& a, const std::array<double, 3>& b);
  void self_weight(const std::string& direction, double gravity = 9.81);
  /// Gravity along -Z; buoyancy and static current patterns where the card makes loads for them.
  void water(const WaterCard& card);
  void stat(const std::vector<SegmentCards>& segments);
  std::string text() const;

 private:
  std::string nodes_, fixes_, groups_, temperatures_, macros_, gravity_, systems_, assignments_;
  bool buoyancy_ = false, current_ = false;
  std::vector<std::vector<std::string>> patterns_;
  int node_count_ = 0, fix_count_ = 0, group_count_ = 0, temperature_count_ = 0, system_count_ = 0;
};

/// One pattern taken in one step, Newton's method.
SegmentCards one_step(double tolerance = 1e-6);
/// In `steps` equal steps.
SegmentCards steps_of(int steps, double tolerance = 1e-6, int iterations = 40);

/// A group of elements 1-2 and 2-3 over nodes at 0, 2 and 4 along X, taken through one step without load: nodes 1 and 2
/// are held, so that the initial state of the first element stands unchanged; node 3 turns about Z alone.
FrameDeck unloaded_row_with_held_nodes(const std::string& group);

/// What stands in the work array after a run: total displacement of a node, in its axes.
double moved(int node, int component);
/// Record of an element by its running number, in a model whose records all have one length.
LinearBeamRecord linear_record(int running);
WaveBeamRecord wave_beam_record(int running);
LargeBeam large_record(int running);
VortexBeamRecord vortex_record(int running);

/// The records of a run's groups, in their order: calls action(type, record, running) with the group's counts in
/// `group`, as a pass does.
struct GroupOfRecords {
  int ITYPE, count;
};
template <class Action>
void for_each_record(const std::vector<GroupOfRecords>& groups, Action&& action) {
  int index = storage.KEDAT;
  int running = 0;
  for (const GroupOfRecords& g : groups) {
    const ElementType& type = element_type(g.ITYPE);
    group = {};
    group.ITYPE = g.ITYPE;
    group.NDOF = type.NDOF;
    group.LFIX = type.LFIX;
    group.LTAN = type.LTAN;
    group.LAUX = type.LAUX;
    group.LEI = type.LFIX + type.LTAN + type.LAUX;
    for (int i = 0; i < g.count; ++i, index += group.LEI + 1) action(type, pool.words(index, group.LEI), ++running);
  }
}

}  // namespace tidearc::test
