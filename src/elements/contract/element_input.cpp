// Element input: all groups of the deck, their records on TapeFiles, and what the model gets from its elements.
#include <algorithm>
#include <limits>

#include "elements/contract/group.h"
#include "elements/contract/input.h"
#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "elements/contract/types.h"
#include "elements/contract/work.h"
#include "model/control.h"
#include "model/masses.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/profile.h"

namespace tidearc {

namespace {

constexpr int unit_member_text = 73;    // BCDATA.TAP
constexpr int unit_member_table = 74;   // TAModel.bcd1
constexpr int unit_soil_capacity = 75;  // TrulCapacity
constexpr int slip_type = 22;           // its reports show the title without its first word

/// Column heights, masses and weights of elements start without any element.
void clear_element_sums() {
  clear_column_heights();
  clear_vector(masses.KEDATP);
  clear_vector(patterns.KSELFW);
  clear_vector(patterns.KBUOYV);
  clear_vector(patterns.KCURRV);
  element_counts = {};
  state_log = {};
}

/// The files that other programs find after every element input, filled by the families that use them.
void open_family_files() {
  open_formatted(unit_soil_capacity, "TrulCapacity", OpenMode::fresh);
  open_formatted(unit_member_text, "BCDATA.TAP", OpenMode::fresh);
  open_formatted(unit_member_table, "TAModel.bcd1", OpenMode::fresh);
  write_list(unit_member_table, 1);
}

void close_family_files() {
  close_formatted(unit_soil_capacity);
  close_formatted(unit_member_text);
  close_formatted(unit_member_table);
}

void read_group_card() {
  group = {};
  read(units.NDIN, "3I5,2F10.0,5X,10A4", group.ITYPE, group.NUMEL, group.NFIRST, group.BETAO, group.BETAT, group.TITLE);
  group.NUMEL = std::max(group.NUMEL, 0);
  group.NFIRST = std::max(group.NFIRST, 1);
}

void print_banner(const ElementType& type) {
  write(units.NDOUT, "'1',32('*'),/,1X,'ELEMENT SPECIFICATION, GROUP',I4,/,1X,32('*'),/,/,5X,A60,/", element.IGRP,
        type.title);
  echo_count("NUMBER OF ELEMENTS IN THIS GROUP", group.NUMEL);
  echo_count("NUMBER OF FIRST ELEMENT IN THIS GROUP", group.NFIRST);
  write(units.NDOUT, "5X,A50,E12.4", label_column("DAMPING COEFFICIENT, BETA-O"), group.BETAO);
  write(units.NDOUT, "5X,A50,E12.4", label_column("DAMPING COEFFICIENT, BETA-T"), group.BETAT);
  write(units.NDOUT, "/,5X,10A4", group.TITLE);
}

[[noreturn]] void stop_not_available() {
  if (group.ITYPE == 12) {  // it has never stood, and its message has always named type 1
    write(units.NDOUT, "' **ERROR! ELEMENT TYPE 1 IS NOT AVAILABLE.'");
  } else {
    write(units.NDOUT, "' **ERROR! ELEMENT TYPE',I3,' IS NOT AVAILABLE.'", group.ITYPE);
  }
  complain({1, 5}, "element type " + std::to_string(group.ITYPE) + " is not available");
  CLOSUP();
}

void set_counts(const ElementType& type) {
  group.NDOF = type.NDOF;
  group.LFIX = type.LFIX;
  group.LTAN = type.LTAN;
  group.LAUX = type.LAUX;
  group.LEI = type.LFIX + type.LTAN + type.LAUX;
}

void read_group(int number) {
  element.IGRP = number;
  read_group_card();
  const ElementType& type = element_type(group.ITYPE);
  print_banner(type);
  if (!type.available()) stop_not_available();
  if (group.ITYPE == slip_type) std::fill_n(group.TITLE.begin(), 4, ' ');
  set_counts(type);
  type.operations.input();
  FILE(units.NT5, "WRIT", group_words, &group);
  // Counted behind the input operation, which may change NUMEL.
  const std::int64_t total = static_cast<std::int64_t>(element_counts.NELTOT) + group.NUMEL;
  element_counts.NELTOT = static_cast<int>(std::min<std::int64_t>(total, std::numeric_limits<int>::max()));
  element_counts.MAXLEI = std::max(element_counts.MAXLEI, group.LEI);
}

void add_element_masses() {
  const Reals AMASS = pool.reals(masses.AMASS, NEQ1());
  const Reals added = pool.reals(masses.KEDATP, NEQ1());
  for (int e = 1; e <= NEQ1(); ++e) AMASS(e) += added(e);
}

}  // namespace

void ELDATA() {
  clear_element_sums();
  for (const int unit : {units.NT1, units.NT13, units.NT5}) FILE(unit, "REWI");
  open_family_files();
  for (int i = 1; i <= sizes.NELGR; ++i) read_group(i);
  close_family_files();
  add_element_masses();
  if (sizes.IBANDW == 0) finish_profile();  // else RENUMB does: the profile that counts is that of the new numbers
}

}  // namespace tidearc
